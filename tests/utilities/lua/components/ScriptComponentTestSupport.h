// A Lua system of the test's own whose data folder holds component scripts the
// test writes, the game's global script (for CompareProperties), and a space to
// put objects in.
#pragma once

#include "utilities/lua/LuaTestSupport.h"

#include "engine/ArchetypeManager.h"
#include "engine/GameObject.h"
#include "engine/Space.h"
#include "engine/TestComponents.h"
#include "engine/Math/Vector3D.h"
#include "utilities/lua/LuaScript.h"
#include "utilities/Serialization/Serializer.h"
#include "utilities/lua/components/LuaComponent.h"
#include "utilities/lua/luabridge/Stack.h"

#include <fstream>
#include <sstream>

class ScriptComponentTest : public LuaTest
{
protected:
    // Writes LuaScripts/Components/<name>.lua; gives its path.
    std::string WriteComponent(const std::string& name, const std::string& text)
    {
        return m_Temp.Write("LuaScripts/Components/" + name + ".lua", text);
    }
    // Copies the game's global script and starts the Lua system (binding, script types, globals);
    // what it prints is dropped unless `quiet` is false (for a caller that catches it itself).
    void Start(bool quiet = true)
    {
        std::ifstream in(std::string(VORN_DATA_DIR) + "/LuaScripts/Globals/Global.lua");
        std::stringstream text;
        text << in.rdbuf();
        m_Temp.Write("LuaScripts/Globals/Global.lua", text.str());
        GameObject::RegisterComponentProperties();
        if (!quiet)
            return m_Lua.Initialize();
        StdoutCapture dropped;  // no closing script in the folder
        m_Lua.Initialize();
    }
    // A new initialized object in the space with a Transform, as the Lua global `obj`.
    GameObject* MakeObject(const char* global = "obj")
    {
        GameObject* object = m_Space.CreateObject(MakeArchetype("ScriptHost", {"Transform"}));
        luabridge::Stack<GameObject*>::Push(L(), object);
        lua_setglobal(L(), global);
        return object;
    }
    // The script component `name` of `object`.
    static LuaComponent* ScriptOf(GameObject* object, const std::string& name)
    {
        return static_cast<LuaComponent*>(object->GetComponent(name));
    }
    // The global `name` of the environment of `component`'s script, as a number.
    double EnvironmentNumber(LuaComponent* component, const char* name)
    {
        lua_rawgeti(L(), LUA_REGISTRYINDEX, component->GetScript()->FindFunction("Initialize"));
        lua_getfenv(L(), -1);
        lua_getfield(L(), -1, name);
        const double value = lua_tonumber(L(), -1);
        lua_pop(L(), 3);
        return value;
    }

    Engine::Space m_Space{Engine::Level};
};
