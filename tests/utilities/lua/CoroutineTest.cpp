// Coroutines as the engine runs them: resume with arguments, yields, loop on
// and off, run-time errors that leave the coroutine dead, copies that share the
// thread.
#include "utilities/lua/Coroutine.h"

#include "utilities/lua/LuaTestSupport.h"

#include <memory>
#include <string>

namespace
{
class CoroutineTest : public LuaTest
{
protected:
    // A coroutine on the global function `name`, made as MakeCoroutine makes one.
    std::unique_ptr<Coroutine> Make(const char* name)
    {
        lua_getglobal(L(), name);
        auto coroutine = std::make_unique<Coroutine>(L(), L());
        EXPECT_EQ(lua_gettop(L()), 0);
        return coroutine;
    }
    // Resumes with the coroutine's place (index 1) and the numbers given as arguments, as a script's
    // co:resume(...) calls it.
    int Resume(Coroutine& coroutine, std::initializer_list<double> arguments = {})
    {
        lua_settop(L(), 0);
        lua_pushnil(L());
        for (double argument : arguments)
            lua_pushnumber(L(), argument);
        const int status = coroutine.resume(L());
        lua_settop(L(), 0);
        return status;
    }
};
}

TEST_F(CoroutineTest, ResumeRunsTheBodyToEachYieldThenToItsEnd)
{
    Run("steps = {} function Body() steps[#steps + 1] = 'a' coroutine.yield() steps[#steps + 1] = 'b' end");
    auto coroutine = Make("Body");
    EXPECT_EQ(Resume(*coroutine), Coroutine::kYielded);
    EXPECT_EQ(Resume(*coroutine), Coroutine::kFinished);
    Run("result = table.concat(steps)");
    EXPECT_EQ(String("result"), "ab");
}

TEST_F(CoroutineTest, ArgumentsReachTheBodyAndTheYieldInOrder)
{
    Run("got = '' function Body(a, b) got = got .. a .. b local c, d = coroutine.yield() got = got .. c .. d end");
    auto coroutine = Make("Body");
    Resume(*coroutine, {1, 2});
    EXPECT_EQ(String("got"), "12");
    Resume(*coroutine, {3, 4});
    EXPECT_EQ(String("got"), "1234");
}

TEST_F(CoroutineTest, WithLoopOnAFinishedBodyStartsOverOnTheNextResume)
{
    Run("runs = 0 function Body() runs = runs + 1 return 'result', 'values' end");
    auto coroutine = Make("Body");
    EXPECT_TRUE(coroutine->loop);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(Resume(*coroutine), Coroutine::kFinished);
    EXPECT_EQ(Number("runs"), 3);
    EXPECT_FALSE(coroutine->IsDead());
}

TEST_F(CoroutineTest, WithLoopOffTheNextResumeFailsAsARunTimeErrorAndTheCoroutineIsDead)
{
    Run("runs = 0 function Body() runs = runs + 1 end");
    auto coroutine = Make("Body");
    coroutine->loop = false;
    EXPECT_EQ(Resume(*coroutine), Coroutine::kFinished);
    StdoutCapture capture;
    EXPECT_EQ(Resume(*coroutine), LUA_ERRRUN);
    const std::string text = capture.Text();
    EXPECT_EQ(text.rfind("Lua Error: cannot resume dead coroutine\nstack traceback:", 0), 0u) << text;
    EXPECT_TRUE(coroutine->IsDead());
    EXPECT_EQ(Resume(*coroutine), Coroutine::kDead);
    EXPECT_EQ(Number("runs"), 1);
}

TEST_F(CoroutineTest, ARunTimeErrorInTheBodyIsPrintedWithItsCallStackAndKillsTheCoroutine)
{
    Run("function Body() coroutine.yield() error('broken body') end");
    auto coroutine = Make("Body");
    EXPECT_EQ(Resume(*coroutine), Coroutine::kYielded);
    StdoutCapture capture;
    EXPECT_EQ(Resume(*coroutine), LUA_ERRRUN);
    const std::string text = capture.Text();
    EXPECT_EQ(text.rfind("Lua Error: [string ", 0), 0u) << text;
    EXPECT_NE(text.find("broken body\nstack traceback:"), std::string::npos) << text;
    EXPECT_TRUE(coroutine->IsDead());
    EXPECT_EQ(Resume(*coroutine), Coroutine::kDead);
}

