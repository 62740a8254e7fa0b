// The sampler block: every field with its value, the defaults of what is left
// out, the filter names with their prefixes, and the messages of bad values.

#include "Graphics_Engine/ShaderPreprocessor.h"
#include "Graphics_Engine/ShaderKeywords.h"

#include "support/ReportCapture.h"

#include <gtest/gtest.h>

#include <limits>

using Graphics::PreprocessShader;
using Graphics::ShaderDescription;

namespace
{
const std::string kHead = "__ShaderDesc { Type Pixel EntryPoint main }\n";
}

TEST(SamplerBlockParserTest, ReadsEveryFieldIntoTheNamedSampler)
{
    ShaderDescription d;
    ASSERT_TRUE(PreprocessShader(kHead + "__SamplerDesc sShadow\n{\n Filter COMPARISON_MIN_MAG_LINEAR_MIP_POINT\n"
                                         " AddressU Wrap AddressV Mirror AddressW Border\n MipLODBias -0.5 MaxAnisotropy 8\n"
                                         " ComparisonFunc Less_Equal\n BorderColor[0] 0.25 BorderColor[1] 0.5"
                                         " BorderColor[2] 0.75 BorderColor[3] 0\n MinLOD 1 MaxLOD 4\n}\nuniform sampler2D sShadow;\n",
                                 "s", d));
    ASSERT_EQ(d.Samplers.size(), 1u);
    const Graphics::SamplerDescription& s = d.Samplers[0];
    EXPECT_EQ(s.Name, "sShadow");
    EXPECT_EQ(s.Filter, 0x94);
    EXPECT_EQ(s.AddressU, 1);
    EXPECT_EQ(s.AddressV, 2);
    EXPECT_EQ(s.AddressW, 4);
    EXPECT_FLOAT_EQ(s.MipLODBias, -0.5f);
    EXPECT_EQ(s.MaxAnisotropy, 8);
    EXPECT_EQ(s.ComparisonFunc, 4);
    EXPECT_FLOAT_EQ(s.BorderColor[0], 0.25f);
    EXPECT_FLOAT_EQ(s.BorderColor[1], 0.5f);
    EXPECT_FLOAT_EQ(s.BorderColor[2], 0.75f);
    EXPECT_FLOAT_EQ(s.BorderColor[3], 0.0f);
    EXPECT_FLOAT_EQ(s.MinLOD, 1.0f);
    EXPECT_FLOAT_EQ(s.MaxLOD, 4.0f);
    EXPECT_EQ(d.Source, "#line 2\n#line 11\nuniform sampler2D sShadow;\n");
}

TEST(SamplerBlockParserTest, AbsentMinAndMaxLodLeaveTheWholeFloatRange)
{
    ShaderDescription d;
    ASSERT_TRUE(PreprocessShader(kHead + "__SamplerDesc s { Filter MIN_MAG_MIP_POINT }\n", "s", d));
    ASSERT_EQ(d.Samplers.size(), 1u);
    EXPECT_EQ(d.Samplers[0].MinLOD, -std::numeric_limits<float>::max());
    EXPECT_EQ(d.Samplers[0].MaxLOD, std::numeric_limits<float>::max());
}

TEST(SamplerBlockParserTest, UnwrittenFieldsKeepTheirDefaults)
{
    ShaderDescription d;
    ASSERT_TRUE(PreprocessShader(kHead + "__SamplerDesc s { }\n", "s", d));
    ASSERT_EQ(d.Samplers.size(), 1u);
    const Graphics::SamplerDescription& s = d.Samplers[0];
    EXPECT_EQ(s.Filter, 0x15);
    EXPECT_EQ(s.AddressU, 3);
    EXPECT_EQ(s.AddressV, 3);
    EXPECT_EQ(s.AddressW, 3);
    EXPECT_EQ(s.MipLODBias, 0.0f);
    EXPECT_EQ(s.MaxAnisotropy, 1);
    EXPECT_EQ(s.ComparisonFunc, 1);
    for (float channel : s.BorderColor)
        EXPECT_EQ(channel, 1.0f);
}

TEST(SamplerBlockParserTest, PlainAnisotropicIsNoFilterType)
{
    ReportCapture capture;
    ShaderDescription d;
    EXPECT_FALSE(PreprocessShader(kHead + "__SamplerDesc s { Filter ANISOTROPIC }\n", "Aniso.glsl", d));
    EXPECT_TRUE(capture.Holds("Error Preprocessing: Aniso.glsl(2)ANISOTROPIC is not a D3D11_FILTER type"));
    EXPECT_EQ(d.Samplers[0].Filter, 0x15);
}

TEST(SamplerBlockParserTest, PrefixedAnisotropicFiltersAreKnown)
{
    ShaderDescription d;
    ASSERT_TRUE(PreprocessShader(kHead + "__SamplerDesc a { Filter COMPARISON_ANISOTROPIC }\n"
                                         "__SamplerDesc b { Filter MINIMUM_ANISOTROPIC }\n"
                                         "__SamplerDesc c { Filter MAXIMUM_ANISOTROPIC }\n",
                                 "s", d));
    ASSERT_EQ(d.Samplers.size(), 3u);
    EXPECT_EQ(d.Samplers[0].Filter, 0xD5);
    EXPECT_EQ(d.Samplers[1].Filter, 0x155);
    EXPECT_EQ(d.Samplers[2].Filter, 0x1D5);
}

