#include "utilities/lua/LuaSystem.h"

#include "utilities/Meta/Registration.h"

META_REGISTER(LuaSystem)
{
    DERIVE(System);
}

LuaSystem& LuaSystem::Get()
{
    static LuaSystem* system = new LuaSystem();
    return *system;
}

Meta::Data* LuaSystem::GetMeta() const
{
    return Meta::Get<LuaSystem>();
}
