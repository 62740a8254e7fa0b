// Graphics::InstanceBuffer: the per-instance data of every draw, as rows of
// four floats in one dynamic shader-storage buffer (a std430 array of vec4 the
// vertex stage reads as `b_Instanced`). A component writes its rows into the
// staging vector and closes the instance; closed instances wait in the pending
// vector until a draw uploads them at Cursor, the first free row of the GPU
// buffer, and draws them as instances of one call.
//
//   buffer.WriteRow({1, 0, 0, 0});  ...  buffer.CloseInstance();
//   buffer.Draw(36, 11, program, 0);   // DrawIndexed or DrawIndexedInstanced
//
// The buffer never grows. Closing an instance that would take the pending
// rows past BatchCapacity, or Cursor past BufferCapacity, either asks for a
// draw first (FlushAfterDraw: instances are pending, the rows stay staged and
// are closed after that draw) or, with nothing pending, starts again at row 0
// with a discarding upload. Between discards the buffer is written without
// overwriting, so that the GPU never waits on rows it is still reading, unless
// CanNoOverwrite is off (the engine's DiscardInstanceBuffer), which discards
// at every upload. An instance of more rows than the buffer holds is not
// provided for: its rows past the end are dropped.
#pragma once

#include "Graphics_Engine/DeviceTypes.h"
#include "engine/Math/Matrix4.h"

#include <array>
#include <vector>

namespace Graphics
{
class GraphicsDevice;
class ShaderProgram;

// One row of the instance stream.
using InstanceRow = std::array<float, 4>;

class InstanceBuffer
{
public:
    // Rows one draw takes at most, and rows the GPU buffer holds.
    static constexpr unsigned kCapacity = 1000;

    // A buffer drawing through `device`, which must outlive it; `discardInstanceBuffer` discards
    // at every upload. The GPU buffer is made by BuildBuffer.
    explicit InstanceBuffer(GraphicsDevice& device, bool discardInstanceBuffer = false);
    // Destroys the GPU buffer.
    ~InstanceBuffer();
    InstanceBuffer(const InstanceBuffer&) = delete;
    InstanceBuffer& operator=(const InstanceBuffer&) = delete;

    // Makes the GPU buffer of BufferCapacity rows; reports "Failed To Create Instance Buffer" when
    // the device refuses it (draws then upload nothing).
    void BuildBuffer();

    // Appends one row to the instance being written.
    void WriteRow(const InstanceRow& row);
    // Appends the four rows of a matrix, row 0 first.
    void WriteMatrix(const Math::Matrix4& matrix);
    // Ends the instance being written, by the rules above.
    void CloseInstance();
    // Uploads the pending rows, sets the program's instance variables, applies it and draws
    // `count` indices (draw mode 0) or vertices (draw mode 1) for each pending instance; then
    // closes the staged instance if a flush was asked for. `program` may be null (nothing set).
    void Draw(unsigned count, unsigned rowsPerInstance, ShaderProgram* program, unsigned drawMode);
    // The rows of each pending instance (the pending rows over the pending instances); 0 with none.
    unsigned RowsPerInstance() const;

    // The GPU buffer; its view for shaders is the same handle.
    BufferHandle Buffer;
    // Closed instances waiting for the next draw.
    std::vector<InstanceRow> Pending;
    // The instance being written.
    std::vector<InstanceRow> Staging;
    // Rows one draw takes at most.
    const unsigned BatchCapacity = kCapacity;
    // Rows the GPU buffer holds.
    const unsigned BufferCapacity = kCapacity;
    // Rows in Pending.
    unsigned PendingRows = 0;
    // The first free row of the GPU buffer.
    unsigned Cursor = 0;
    // Instances in Pending.
    unsigned PendingInstances = 0;
    // Set when the staged instance did not fit: it is closed after the next draw.
    bool FlushAfterDraw = false;
    // Set when the next upload must discard the buffer's contents.
    bool DiscardNext = false;
    // False when every upload discards (the engine's DiscardInstanceBuffer).
    bool CanNoOverwrite = true;

private:
    // Writes the pending rows at Cursor with the map mode the rules give, and empties Pending.
    void Upload();

    GraphicsDevice& m_Device;
};
}
