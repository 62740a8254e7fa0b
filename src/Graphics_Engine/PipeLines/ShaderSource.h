// Graphics::ShaderSource: where the pipeline's stages fetch their programs by
// stage names. The engine hands them the shader manager through
// ManagerShaderSource; tests hand them a recorder, so that the pipeline's
// construction is checked without a graphics device.
#pragma once

#include <string>

namespace Graphics
{
class ShaderManager;
class ShaderProgram;

class ShaderSource
{
public:
    virtual ~ShaderSource() = default;
    // The program of these stage names (empty for an absent stage), or null.
    virtual ShaderProgram* GetProgram(const std::string& vertex, const std::string& geometry, const std::string& hull,
                                      const std::string& domain, const std::string& pixel) = 0;
    // The program of a compute shader, or null.
    virtual ShaderProgram* GetCompute(const std::string& name) = 0;
};

// The shader manager as a ShaderSource.
class ManagerShaderSource final : public ShaderSource
{
public:
    // Fetches from `manager`, which must outlive this source.
    explicit ManagerShaderSource(ShaderManager& manager) : m_Manager(manager) {}
    ShaderProgram* GetProgram(const std::string& vertex, const std::string& geometry, const std::string& hull,
                              const std::string& domain, const std::string& pixel) override;
    ShaderProgram* GetCompute(const std::string& name) override;

private:
    ShaderManager& m_Manager;
};
}
