#include "Graphics_Engine/ShaderLookup.h"

#include "Graphics_Engine/Components/ShaderComponent.h"
#include "Graphics_Engine/ShaderManager.h"

namespace Graphics
{
ShaderProgram* ManagerShaderLookup::Resolve(ShaderComponent& shaders)
{
    return shaders.Resolve(m_Manager);
}

bool ManagerShaderLookup::IsForward(const ShaderProgram* program) const
{
    return program && program->Forward;
}

bool ManagerShaderLookup::IsLoaded(const ShaderProgram* program) const
{
    return program && program->Loaded;
}
}
