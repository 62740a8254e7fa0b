// The batching of the geometry and forward stages: how the records of the
// visible lists become draw calls through the instance buffer.
//
// DrawDeferredKey draws the records of one key of the deferred map (one model,
// one program); the first record's component decides for the whole key. Its
// program is resolved when its shader names changed, and the key is skipped
// when the program did not load. Under model key 0 (components without shared
// geometry, the built-in cube among them) every record is drawn by itself:
// WriteInstance, Bind, a draw of one instance. Under any other key the first
// component binds the model once, every record writes its instance, and a
// draw goes out as soon as the pending rows fill a batch, the buffer is full,
// or the buffer asks for a flush; what is left is drawn at the end.
//
// DrawForwardRecord draws one object of the forward list by itself with the
// program the list resolved for it.
#pragma once

#include "Graphics_Engine/DrawRecord.h"

#include <vector>

namespace Graphics
{
class GraphicsDevice;
class InstanceBuffer;
class ShaderManager;

// Draws one deferred key; `shaders` resolves a changed program (null: a changed program is not
// resolved and the one held is used).
void DrawDeferredKey(const std::vector<DrawRecord>& records, ShaderManager* shaders, GraphicsDevice& device,
                     InstanceBuffer& instances);
// Draws one forward record: binds its program and geometry, writes its instance and draws it.
void DrawForwardRecord(const ForwardRecord& record, GraphicsDevice& device, InstanceBuffer& instances);
}
