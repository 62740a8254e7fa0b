// LuaSystem: the Lua state, script loading and hot reload. Not built yet: its update does nothing.
#pragma once

#include "engine/System.h"

class LuaSystem : public System
{
public:
    // The one LuaSystem.
    static LuaSystem& Get();

    void Update(float dt) override {}
    Meta::Data* GetMeta() const override;
};