TEST_F(CoroutineTest, AnErrorThatIsNoStringStillKillsTheCoroutine)
{
    Run("function Body() error({}) end");
    auto coroutine = Make("Body");
    StdoutCapture capture;
    EXPECT_EQ(Resume(*coroutine), LUA_ERRRUN);
    EXPECT_NE(capture.Text().find("(error object is not a string)"), std::string::npos) << capture.Text();
    EXPECT_TRUE(coroutine->IsDead());
}

TEST_F(CoroutineTest, ACoroutineWithoutAThreadSaysSoAndFinishes)
{
    Coroutine coroutine;
    StdoutCapture capture;
    EXPECT_EQ(Resume(coroutine), Coroutine::kFinished);
    EXPECT_EQ(capture.Text(), "Lua Error: Coroutine does not exist!\n");
}

TEST_F(CoroutineTest, ACopySharesTheThreadAndCopiesLoopAndTheDeadMark)
{
    Run("runs = 0 function Body() runs = runs + 1 coroutine.yield() runs = runs + 10 end");
    auto coroutine = Make("Body");
    coroutine->loop = false;
    Resume(*coroutine);
    Coroutine copy(*coroutine);
    EXPECT_FALSE(copy.loop);
    EXPECT_NE(copy.m_Thread, coroutine->m_Thread);
    // The copy goes on where the original stopped: one Lua thread.
    EXPECT_EQ(Resume(copy), Coroutine::kFinished);
    EXPECT_EQ(Number("runs"), 11);
    coroutine.reset();
    StdoutCapture capture;
    EXPECT_EQ(Resume(copy), LUA_ERRRUN);
    capture.Text();
    Coroutine dead(copy);
    EXPECT_TRUE(dead.IsDead());
    EXPECT_EQ(Resume(dead), Coroutine::kDead);
}

TEST_F(CoroutineTest, AssignmentTakesTheOtherThreadAndReleasesItsOwn)
{
    Run("function A() return end function B() coroutine.yield() end");
    auto a = Make("A");
    auto b = Make("B");
    *a = *b;
    EXPECT_EQ(Resume(*a), Coroutine::kYielded);
    EXPECT_EQ(Resume(*b), Coroutine::kFinished);
}

TEST_F(CoroutineTest, ResumingACoroutineFromItsOwnBodyIsRefusedAsARunTimeError)
{
    auto coroutine = std::make_unique<Coroutine>();
    // The body calls back into native code, which resumes the coroutine that is running.
    lua_pushlightuserdata(L(), coroutine.get());
    lua_pushcclosure(
        L(),
        [](lua_State* L) {
            auto* self = static_cast<Coroutine*>(lua_touserdata(L, lua_upvalueindex(1)));
            lua_pushnil(L);
            lua_insert(L, 1);
            lua_pushnumber(L, self->resume(L));
            return 1;
        },
        1);
    lua_setglobal(L(), "ResumeSelf");
    Run("function Body() status = ResumeSelf() end");
    lua_getglobal(L(), "Body");
    *coroutine = Coroutine(L(), L());
    StdoutCapture capture;
    EXPECT_EQ(Resume(*coroutine), Coroutine::kFinished);
    EXPECT_NE(capture.Text().find("cannot resume non-suspended coroutine"), std::string::npos) << capture.Text();
    EXPECT_EQ(Number("status"), LUA_ERRRUN);
    EXPECT_TRUE(coroutine->IsDead());
}

TEST_F(CoroutineTest, ACoroutineMadeOnAThreadOfTheMainStateRunsOnTheMainState)
{
    lua_State* caller = lua_newthread(L());
    Run("ran = false function Body() ran = true end");
    lua_getglobal(caller, "Body");
    Coroutine coroutine(L(), caller);
    EXPECT_EQ(lua_gettop(caller), 0);
    lua_settop(L(), 0);
    EXPECT_EQ(Resume(coroutine), Coroutine::kFinished);
    lua_getglobal(L(), "ran");
    EXPECT_TRUE(lua_toboolean(L(), -1));
    lua_settop(L(), 0);
}
