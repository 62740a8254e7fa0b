// Settings seen from scripts: each setting by name on the Settings class, and
// SettingsHelper records that list, read and write them without knowing them.
#include "utilities/lua/LuaTestSupport.h"

#include "engine/Settings.h"
#include "engine/SettingsHelper.h"
#include "sound/SoundSystem.h"
#include "utilities/lua/luabridge/LuaBinding.h"

namespace
{
int g_Lives = 3;
int GetLives() { return g_Lives; }
void SetLives(int lives) { g_Lives = lives; }

class SettingsHelperTest : public LuaTest
{
protected:
    void SetUp() override
    {
        SoundSystem::Get();
        SoundSystem::SetMusicVolume(0.25f);
        SoundSystem::SetMusicMute(false);
        luabridge::LuaBinding::Get().BindAll(L());
    }
    void TearDown() override
    {
        SoundSystem::SetMusicVolume(1.0f);
        SoundSystem::SetMusicMute(false);
    }
};
}

TEST_F(SettingsHelperTest, EntriesListEverySettingWithItsCurrentValue)
{
    Run(R"(
        names = {}
        for i = 0, Settings.Count() - 1 do
            local entry = Settings.GetEntry(i)
            names[entry.Name] = entry:Get()
        end
        volume = names.MusicVolume
        outOfRange = Settings.GetEntry(Settings.Count()).Name
    )");
    EXPECT_DOUBLE_EQ(Number("volume"), 0.25);
    EXPECT_EQ(String("outOfRange"), "");
    EXPECT_EQ(SettingsHelper::Count(), static_cast<int>(Meta::Get<Settings>()->m_Properties.Size()));
}

TEST_F(SettingsHelperTest, SetWritesThroughAndRefusesAWrongType)
{
    Run(R"(
        local mute = Settings.Find("MusicMute")
        setOk = mute:Set(true)
        wrongOk = mute:Set("loud")
        unknownOk = Settings.Find("NoSuchSetting"):Set(1)
        unknownValue = Settings.Find("NoSuchSetting"):Get()
    )");
    EXPECT_TRUE(SoundSystem::GetMusicMute());
    lua_getglobal(L(), "setOk");
    EXPECT_TRUE(lua_toboolean(L(), -1));
    lua_getglobal(L(), "wrongOk");
    EXPECT_FALSE(lua_toboolean(L(), -1));
    lua_getglobal(L(), "unknownOk");
    EXPECT_FALSE(lua_toboolean(L(), -1));
    lua_getglobal(L(), "unknownValue");
    EXPECT_TRUE(lua_isnil(L(), -1));
    lua_pop(L(), 4);
}

TEST_F(SettingsHelperTest, SettingAddedAfterBindingIsReachableByNameAtOnce)
{
    Settings::Add<int>("HelperTestLives", &GetLives, &SetLives);
    Run("before = Settings.HelperTestLives; Settings.HelperTestLives = 5");
    EXPECT_DOUBLE_EQ(Number("before"), 3.0);
    EXPECT_EQ(g_Lives, 5);
    g_Lives = 3;
}
