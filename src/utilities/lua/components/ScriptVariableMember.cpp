#include "utilities/lua/components/ScriptVariableMember.h"

#include "engine/EventManager.h"
#include "utilities/Serialization/Serializer.h"
#include "utilities/lua/components/LuaComponent.h"
#include "utilities/lua/components/LuaProperty.h"
#include "utilities/lua/components/ScriptComponentType.h"

namespace
{
const LuaComponent* AsScript(const void* object)
{
    return static_cast<const LuaComponent*>(static_cast<const Component*>(object));
}
LuaComponent* AsScript(void* object)
{
    return static_cast<LuaComponent*>(static_cast<Component*>(object));
}
}

ScriptVariableMember::ScriptVariableMember(const std::string& name, Meta::Data* type) : Member(name, type)
{
    m_Serialize = true;
    // Script-made: the editor shows it among the script's variables.
    m_Flag = true;
    m_Name = name;
}

Meta::AnyRef ScriptVariableMember::Get(const void* object) const
{
    const Meta::Any* value = AsScript(object)->FindVariable(m_Name);
    return value && !value->IsEmpty() ? Meta::AnyRef(value->m_Value, value->m_Type) : Meta::AnyRef();
}

void ScriptVariableMember::Set(void* object, const void* value) const
{
    LuaComponent* component = AsScript(object);
    Meta::Any* variable = component->FindVariable(m_Name);
    const LuaProperty* property = component->FindVariableProperty(m_Name);
    if (!variable || !property || !value || !property->m_Type->m_Info || property->m_Type != m_Type)
        return;
    *variable = Meta::Any(property->m_Type->m_Info->Clone(value), property->m_Type);
}

void ScriptVariableMember::Serialize(const void* object, Util::Serializer& serializer) const
{
    const LuaComponent* component = AsScript(object);
    const Meta::Any* variable = component->FindVariable(m_Name);
    const LuaProperty* property = component->FindVariableProperty(m_Name);
    if (variable && property)
        property->Serialize(serializer, m_Name, *variable);
}

void ScriptVariableMember::Deserialize(void* object, Util::Serializer& serializer) const
{
    LuaComponent* component = AsScript(object);
    Meta::Any* variable = component->FindVariable(m_Name);
    const LuaProperty* property = component->FindVariableProperty(m_Name);
    if (variable && property)
        property->Deserialize(serializer, *variable);
    else
        serializer.SkipValue();
}

bool ScriptVariableMember::Compare(const void* a, const void* b) const
{
    return AsScript(a)->VariableEquals(*AsScript(b), Engine::HashName(m_Name));
}

void ScriptVariableMember::SetFromOther(void* to, const void* from) const
{
    Meta::Any* target = AsScript(to)->FindVariable(m_Name);
    const Meta::Any* source = AsScript(from)->FindVariable(m_Name);
    if (target && source && target->m_Type == source->m_Type)
        *target = *source;
}
