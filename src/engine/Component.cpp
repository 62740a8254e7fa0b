#include "engine/Component.h"

#include "engine/GameObject.h"
#include "utilities/Meta/Registration.h"
#include "utilities/Serialization/Serializer.h"

#include <array>
#include <string_view>

META_REGISTER(Component)
{
    DESCRIPTION("Base of everything that hangs on a game object.");
}

const std::string& Component::GetName() const
{
    return GetMeta()->GetName();
}

unsigned Component::GetType() const
{
    return GetMeta()->GetId();
}

void Component::Write(Util::Serializer& serializer, const std::string& name, const Component* other, bool force,
                      bool forceEmpty) const
{
    serializer.Write(name, this, other, force, forceEmpty);
}

bool Component::Compare(const Component* other) const
{
    if (!other || other->GetMeta() != GetMeta())
        return false;
    const Meta::Data* root = Meta::Get<Component>();
    for (const Meta::Data* type = GetMeta(); type && type != root; type = type->m_Parent)
    {
        for (const auto& [name, member] : type->m_Members.Items())
            if (member->m_Serialize && !member->Compare(this, other))
                return false;
        for (const auto& [name, property] : type->m_Properties.Items())
            if (property->m_Serialize && !property->Compare(this, other))
                return false;
    }
    return true;
}

Engine::Space* Component::GetSpace() const
{
    return m_Owner ? m_Owner->m_Space : nullptr;
}

namespace
{
bool NamedOrDerivedFrom(const Meta::Data* type, std::string_view name)
{
    for (; type; type = type->m_Parent)
        if (type->GetName() == name)
            return true;
    return false;
}
}

bool IsInEditorSubset(const Meta::Data* type)
{
    static constexpr std::array<std::string_view, 9> kEditorTypes = {
        "Mesh", "Light", "Transform", "EditorMesh", "CustomMesh", "SkinnedMesh", "ConstructMesh", "TexturedMesh",
        "Billboard"};
    for (std::string_view name : kEditorTypes)
        if (type->GetName() == name)
            return true;
    return false;
}

bool PassesEmitterOnlyTest(const Meta::Data* type)
{
    return type->GetName() == "Emitter" || NamedOrDerivedFrom(type->m_Parent, "Effector") ||
           NamedOrDerivedFrom(type, "Mesh");
}
