// The handles' contract: paths cut to fit, the header check, released handles,
// the result messages, calls before initialize, and the silent system.
#include "sound/studio/StudioFixture.h"

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <set>
#include <thread>

namespace
{
using StudioHandlesTest = StudioFixture;

constexpr const char* kOneEvent = R"(Event
{
  Path "event:/Effects/Hit"
  Clips { "Sounds/Short.wav" }
}
)";

TEST_F(StudioHandlesTest, GetPathCutsToTheGivenSize)
{
    Clip("Sounds/Short.wav", SoundClips::Tone(0.1, 0.5f));
    Bank(kOneEvent);
    Studio::EventDescription* description = nullptr;
    ASSERT_EQ(m_System->getEvent("event:/Effects/Hit", &description), Studio::OK);
    char path[64];
    int retrieved = 0;
    ASSERT_EQ(description->getPath(path, sizeof(path), &retrieved), Studio::OK);
    EXPECT_STREQ(path, "event:/Effects/Hit");
    EXPECT_EQ(retrieved, 19);
    char shortPath[7];
    EXPECT_EQ(description->getPath(shortPath, sizeof(shortPath), &retrieved), Studio::ERR_TRUNCATED);
    EXPECT_STREQ(shortPath, "event:");
    EXPECT_EQ(retrieved, 19);
    retrieved = 0;
    EXPECT_EQ(description->getPath(nullptr, 0, &retrieved), Studio::OK);
    EXPECT_EQ(retrieved, 19);
}

TEST_F(StudioHandlesTest, CreateRefusesAnotherHeaderVersion)
{
    Studio::System* other = reinterpret_cast<Studio::System*>(1);
    EXPECT_EQ(Studio::System::create(&other, Studio::kHeaderVersion + 1), Studio::ERR_HEADER_MISMATCH);
    EXPECT_EQ(other, nullptr);
    EXPECT_EQ(Studio::System::create(nullptr), Studio::ERR_INVALID_PARAM);
}

TEST_F(StudioHandlesTest, ReleasedInstanceIsInvalidAndRefusesCalls)
{
    Clip("Sounds/Short.wav", SoundClips::Tone(0.1, 0.5f));
    Bank(kOneEvent);
    Studio::EventInstance* instance = Instance("event:/Effects/Hit");
    Studio::ParameterInstance* none = nullptr;
    ASSERT_TRUE(instance->isValid());
    ASSERT_EQ(instance->start(), Studio::OK);
    ASSERT_EQ(instance->release(), Studio::OK);
    EXPECT_FALSE(instance->isValid());
    EXPECT_EQ(instance->start(), Studio::ERR_INVALID_HANDLE);
    EXPECT_EQ(instance->stop(Studio::STOP_ALLOWFADEOUT), Studio::ERR_INVALID_HANDLE);
    EXPECT_EQ(instance->setVolume(1.0f), Studio::ERR_INVALID_HANDLE);
    EXPECT_EQ(instance->setPaused(true), Studio::ERR_INVALID_HANDLE);
    EXPECT_EQ(instance->getParameter("x", &none), Studio::ERR_INVALID_HANDLE);
    EXPECT_EQ(instance->release(), Studio::ERR_INVALID_HANDLE);
    Studio::PlaybackState state;
    EXPECT_EQ(instance->getPlaybackState(&state), Studio::ERR_INVALID_HANDLE);
    // A released instance plays on to its end, then is freed.
    EXPECT_GT(SoundClips::Rms(Render(0.05), 0), 0.1);
    Render(0.1);
    EXPECT_FALSE(instance->isValid());
}

TEST_F(StudioHandlesTest, EveryResultHasItsOwnMessage)
{
    std::set<std::string> messages;
    for (int result = Studio::OK; result < Studio::RESULT_COUNT; ++result)
    {
        const char* message = Studio::ResultString(static_cast<Studio::Result>(result));
        ASSERT_NE(message, nullptr);
        EXPECT_GT(std::strlen(message), 0u);
        messages.insert(message);
    }
    EXPECT_EQ(messages.size(), static_cast<std::size_t>(Studio::RESULT_COUNT));
    EXPECT_STREQ(Studio::ResultString(Studio::OK), "No errors.");
    EXPECT_STREQ(Studio::ResultString(Studio::RESULT_COUNT), "Unknown error.");
    EXPECT_STREQ(Studio::ResultString(static_cast<Studio::Result>(-3)), "Unknown error.");
}

