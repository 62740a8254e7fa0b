// ScriptVariableMember: a script variable as a member of the LuaComponent type
// record, so that the text format, the editor and the comparison of objects with
// their archetypes treat script variables like the fields of native components.
// One member stands for every script that declares a variable of that name; on
// a component whose script declares none it reads and writes nothing and
// compares equal.
#pragma once

#include "utilities/Meta/Member.h"

class ScriptVariableMember final : public Meta::Member
{
public:
    // The member `name` of LuaComponent, first declared with type `type`.
    ScriptVariableMember(const std::string& name, Meta::Data* type);

    Meta::AnyRef Get(const void* object) const override;
    void Set(void* object, const void* value) const override;
    void Serialize(const void* object, Util::Serializer& serializer) const override;
    // Reads into the variable; a component without it skips the value.
    void Deserialize(void* object, Util::Serializer& serializer) const override;
    // Nothing: scripts reach variables through the component's dynamic properties.
    void RegisterLua(luabridge::ClassScope&) const override {}
    bool Compare(const void* a, const void* b) const override;
    void SetFromOther(void* to, const void* from) const override;
};
