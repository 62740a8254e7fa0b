// Script component names on GameObject: a name registered while Lua runs is
// readable on objects at once, as a read-only property.
#include "utilities/lua/LuaTestSupport.h"

#include "engine/ArchetypeManager.h"
#include "engine/GameObject.h"
#include "engine/Space.h"
#include "engine/TestComponents.h"
#include "utilities/lua/luabridge/LuaBinding.h"
#include "utilities/lua/luabridge/Stack.h"

namespace
{
class GameObjectScriptNamesTest : public LuaTest
{
protected:
    void SetUp() override
    {
        GameObject::RegisterComponentProperties();
        luabridge::LuaBinding::Get().BindAll(L());
        m_Object = m_Space.CreateObject(MakeArchetype("ScriptNamed", {"Transform"}));
        ASSERT_NE(m_Object, nullptr);
        luabridge::Stack<GameObject*>::Push(L(), m_Object);
        lua_setglobal(L(), "obj");
    }
    // The error text of `code`, "" when it ran.
    std::string ErrorOf(const std::string& code)
    {
        const int top = lua_gettop(L());
        std::string error;
        if (luaL_dostring(L(), code.c_str()) != 0)
            error = lua_tostring(L(), -1);
        lua_settop(L(), top);
        return error;
    }

    Engine::Space m_Space{Engine::Level};
    GameObject* m_Object = nullptr;
};
}

TEST_F(GameObjectScriptNamesTest, NameRegisteredAfterBindingIsAReadOnlyPropertyAtOnce)
{
    EXPECT_NE(ErrorOf("obj.LateScriptName = 1").find("no member named 'LateScriptName'"), std::string::npos);
    GameObject::RegisterLuaComponentName("LateScriptName", Meta::Get<Component>());
    Run("seen = obj.LateScriptName");
    EXPECT_EQ(String("seen"), "");
    EXPECT_NE(ErrorOf("obj.LateScriptName = 1").find("'LateScriptName' is read-only"), std::string::npos);
}

TEST_F(GameObjectScriptNamesTest, NameOfAnExistingPropertyIsLeftAsItWas)
{
    GameObject::RegisterLuaComponentName("Transform", Meta::Get<Component>());
    Run("kind = type(obj.Transform.Position)");
    EXPECT_EQ(String("kind"), "userdata");
}
