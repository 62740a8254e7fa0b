// Scripts play music and effects through a space's SoundSpace, and set the
// effect limits through SoundInstance. The volumes and mutes are the class's
// own, called with a dot: SoundSpace.SetEffectsVolume(0.5).

#include "utilities/lua/luabridge/LuaTestState.h"

#include "sound/SoundInstance.h"
#include "sound/SoundLimits.h"
#include "sound/SoundSpace.h"
#include "sound/SoundTestData.h"

using SoundSpaceScriptTest = LuaTestState;

TEST_F(SoundSpaceScriptTest, ScriptsPlayMusicAndEffectsAndSetLimitsAndVolumes)
{
    SoundTest::SoundTestData data;
    SoundSpace sound;
    sound.Initialize();
    SetGlobal("sound", &sound);
    EXPECT_EQ(Run("SoundInstance.AddMaxSoundLimit('Effects/Short', 1)\n"
                  "sound:PlayMusic('Music/Loop', false)\n"
                  "first = sound:PlayEffect('Effects/Short')\n"
                  "second = sound:PlayEffect('Effects/Short')\n"
                  "onObject = sound:PlayEffect('Effects/Long', 7)\n"
                  "SoundSpace.SetEffectsVolume(1.5)\n"
                  "SoundSpace.SetMusicMute(true)\n"
                  "sound:SetEffectParameter(onObject, 'Loudness', 0.5)"),
              "");
    EXPECT_DOUBLE_EQ(Number("first"), 2.0);
    EXPECT_DOUBLE_EQ(Number("second"), 0.0);
    EXPECT_DOUBLE_EQ(Number("onObject"), 3.0);
    EXPECT_DOUBLE_EQ(Number("SoundSpace.GetEffectsVolume()"), 1.0);
    EXPECT_EQ(Text("tostring(SoundSpace.GetMusicMute())"), "true");
    ASSERT_EQ(sound.m_Effects.count(3), 1u);
    EXPECT_EQ(sound.m_Effects[3]->m_FollowsObject, 1);
    EXPECT_EQ(sound.m_Effects[3]->m_ObjectId, 7u);
    EXPECT_EQ(SoundLimits::Find("Effects/Short")->m_Limit, 1);
    EXPECT_EQ(Run("sound:RemoveAllSoundEffectInstances()\nsound:RemoveAllLoopingTracks()"), "");
    EXPECT_TRUE(sound.m_Effects.empty());
    EXPECT_TRUE(sound.m_Music.empty());
    SoundSpace::SetEffectsVolume(0.6f);
    SoundSpace::SetMusicMute(false);
    lua_settop(L, 0);
}
