// The Lua completion file: it loads in LuaJIT and names every class.
#include "utilities/DocumentationGen/GenerateAutocomplete.h"

#include "support/TempFolder.h"
#include "utilities/Meta/Data.h"

#include <gtest/gtest.h>
#include <lua.hpp>

namespace
{
// A fresh Lua state holding the table the file returns at the top of its stack.
class LoadedAutocomplete
{
public:
    explicit LoadedAutocomplete(const std::string& path) : L(luaL_newstate())
    {
        luaL_openlibs(L);
        m_Loaded = luaL_dofile(L, path.c_str()) == 0 && lua_istable(L, -1);
        if (!m_Loaded && lua_isstring(L, -1))
            m_Error = lua_tostring(L, -1);
    }
    ~LoadedAutocomplete() { lua_close(L); }
    LoadedAutocomplete(const LoadedAutocomplete&) = delete;
    LoadedAutocomplete& operator=(const LoadedAutocomplete&) = delete;

    // The string at table[first][second]...[keys.back()], or "" when any step is missing.
    std::string Field(std::initializer_list<const char*> keys)
    {
        const int top = lua_gettop(L);
        lua_pushvalue(L, -1);
        for (const char* key : keys)
        {
            if (!lua_istable(L, -1))
            {
                lua_settop(L, top);
                return "";
            }
            lua_getfield(L, -1, key);
        }
        std::string value = lua_isstring(L, -1) ? lua_tostring(L, -1) : (lua_istable(L, -1) ? "table" : "");
        lua_settop(L, top);
        return value;
    }

    lua_State* L;
    bool m_Loaded = false;
    std::string m_Error;
};
}

TEST(GenerateAutocompleteTest, GeneratedFileLoadsInLuaJitAndListsEveryClass)
{
    TempFolder folder;
    const std::string path = folder.Path() + "LuaScripts/vorn_autocomplete.lua";
    ASSERT_TRUE(GenerateAutocomplete(path));
    LoadedAutocomplete file(path);
    ASSERT_TRUE(file.m_Loaded) << file.m_Error;
    std::size_t classes = 0;
    for (const Meta::Data* type : Meta::AllTypes())
    {
        if (type->m_IsPrimitive || type->m_Name.find(' ') != std::string::npos)
            continue;
        EXPECT_EQ(file.Field({type->m_Name.c_str(), "type"}), "class") << type->m_Name;
        EXPECT_EQ(file.Field({type->m_Name.c_str(), "childs"}), "table") << type->m_Name;
        ++classes;
    }
    EXPECT_GT(classes, 50u);
}

TEST(GenerateAutocompleteTest, MethodsAndValuesAreListedUnderTheirClass)
{
    TempFolder folder;
    ASSERT_TRUE(GenerateAutocomplete(folder.Path() + "auto.lua"));
    LoadedAutocomplete file(folder.Path() + "auto.lua");
    ASSERT_TRUE(file.m_Loaded) << file.m_Error;
    EXPECT_EQ(file.Field({"Transform", "childs", "Position", "type"}), "value");
    EXPECT_EQ(file.Field({"GameObject", "childs", "Space", "type"}), "value");
    EXPECT_EQ(file.Field({"ScreenMode", "childs", "Toggle", "type"}), "value");
}

TEST(GenerateAutocompleteTest, OperatorsGoByTheirScriptNamesAndNoneKeepsItsCppName)
{
    TempFolder folder;
    ASSERT_TRUE(GenerateAutocomplete(folder.Path() + "auto.lua"));
    EXPECT_EQ(folder.Read("auto.lua").find("operator"), std::string::npos);
    LoadedAutocomplete file(folder.Path() + "auto.lua");
    ASSERT_TRUE(file.m_Loaded) << file.m_Error;
    EXPECT_EQ(file.Field({"Color", "childs", "__add", "type"}), "method");
    EXPECT_EQ(file.Field({"Color", "childs", "__eq", "type"}), "method");
}

TEST(GenerateAutocompleteTest, OwnerIsAGameObjectValueAndTheTableIsClosed)
{
    const std::string text = DocGen::AutocompleteText();
    EXPECT_EQ(text.rfind("return {\n", 0), 0u);
    EXPECT_NE(text.find("owner = { type = \"value\", valuetype=\"GameObject\"},\n}\n"), std::string::npos);
    TempFolder folder;
    ASSERT_TRUE(GenerateAutocomplete(folder.Path() + "auto.lua"));
    LoadedAutocomplete file(folder.Path() + "auto.lua");
    ASSERT_TRUE(file.m_Loaded) << file.m_Error;
    EXPECT_EQ(file.Field({"owner", "valuetype"}), "GameObject");
}

TEST(GenerateAutocompleteTest, AFileThatCannotBeWrittenIsReportedAndSkipped)
{
    TempFolder folder;
    folder.Write("blocker", "a file where the folder would go");
    testing::internal::CaptureStdout();
    EXPECT_FALSE(GenerateAutocomplete(folder.Path() + "blocker/auto.lua"));
    EXPECT_NE(testing::internal::GetCapturedStdout().find("Could not write the autocomplete file"), std::string::npos);
}
