// The bank file's text: the contract example, defaults, a round trip through
// the writer, and bad text.
#include "sound/studio/BankData.h"

#include "support/ReportCapture.h"
#include "utilities/Serialization/Serializer.h"

#include <gtest/gtest.h>

namespace
{
constexpr const char* kEffectsBank = R"(// Effects.bank: the game's sound effects.
Event
{
  Path "event:/Hit"
  Clips
  {
    "Sounds/Effects/Hit1.ogg",
    "Sounds/Effects/Hit2.ogg"
  }
  Order Random
  Volume 0.9
  VolumeVariation 0.1
  Pitch 1
  PitchVariation 0.05
  Loop false
  Stream false
  Spatial false
  MinDistance 5
  MaxDistance 60
  Parameters
  {
    {
      Name "Intensity"
      Minimum 0
      Maximum 1
      Default 0
      Drives Volume
      From 0.3
      To 1
    }
  }
}
)";

std::vector<Studio::EventData> Read(const std::string& text)
{
    Util::Serializer reader;
    reader.OpenText(text, "Test.bank");
    std::vector<Studio::EventData> events;
    Studio::ReadBankEvents(reader, events);
    return events;
}

void ExpectEffectsBank(const std::vector<Studio::EventData>& events)
{
    ASSERT_EQ(events.size(), 1u);
    const Studio::EventData& hit = events[0];
    EXPECT_EQ(hit.m_Path, "event:/Hit");
    EXPECT_EQ(hit.m_Clips, (std::vector<std::string>{"Sounds/Effects/Hit1.ogg", "Sounds/Effects/Hit2.ogg"}));
    EXPECT_EQ(hit.m_Order, Studio::ClipOrder::Random);
    EXPECT_FLOAT_EQ(hit.m_Volume, 0.9f);
    EXPECT_FLOAT_EQ(hit.m_VolumeVariation, 0.1f);
    EXPECT_FLOAT_EQ(hit.m_Pitch, 1.0f);
    EXPECT_FLOAT_EQ(hit.m_PitchVariation, 0.05f);
    EXPECT_FALSE(hit.m_Loop);
    EXPECT_FALSE(hit.m_Stream);
    EXPECT_FALSE(hit.m_Spatial);
    EXPECT_FLOAT_EQ(hit.m_MinDistance, 5.0f);
    EXPECT_FLOAT_EQ(hit.m_MaxDistance, 60.0f);
    ASSERT_EQ(hit.m_Parameters.size(), 1u);
    const Studio::ParameterData& intensity = hit.m_Parameters[0];
    EXPECT_EQ(intensity.m_Name, "Intensity");
    EXPECT_FLOAT_EQ(intensity.m_Minimum, 0.0f);
    EXPECT_FLOAT_EQ(intensity.m_Maximum, 1.0f);
    EXPECT_FLOAT_EQ(intensity.m_Default, 0.0f);
    EXPECT_EQ(intensity.m_Drives, Studio::ParameterTarget::Volume);
    EXPECT_FLOAT_EQ(intensity.m_From, 0.3f);
    EXPECT_FLOAT_EQ(intensity.m_To, 1.0f);
}

TEST(BankDataTest, ReadsTheBankTextWithEveryMember)
{
    ReportCapture reports;
    ExpectEffectsBank(Read(kEffectsBank));
    EXPECT_EQ(reports.Text().find("[FATAL]"), std::string::npos) << reports.Text();
}

TEST(BankDataTest, WrittenBankReadsBackTheSame)
{
    ReportCapture reports;
    const auto events = Read(kEffectsBank);
    Util::Serializer writer;
    writer.OpenText("", "Written.bank");
    Studio::WriteBankEvents(writer, events);
    const std::string written = writer.GetText();
    ExpectEffectsBank(Read(written));
    EXPECT_EQ(reports.Text().find("[FATAL]"), std::string::npos) << written;
}

TEST(BankDataTest, LeftOutMembersTakeTheirDefaults)
{
    const auto events = Read("Event\n{\n  Path \"event:/Plain\"\n}\nEvent\n{\n}\n");
    ASSERT_GE(events.size(), 1u);
    const Studio::EventData& plain = events[0];
    EXPECT_TRUE(plain.m_Clips.empty());
    EXPECT_EQ(plain.m_Order, Studio::ClipOrder::Random);
    EXPECT_EQ(plain.m_Volume, 1.0f);
    EXPECT_EQ(plain.m_Pitch, 1.0f);
    EXPECT_EQ(plain.m_VolumeVariation, 0.0f);
    EXPECT_EQ(plain.m_PitchVariation, 0.0f);
    EXPECT_FALSE(plain.m_Loop || plain.m_Stream || plain.m_Spatial);
    EXPECT_EQ(plain.m_MinDistance, 1.0f);
    EXPECT_EQ(plain.m_MaxDistance, 100.0f);
    EXPECT_TRUE(plain.m_Parameters.empty());
}

TEST(BankDataTest, BankWithNoEventsReadsEmpty)
{
    EXPECT_TRUE(Read("// Nothing here yet.\n").empty());
    EXPECT_TRUE(Read("").empty());
}

TEST(BankDataTest, BadTextIsReportedAndKeepsTheEventsReadBefore)
{
    ReportCapture reports;
    const auto events = Read(std::string(kEffectsBank) + "Sound\n{\n  Path \"x\"\n}\nEvent\n{\n  Volume\n");
    ASSERT_GE(events.size(), 1u);
    EXPECT_EQ(events[0].m_Path, "event:/Hit");
    EXPECT_TRUE(reports.Holds("Sound")) << reports.Text();
}
}
