#include "utilities/lua/lanes/Libraries.h"

#include <gtest/gtest.h>

using namespace Lanes;

TEST(LanesLibraries, StarMeansEveryLibrary)
{
    LibrarySet set;
    std::string error;
    ASSERT_TRUE(ParseLibraries("*", &set, &error));
    EXPECT_TRUE(HasLibrary(set, "jit"));
    EXPECT_TRUE(HasLibrary(set, "io"));
}

TEST(LanesLibraries, ListIsCommaSeparatedWithSpacesAllowed)
{
    LibrarySet set;
    std::string error;
    ASSERT_TRUE(ParseLibraries(" base , string,math ", &set, &error)) << error;
    EXPECT_TRUE(HasLibrary(set, "base"));
    EXPECT_TRUE(HasLibrary(set, "string"));
    EXPECT_TRUE(HasLibrary(set, "math"));
    EXPECT_FALSE(HasLibrary(set, "io"));
    EXPECT_TRUE(HasLibrary(set, "coroutine")) << "coroutine comes with base";
}

TEST(LanesLibraries, EmptyListOpensNothingAndUnknownNamesAreRefused)
{
    LibrarySet set;
    std::string error;
    ASSERT_TRUE(ParseLibraries("", &set, &error));
    EXPECT_FALSE(HasLibrary(set, "base"));
    EXPECT_FALSE(ParseLibraries("base,ffi", &set, &error));
    EXPECT_NE(error.find("unknown library 'ffi'"), std::string::npos) << error;
}

TEST(LanesLibraries, OpenedStateHasExactlyTheListedLibraries)
{
    LibrarySet set;
    std::string error;
    ASSERT_TRUE(ParseLibraries("base,table", &set, &error));
    lua_State* L = luaL_newstate();
    OpenLibraries(L, set);
    lua_getglobal(L, "table");
    EXPECT_TRUE(lua_istable(L, -1));
    lua_getglobal(L, "os");
    EXPECT_TRUE(lua_isnil(L, -1));
    lua_getglobal(L, "print");
    EXPECT_TRUE(lua_isfunction(L, -1));
    lua_close(L);
}