TEST(SamplerBlockParserTest, FilterTableHoldsEveryNameWithItsNumber)
{
    const Graphics::KeywordMap& filters = Graphics::Filters();
    EXPECT_EQ(filters.size(), 36u);
    EXPECT_EQ(Graphics::FindKeyword(filters, "MIN_POINT_MAG_LINEAR_MIP_POINT"), 0x04);
    EXPECT_EQ(Graphics::FindKeyword(filters, "COMPARISON_MIN_MAG_MIP_POINT"), 0x80);
    EXPECT_EQ(Graphics::FindKeyword(filters, "COMPARISON_MIN_MAG_MIP_LINEAR"), 0x95);
    EXPECT_EQ(Graphics::FindKeyword(filters, "MINIMUM_MIN_LINEAR_MAG_POINT_MIP_LINEAR"), 0x111);
    EXPECT_EQ(Graphics::FindKeyword(filters, "MAXIMUM_MIN_MAG_POINT_MIP_LINEAR"), 0x181);
    EXPECT_EQ(Graphics::FindKeyword(filters, "ANISOTROPIC "), 0x55);
    EXPECT_EQ(Graphics::FindKeyword(filters, "ANISOTROPIC"), Graphics::kNoKeyword);
}

TEST(SamplerBlockParserTest, TwoBlocksWithOneNameMakeTwoRecordsAndTheFirstIsFound)
{
    ShaderDescription d;
    ASSERT_TRUE(PreprocessShader(kHead + "__SamplerDesc s { AddressU Wrap }\n__SamplerDesc s { AddressU Mirror }\n", "s", d));
    ASSERT_EQ(d.Samplers.size(), 2u);
    ASSERT_NE(d.FindSampler("s"), nullptr);
    EXPECT_EQ(d.FindSampler("s"), &d.Samplers[0]);
    EXPECT_EQ(d.FindSampler("s")->AddressU, 1);
    EXPECT_EQ(d.FindSampler("t"), nullptr);
}

TEST(SamplerBlockParserTest, UnknownAddressModeIsReported)
{
    ReportCapture capture;
    ShaderDescription d;
    EXPECT_FALSE(PreprocessShader(kHead + "__SamplerDesc s { AddressV Sideways }\n", "s", d));
    EXPECT_TRUE(capture.Holds("Sideways is not a D3D11_TEXTURE_ADDRESS_MODE type"));
}

TEST(SamplerBlockParserTest, UnknownComparisonKeepsTheAddressModeWords)
{
    ReportCapture capture;
    ShaderDescription d;
    EXPECT_FALSE(PreprocessShader(kHead + "__SamplerDesc s { ComparisonFunc Often }\n", "s", d));
    EXPECT_TRUE(capture.Holds("Often is not a D3D11_TEXTURE_ADDRESS_MODE type"));
}

TEST(SamplerBlockParserTest, FieldWithoutValueIsMissingData)
{
    ReportCapture capture;
    ShaderDescription d;
    EXPECT_FALSE(PreprocessShader(kHead + "__SamplerDesc s {\nMaxLOD\n}\n", "s", d));
    EXPECT_TRUE(capture.Holds("s(3)Missing data for MaxLOD"));
}

TEST(SamplerBlockParserTest, NumbersThatAreNoNumbersReadZero)
{
    ShaderDescription d;
    ASSERT_TRUE(PreprocessShader(kHead + "__SamplerDesc s { MaxAnisotropy lots MipLODBias 2.5x }\n", "s", d));
    EXPECT_EQ(d.Samplers[0].MaxAnisotropy, 0);
    EXPECT_FLOAT_EQ(d.Samplers[0].MipLODBias, 2.5f);
}

TEST(SamplerBlockParserTest, BlocksCountBracesInOppositeDirectionsAndBothEnd)
{
    // The sampler block raises the depth at "{", the shader block lowers it; both end at 0.
    ShaderDescription d;
    ASSERT_TRUE(PreprocessShader("__SamplerDesc s\n{\n}\n__ShaderDesc\n{\nType Pixel EntryPoint main\n}\nfloat x;\n", "s", d));
    EXPECT_EQ(d.Samplers.size(), 1u);
    EXPECT_EQ(d.Source, "#line 4\n#line 8\nfloat x;\n");
}

TEST(SamplerBlockParserTest, FieldsBeforeAnySamplerAreIgnored)
{
    ShaderDescription d;
    ASSERT_TRUE(PreprocessShader(kHead + "Filter MIN_MAG_MIP_POINT __SamplerDesc s { }\n", "s", d));
    ASSERT_EQ(d.Samplers.size(), 1u);
    EXPECT_EQ(d.Samplers[0].Filter, 0x15);
}
