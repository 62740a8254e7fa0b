// Component: the base of everything that hangs on a GameObject. An object is
// only an id, a name and its components; all behaviour lives in components.
//
// The engine calls Initialize when the object is initialized (in component
// order, with m_Owner set), LateInitialize at the start of the owning space's
// next update, and Uninitialize before deleting a component that was
// initialized. A type is a component if its registered parent chain reaches
// Component; components are made by type name through the registry.
#pragma once

#include <string>

namespace Meta
{
class Data;
}
namespace Util
{
class Serializer;
}
namespace Engine
{
class Space;
}
class GameObject;

class Component
{
public:
    // Called once the owner is initialized; m_Owner is set.
    virtual void Initialize() {}
    // Called at the start of the owning space's next update after Initialize.
    virtual void LateInitialize() {}
    // A new component with the same values and no owner.
    virtual Component* Clone() const = 0;
    // Draws the component's editor controls; true if anything changed.
    virtual bool DrawEditor() { return false; }
    // Name of the component's type.
    virtual const std::string& GetName() const;
    // Integer id of the component's type.
    virtual unsigned GetType() const;
    // Writes the component's block under `name`: what differs from `other` (see Util::Serializer::Write).
    virtual void Write(Util::Serializer& serializer, const std::string& name, const Component* other, bool force,
                       bool forceEmpty) const;
    // True if every saved member and property of the whole type chain equals that of `other`.
    virtual bool Compare(const Component* other) const;
    virtual ~Component() = default;
    // Called before the destructor of a component that was initialized.
    virtual void Uninitialize() {}
    // The registry record of the concrete type.
    virtual Meta::Data* GetMeta() const = 0;

    // The space of the owner, or null.
    Engine::Space* GetSpace() const;

    // The object the component belongs to.
    GameObject* m_Owner = nullptr;
};

// True if components of this type run in an editor instance of a room.
bool IsInEditorSubset(const Meta::Data* type);
// True if components of this type run in an object that shows only emitters.
bool PassesEmitterOnlyTest(const Meta::Data* type);
