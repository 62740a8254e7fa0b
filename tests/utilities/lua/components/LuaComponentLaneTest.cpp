// A lane writes a script variable into the main Lua state while the main thread
// reads it and runs Lua: both sides hold the Lua system's lock for that, so the
// ThreadSanitizer build sees no race and every write arrives whole.
#include "utilities/lua/components/ScriptComponentTestSupport.h"

#include "utilities/lua/lanes/Lanes.h"

#include <atomic>
#include <thread>

TEST_F(ScriptComponentTest, LaneWritingAVariableWhileTheMainThreadReadsItIsSerialized)
{
    WriteComponent("Gauge", "--[[!\nfloat Level 0\n]]\n");
    Start();
    GameObject* object = MakeObject();
    auto* gauge = static_cast<LuaComponent*>(object->AddComponent("Gauge"));
    constexpr int kWrites = 2000;

    std::atomic<bool> done{false};
    std::thread lane([&] {
        // A state of another Lua universe, as a lane has.
        lua_State* laneState = luaL_newstate();
        luaL_openlibs(laneState);
        luaopen_lanes_embedded(laneState, nullptr);
        lua_settop(laneState, 0);
        for (int i = 1; i <= kWrites; ++i)
        {
            lua_pushnumber(laneState, i);
            gauge->SetProperty(laneState, "Level");
            lua_settop(laneState, 0);
        }
        lua_close(laneState);
        done = true;
    });

    double last = 0;
    bool rising = true;
    int reads = 0;
    while (!done || reads == 0)
    {
        const auto lock = m_Lua.LockMainState();
        gauge->GetProperty(L(), "Level");
        const double level = lua_tonumber(L(), -1);
        lua_pop(L(), 1);
        rising = rising && level >= last;
        last = level;
        Run("seen = obj.Gauge.Level");
        ++reads;
    }
    lane.join();
    EXPECT_TRUE(rising);
    EXPECT_FLOAT_EQ(*gauge->GetAny("Level").Get<float>(), static_cast<float>(kWrites));
}
