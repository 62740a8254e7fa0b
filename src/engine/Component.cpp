#include "engine/Component.h"

#include "engine/GameObject.h"
#include "utilities/Meta/Registration.h"

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
