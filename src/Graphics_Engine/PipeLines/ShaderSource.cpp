#include "Graphics_Engine/PipeLines/ShaderSource.h"

#include "Graphics_Engine/ShaderManager.h"

namespace Graphics
{
ShaderProgram* ManagerShaderSource::GetProgram(const std::string& vertex, const std::string& geometry,
                                               const std::string& hull, const std::string& domain,
                                               const std::string& pixel)
{
    return m_Manager.GetProgram(vertex, geometry, hull, domain, pixel);
}

ShaderProgram* ManagerShaderSource::GetCompute(const std::string& name)
{
    return m_Manager.GetCompute(name);
}
}
