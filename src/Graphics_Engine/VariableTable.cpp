#include "Graphics_Engine/VariableTable.h"

#include "engine/Log.h"

#include <cstring>

namespace Graphics
{
namespace
{
void WriteMatrix(const Math::Matrix4& value, float out[16])
{
    value.Std140Layout(out);
}
}

VariableTable::VariableTable()
{
    const Math::Matrix4 identity;
    SetVariable("m_Perspective", identity);
    SetVariable("m_View", identity);
    SetVariable("m_ViewPerspective", identity);
    SetVariable("m_InverseViewPerspective", identity);
    SetVariable("m_OriginViewPerspective", identity);
    SetVariable("f3_CameraPos", Math::Vector3D());
    SetVariable("f3_CameraView", Math::Vector3D(0.0f, 0.0f, 1.0f));
    SetVariable("f4_GlobaAmbient", Math::Vector4D(0.1f, 0.1f, 0.1f, 0.0f));
    SetVariable("f_Time", 0.0f);
    SetVariable("f_Rand", 0.0f);
    SetVariable("ui2_ScreenSize", 0u, 0u);
    for (const char* target : {"rt_Depth", "rt_Normal", "rt_Diffuse", "rt_Specular", "rt_Material"})
        SetResource(target, 0);
    SetResource("sb_lights", 0);
    SetResource("t3D_LightList", 0);
    m_ViewPerspectiveSlot = &m_Constants["m_ViewPerspective"];
    m_InverseViewPerspectiveSlot = &m_Constants["m_InverseViewPerspective"];
    m_OriginViewPerspectiveSlot = &m_Constants["m_OriginViewPerspective"];
    m_TimeSlot = &m_Constants["f_Time"];
    m_RandSlot = &m_Constants["f_Rand"];
}

ConstantVariable& VariableTable::Slot(const std::string& name)
{
    return m_Constants[name];
}

ConstantVariable& VariableTable::Write(ConstantVariable& variable, const void* bytes, std::size_t size)
{
    variable.Data.resize(size);
    if (size)
        std::memcpy(variable.Data.data(), bytes, size);
    ++variable.Version;
    return variable;
}

void VariableTable::SetBytes(const std::string& name, const void* bytes, std::size_t size)
{
    ConstantVariable& variable = Slot(name);
    if (variable.Version != 0 && variable.Data.size() != size)
        ERROR_REPORT("Loading variable with different data type then before.");
    Write(variable, bytes, size);
}

void VariableTable::SetVariable(const std::string& name, const Math::Matrix4& value)
{
    float data[16];
    WriteMatrix(value, data);
    SetBytes(name, data, sizeof(data));
}

void VariableTable::SetVariable(const std::string& name, const Math::Vector4D& value)
{
    const float data[4] = {value.x, value.y, value.z, value.w};
    SetBytes(name, data, sizeof(data));
}

void VariableTable::SetVariable(const std::string& name, const Math::Vector3D& value)
{
    const float data[3] = {value.x, value.y, value.z};
    SetBytes(name, data, sizeof(data));
}

void VariableTable::SetVariable(const std::string& name, const Math::Vector2D& value)
{
    const float data[2] = {value.x, value.y};
    SetBytes(name, data, sizeof(data));
}

void VariableTable::SetVariable(const std::string& name, unsigned value)
{
    SetBytes(name, &value, sizeof(value));
}

void VariableTable::SetVariable(const std::string& name, unsigned x, unsigned y)
{
    const unsigned data[2] = {x, y};
    SetBytes(name, data, sizeof(data));
}

void VariableTable::SetVariable(const std::string& name, float value)
{
    SetBytes(name, &value, sizeof(value));
}

void VariableTable::SetResource(const std::string& name, ResourceHandle view)
{
    ResourceVariable& variable = m_Resources[name];
    variable.View = view;
    ++variable.Version;
}

void VariableTable::SetCamera(const CameraState& camera)
{
    m_View = camera.View;
    m_CameraPosition = camera.Position;
    SetVariable("m_View", camera.View);
    SetVariable("f3_CameraPos", camera.Position);
    SetVariable("f3_CameraView", camera.ViewDirection);
}

void VariableTable::Resize(unsigned width, unsigned height, const Math::Matrix4& perspective)
{
    m_Perspective = perspective;
    SetVariable("m_Perspective", perspective);
    SetVariable("ui2_ScreenSize", width, height);
}

void VariableTable::Update(float dt)
{
    float data[16];
    const Math::Matrix4 viewPerspective = m_View * m_Perspective;
    WriteMatrix(viewPerspective, data);
    Write(*m_ViewPerspectiveSlot, data, sizeof(data));
    WriteMatrix(viewPerspective.Inverse(), data);
    Write(*m_InverseViewPerspectiveSlot, data, sizeof(data));
    Math::Matrix4 originView = m_View;
    originView.m[3][0] = originView.m[3][1] = originView.m[3][2] = 0.0f;
    WriteMatrix(originView * m_Perspective, data);
    Write(*m_OriginViewPerspectiveSlot, data, sizeof(data));
    m_Time += dt;
    Write(*m_TimeSlot, &m_Time, sizeof(m_Time));
    const float random = static_cast<float>(static_cast<double>(m_Random()) * (1.0 / 4294967296.0));
    // Rounding to float could reach 1; keep the value inside [0, 1).
    const float rand01 = random < 1.0f ? random : 0.99999994f;
    Write(*m_RandSlot, &rand01, sizeof(rand01));
}

const ConstantVariable* VariableTable::FindConstant(const std::string& name) const
{
    const auto found = m_Constants.find(name);
    return found == m_Constants.end() ? nullptr : &found->second;
}

const ResourceVariable* VariableTable::FindResource(const std::string& name) const
{
    const auto found = m_Resources.find(name);
    return found == m_Resources.end() ? nullptr : &found->second;
}

float VariableTable::ReadFloat(const std::string& name) const
{
    const ConstantVariable* variable = FindConstant(name);
    float value = 0.0f;
    if (variable && variable->Data.size() >= sizeof(float))
        std::memcpy(&value, variable->Data.data(), sizeof(float));
    return value;
}

Math::Matrix4 VariableTable::ReadMatrix(const std::string& name) const
{
    const ConstantVariable* variable = FindConstant(name);
    Math::Matrix4 result;
    if (!variable || variable->Data.size() != 16 * sizeof(float))
        return result;
    float data[16];
    std::memcpy(data, variable->Data.data(), sizeof(data));
    for (int c = 0; c < 4; ++c)
        for (int r = 0; r < 4; ++r)
            result.m[r][c] = data[c * 4 + r];
    return result;
}
}