TEST_F(StudioHandlesTest, CallsBeforeInitializeAndTwiceAreRefused)
{
    Studio::System* fresh = nullptr;
    ASSERT_EQ(Studio::System::create(&fresh), Studio::OK);
    Studio::Bank* bank = nullptr;
    EXPECT_EQ(fresh->loadBankFile("x.bank", 0, &bank), Studio::ERR_UNINITIALIZED);
    EXPECT_EQ(fresh->update(), Studio::ERR_UNINITIALIZED);
    float samples[2];
    EXPECT_EQ(fresh->renderSamples(samples, 1), Studio::ERR_UNINITIALIZED);
    EXPECT_EQ(fresh->initialize(0, Studio::INIT_LOOPBACK, 0, nullptr), Studio::ERR_INVALID_PARAM);
    EXPECT_EQ(fresh->release(), Studio::OK);
    EXPECT_EQ(m_System->initialize(32, Studio::INIT_LOOPBACK, 0, nullptr), Studio::ERR_INITIALIZED);
    EXPECT_EQ(m_System->loadBankFile((m_Folder.Path() + "Banks/None.bank").c_str(), 0, &bank),
              Studio::ERR_FILE_NOTFOUND);
    Studio::EventDescription* description = nullptr;
    EXPECT_EQ(m_System->getEvent("event:/Nothing", &description), Studio::ERR_EVENT_NOTFOUND);
}

TEST_F(StudioHandlesTest, SilentSystemRunsEveryCallAndEndsInstancesOnTime)
{
    m_System->release();
    m_System = nullptr;
    setenv("VORN_AUDIO_SILENT", "1", 1);
    Studio::System* silent = nullptr;
    ASSERT_EQ(Studio::System::create(&silent), Studio::OK);
    const Studio::Result initialized = silent->initialize(32, Studio::INIT_NORMAL, 0, nullptr);
    unsetenv("VORN_AUDIO_SILENT");
    ASSERT_EQ(initialized, Studio::OK);
    m_System = silent;
    EXPECT_TRUE(silent->isSilent());
    float samples[2];
    EXPECT_EQ(silent->renderSamples(samples, 1), Studio::ERR_NOTREADY);
    Clip("Sounds/Short.wav", SoundClips::Tone(0.1, 0.5f));
    Clip("Sounds/Long.wav", SoundClips::Tone(2.0, 0.5f));
    Bank(std::string(kOneEvent) + R"(Event
{
  Path "event:/Music"
  Clips { "Sounds/Long.wav" }
  Stream true
  Loop true
}
)");
    Studio::EventInstance* hit = Instance("event:/Effects/Hit");
    Studio::EventInstance* music = Instance("event:/Music");
    ASSERT_EQ(hit->start(), Studio::OK);
    ASSERT_EQ(music->start(), Studio::OK);
    EXPECT_EQ(hit->setVolume(0.5f), Studio::OK);
    EXPECT_EQ(music->setPaused(true), Studio::OK);
    EXPECT_EQ(music->setPaused(false), Studio::OK);
    EXPECT_EQ(hit->set3DAttributes(Studio::Attributes3D{}), Studio::OK);
    EXPECT_EQ(silent->setListenerAttributes(Studio::Attributes3D{}), Studio::OK);
    EXPECT_EQ(silent->update(), Studio::OK);
    EXPECT_EQ(State(hit), Studio::PLAYBACK_PLAYING);
    std::this_thread::sleep_for(std::chrono::milliseconds(250));
    EXPECT_EQ(silent->update(), Studio::OK);
    EXPECT_EQ(State(hit), Studio::PLAYBACK_STOPPED);
    EXPECT_EQ(State(music), Studio::PLAYBACK_PLAYING);
    EXPECT_EQ(music->stop(Studio::STOP_IMMEDIATE), Studio::OK);
    EXPECT_EQ(State(music), Studio::PLAYBACK_STOPPED);
    EXPECT_EQ(hit->release(), Studio::OK);
    EXPECT_EQ(music->release(), Studio::OK);
    EXPECT_EQ(silent->update(), Studio::OK);
}
}
