#include "engine/Options.h"

#include "engine/FrameRateController.h"
#include "engine/Window.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace
{
// Records what an option's handler received.
struct Received
{
    int calls = 0;
    std::optional<std::string> value;  // nullopt when the handler got null

    Engine::Options::Handler Handler()
    {
        return [this](const char* v) {
            ++calls;
            value = v ? std::optional<std::string>(v) : std::nullopt;
        };
    }
};

std::string Parse(const std::string& line)
{
    testing::internal::CaptureStdout();
    Engine::Options::ParseCommandLine(line.c_str());
    return testing::internal::GetCapturedStdout();
}
}

TEST(OptionsTest, RegisterLowersNamesAndKeepsTheFirstHandler)
{
    Engine::Options options;
    Received first, second;
    EXPECT_TRUE(Engine::Options::RegisterOption("DataDir", first.Handler()));
    EXPECT_FALSE(Engine::Options::RegisterOption("datadir", second.Handler()));
    Parse("Game.exe --datadir=xy");
    EXPECT_EQ(first.calls, 1);
    EXPECT_EQ(second.calls, 0);
}

TEST(OptionsTest, OptionSpelledInAnyCaseIsFound)
{
    Engine::Options options;
    Received received;
    Engine::Options::RegisterOption("DisableLostFocus", received.Handler());
    const std::string printed = Parse("./Game --DISABLELOSTFOCUS --disablelostfocus");
    EXPECT_EQ(received.calls, 2);
    EXPECT_EQ(printed, "");
}

TEST(OptionsTest, ValueFollowsOnlyAnEqualsSign)
{
    Engine::Options options;
    Received received;
    Engine::Options::RegisterOption("name", received.Handler());
    Parse("Game --name value");
    EXPECT_EQ(received.calls, 1);
    EXPECT_FALSE(received.value.has_value());
    Parse("Game --name=value --other");
    EXPECT_EQ(received.value, "value");
}

TEST(OptionsTest, SingleCharacterValueCountsAsNone)
{
    Engine::Options options;
    Received received;
    Engine::Options::RegisterOption("x", received.Handler());
    Engine::Options::RegisterOption("fps", received.Handler());
    Parse("Game --fps=5");
    EXPECT_EQ(received.calls, 1);
    EXPECT_FALSE(received.value.has_value());
    Parse("Game --fps=60");
    EXPECT_EQ(received.value, "60");
}

TEST(OptionsTest, QuotedValueRunsToTheClosingQuote)
{
    Engine::Options options;
    Received received;
    Engine::Options::RegisterOption("datadir", received.Handler());
    Parse("Game --datadir=\"My Data/x\" --after");
    EXPECT_EQ(received.value, "My Data/x");
}

TEST(OptionsTest, MissingClosingQuoteRunsToTheEndOfTheLine)
{
    Engine::Options options;
    Received received;
    Engine::Options::RegisterOption("datadir", received.Handler());
    Parse("Game --datadir=\"open ended");
    EXPECT_EQ(received.value, "open ended");
}

TEST(OptionsTest, UnknownOptionIsPrintedAndParsingGoesOn)
{
    Engine::Options options;
    Received received;
    Engine::Options::RegisterOption("known", received.Handler());
    const std::string printed = Parse("Game --Mystery=12 --known");
    EXPECT_EQ(printed, "Unknown command line arg: \"mystery\"\n");
    EXPECT_EQ(received.calls, 1);
}

TEST(OptionsTest, ShortTokensAndTheProgramPathAreSkipped)
{
    Engine::Options options;
    Received received;
    Engine::Options::RegisterOption("ab", received.Handler());
    const std::string printed = Parse("/path/to/--ab -- - a --ab");
    EXPECT_EQ(received.calls, 1);
    EXPECT_EQ(printed, "");
}

