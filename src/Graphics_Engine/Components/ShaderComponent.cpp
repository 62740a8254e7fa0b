#include "Graphics_Engine/Components/ShaderComponent.h"

#include "Graphics_Engine/ShaderManager.h"

namespace Graphics
{
void ShaderComponent::SetStage(int stage, const std::string& name)
{
    std::string* const names[] = {&Vertex, &Geometry, &Hull, &Domain, &Pixel};
    if (stage < 0 || stage > 4 || *names[stage] == name)
        return;
    *names[stage] = name;
    m_Dirty = true;
}

ShaderProgram* ShaderComponent::Resolve(ShaderManager& manager)
{
    if (!m_Dirty)
        return m_Shader;
    m_Shader = manager.GetProgram(Vertex, Geometry, Hull, Domain, Pixel);
    ++m_ChangeCount;
    m_Dirty = false;
    return m_Shader;
}
}
