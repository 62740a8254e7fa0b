// Graphics::ShaderComponent: which shaders draw a graphics component, by the
// names of its five stages ("BaseVertex" and "BasePixel" unless data says
// otherwise). Changing a name marks it dirty; the renderer resolves the names
// into a program through the shader manager the next time it needs them and
// counts every change, so that whoever cached the program can tell.
#pragma once

#include <string>

namespace Graphics
{
class ShaderManager;
class ShaderProgram;

class ShaderComponent
{
public:
    // Stage names; empty for a stage the program does not have.
    std::string Vertex = "BaseVertex";
    std::string Geometry;
    std::string Hull;
    std::string Domain;
    std::string Pixel = "BasePixel";
    // True when a name changed since the program was last resolved.
    bool m_Dirty = true;
    // The resolved program; null until resolved, or when the names make none.
    ShaderProgram* m_Shader = nullptr;
    // How many times the program was resolved anew.
    unsigned m_ChangeCount = 0;

    // Sets one stage name (0 vertex to 4 pixel) and marks the component dirty when it changed.
    void SetStage(int stage, const std::string& name);
    // When dirty, fetches the program of the five names from `manager`, stores it, counts the
    // change and clears the flag; returns the program either way.
    ShaderProgram* Resolve(ShaderManager& manager);
};
}
