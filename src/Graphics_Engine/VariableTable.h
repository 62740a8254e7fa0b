// Graphics::VariableTable: the named values that every shader program reads
// when it is applied. Constants are bytes with a size and a version that grows
// by one at every write; resources are views with a version likewise. A program
// binds the names its shaders declare and copies a value only when its version
// moved since the program last read it.
//
// The frame's shared values are kept as typed members so that the per-frame
// update needs no look-up. Matrices are row-major in the engine and stored in
// the variables in std140 order (transposed), so that GLSL's column-major mat4
// reads back the engine's matrix and shaders write p * M.
#pragma once

#include "Graphics_Engine/ResourceHandle.h"
#include "engine/Math/Matrix4.h"
#include "engine/Math/Vector2D.h"
#include "engine/Math/Vector3D.h"
#include "engine/Math/Vector4D.h"

#include <cstdint>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

namespace Graphics
{
// A named constant: its bytes and the version of its last write.
struct ConstantVariable
{
    // The bytes as the shaders read them.
    std::vector<std::uint8_t> Data;
    // Grows by one at every write; 0 before the first.
    std::uint64_t Version = 0;
};

// A named resource: its view and the version of its last write.
struct ResourceVariable
{
    // The view, 0 for none.
    ResourceHandle View = 0;
    // Grows by one at every write; 0 before the first.
    std::uint64_t Version = 0;
};

// What SetCamera takes from a camera: its view matrix, its position and its viewing direction.
struct CameraState
{
    // The camera's view matrix, row-major.
    Math::Matrix4 View;
    // The camera's position in the world.
    Math::Vector3D Position;
    // The direction the camera looks in.
    Math::Vector3D ViewDirection;
};

class VariableTable
{
public:
    // Registers every shared variable of the frame with its starting value.
    VariableTable();
    VariableTable(const VariableTable&) = delete;
    VariableTable& operator=(const VariableTable&) = delete;

    // Writes a matrix (stored transposed, in std140 order).
    void SetVariable(const std::string& name, const Math::Matrix4& value);
    // Writes four floats.
    void SetVariable(const std::string& name, const Math::Vector4D& value);
    // Writes three floats.
    void SetVariable(const std::string& name, const Math::Vector3D& value);
    // Writes two floats.
    void SetVariable(const std::string& name, const Math::Vector2D& value);
    // Writes one unsigned value.
    void SetVariable(const std::string& name, unsigned value);
    // Writes two unsigned values.
    void SetVariable(const std::string& name, unsigned x, unsigned y);
    // Writes one float.
    void SetVariable(const std::string& name, float value);
    // Writes `size` bytes; a name registered before with another size reports it and is written anyway.
    void SetBytes(const std::string& name, const void* bytes, std::size_t size);
    // Writes a resource view.
    void SetResource(const std::string& name, ResourceHandle view);

    // Takes the view matrix, position and direction of `camera`.
    void SetCamera(const CameraState& camera);
    // A new render size and its perspective matrix.
    void Resize(unsigned width, unsigned height, const Math::Matrix4& perspective);
    // The per-frame update: the combined matrices, the time grown by dt and a fresh random value.
    void Update(float dt);

    // The constant of that name, or null.
    const ConstantVariable* FindConstant(const std::string& name) const;
    // The resource of that name, or null.
    const ResourceVariable* FindResource(const std::string& name) const;
    // The constant of that name as a float (its first four bytes), 0 when absent or shorter.
    float ReadFloat(const std::string& name) const;
    // The matrix of that name as the engine holds it (row-major), identity when absent.
    Math::Matrix4 ReadMatrix(const std::string& name) const;

    // The engine-side copies of the matrices, row-major.
    Math::Matrix4 m_Perspective;
    // The camera's view matrix.
    Math::Matrix4 m_View;
    // The camera's position, as SetCamera last took it.
    Math::Vector3D m_CameraPosition{0.0f, 0.0f, 0.0f};
    // The seconds the frames have added up.
    float m_Time = 0.0f;

private:
    ConstantVariable& Write(ConstantVariable& variable, const void* bytes, std::size_t size);
    ConstantVariable& Slot(const std::string& name);

    std::unordered_map<std::string, ConstantVariable> m_Constants;
    std::unordered_map<std::string, ResourceVariable> m_Resources;
    ConstantVariable* m_ViewPerspectiveSlot = nullptr;
    ConstantVariable* m_InverseViewPerspectiveSlot = nullptr;
    ConstantVariable* m_OriginViewPerspectiveSlot = nullptr;
    ConstantVariable* m_TimeSlot = nullptr;
    ConstantVariable* m_RandSlot = nullptr;
    std::mt19937 m_Random;
};
}
