// Graphics::ShaderLookup: how the visible lists turn a component's shader
// names into a program, and what they need to know of that program (its
// forward flag, whether it loaded). The engine uses ManagerShaderLookup, which
// asks the ShaderManager; tests hand in their own, so that building the lists
// needs no GL context.
#pragma once

namespace Graphics
{
class ShaderComponent;
class ShaderManager;
class ShaderProgram;

class ShaderLookup
{
public:
    virtual ~ShaderLookup() = default;
    // When the names are dirty, resolves them (storing the program, counting the change, clearing
    // the flag); returns the component's program either way.
    virtual ShaderProgram* Resolve(ShaderComponent& shaders) = 0;
    // True when the program draws in the forward pass.
    virtual bool IsForward(const ShaderProgram* program) const = 0;
    // True when the program can draw.
    virtual bool IsLoaded(const ShaderProgram* program) const = 0;
};

// The engine's lookup, through a ShaderManager.
class ManagerShaderLookup : public ShaderLookup
{
public:
    explicit ManagerShaderLookup(ShaderManager& manager) : m_Manager(manager) {}
    // ShaderComponent::Resolve through the manager.
    ShaderProgram* Resolve(ShaderComponent& shaders) override;
    // The program's Forward flag.
    bool IsForward(const ShaderProgram* program) const override;
    // The program's Loaded flag; false for none.
    bool IsLoaded(const ShaderProgram* program) const override;

private:
    ShaderManager& m_Manager;
};
}