TEST(OptionsTest, ValueTextThatLooksLikeAnOptionIsWalkedAgain)
{
    Engine::Options options;
    Received outer, inner;
    Engine::Options::RegisterOption("outer", outer.Handler());
    Engine::Options::RegisterOption("inner", inner.Handler());
    Parse("Game --outer=--inner");
    EXPECT_EQ(outer.value, "--inner");
    EXPECT_EQ(inner.calls, 1);
}

TEST(OptionsTest, NoRegistryMeansNoOptions)
{
    EXPECT_EQ(Engine::Options::Current(), nullptr);
    EXPECT_FALSE(Engine::Options::RegisterOption("fps", [](const char*) {}));
}

TEST(OptionsTest, JoinedArgumentsKeepValuesWithSpacesTogether)
{
    const char* argv[] = {"./Game", "--datadir=my data", "--fps=30"};
    EXPECT_EQ(Engine::JoinCommandLine(3, argv), "./Game --datadir=\"my data\" --fps=30");
}

TEST(OptionsTest, FpsZeroOrTextLeavesTheTarget)
{
    Engine::Options options;
    FrameRateController controller;
    Parse("Game --fps=0 --fps=abc");
    EXPECT_EQ(controller.m_TargetDt, 0.016666668f);
}

TEST(OptionsTest, FpsOfOneDigitPassesNullAndChangesNothing)
{
    Engine::Options options;
    FrameRateController controller;
    Parse("Game --fps=5");
    EXPECT_EQ(controller.m_TargetDt, 0.016666668f);
}

TEST(OptionsTest, FpsThirtyGivesAThirtiethOfASecond)
{
    Engine::Options options;
    FrameRateController controller;
    Parse("Game --FPS=30");
    EXPECT_EQ(controller.m_TargetDt, 0.033333335f);
}

TEST(OptionsTest, DestroyingAnObjectRemovesItsOptionHandler)
{
    Engine::Options options;
    {
        FrameRateController controller;
        Window window;
    }
    const std::string printed = Parse("Game --fps=30 --DisableLostFocus");
    EXPECT_EQ(printed, "Unknown command line arg: \"fps\"\nUnknown command line arg: \"disablelostfocus\"\n");
}

TEST(OptionsTest, WindowOptionReachesTheLivingWindow)
{
    Engine::Options options;
    Window window;
    Parse("Game --disablelostfocus");
    EXPECT_FALSE(window.m_LostFocusEnabled);
}

TEST(OptionsTest, ObjectWhoseNameWasTakenLeavesTheFirstHandlerWhenDestroyed)
{
    Engine::Options options;
    Received first;
    Engine::Options::RegisterOption("fps", first.Handler());
    {
        FrameRateController controller;
    }
    Parse("Game --fps=30");
    EXPECT_EQ(first.calls, 1);
    EXPECT_EQ(first.value, "30");
}

TEST(OptionsTest, OwnedOptionOutlivingItsRegistryRemovesNothingFromTheNextOne)
{
    std::unique_ptr<Engine::OwnedOption> owned;
    {
        Engine::Options first;
        owned = std::make_unique<Engine::OwnedOption>("name", [](const char*) {});
        EXPECT_TRUE(owned->IsRegistered());
    }
    Engine::Options second;
    Received received;
    Engine::Options::RegisterOption("name", received.Handler());
    owned.reset();
    Parse("Game --name");
    EXPECT_EQ(received.calls, 1);
}

TEST(OptionsTest, HandlerThatRemovesItsOwnOptionRunsToItsEnd)
{
    Engine::Options options;
    std::unique_ptr<Engine::OwnedOption> owned;
    owned = std::make_unique<Engine::OwnedOption>("once", [&owned](const char*) { owned.reset(); });
    Received after;
    Engine::Options::RegisterOption("after", after.Handler());
    const std::string printed = Parse("Game --once --after --once");
    EXPECT_EQ(after.calls, 1);
    EXPECT_EQ(printed, "Unknown command line arg: \"once\"\n");
}
