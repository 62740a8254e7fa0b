#include "platform/gl/GlTranslate.h"

#include "platform/gl/GlTestDevice.h"

#include <epoxy/gl.h>
#include <gtest/gtest.h>

#include <cfloat>

using namespace Graphics;
using Platform::Gl::DecomposeFilter;

TEST(GlTranslate, FilterNumbersSplitIntoMinAndMagFilters)
{
    EXPECT_EQ(DecomposeFilter(0x00).minFilter, GL_NEAREST_MIPMAP_NEAREST);
    EXPECT_EQ(DecomposeFilter(0x00).magFilter, GL_NEAREST);
    EXPECT_EQ(DecomposeFilter(0x01).minFilter, GL_NEAREST_MIPMAP_LINEAR);
    EXPECT_EQ(DecomposeFilter(0x04).magFilter, GL_LINEAR);
    EXPECT_EQ(DecomposeFilter(0x04).minFilter, GL_NEAREST_MIPMAP_NEAREST);
    EXPECT_EQ(DecomposeFilter(0x10).minFilter, GL_LINEAR_MIPMAP_NEAREST);
    EXPECT_EQ(DecomposeFilter(0x10).magFilter, GL_NEAREST);
    EXPECT_EQ(DecomposeFilter(0x14).minFilter, GL_LINEAR_MIPMAP_NEAREST);
    EXPECT_EQ(DecomposeFilter(0x15).minFilter, GL_LINEAR_MIPMAP_LINEAR);
    EXPECT_EQ(DecomposeFilter(0x15).magFilter, GL_LINEAR);
}

TEST(GlTranslate, ComparisonMinimumMaximumAndAnisotropicBitsAreRecognised)
{
    EXPECT_FALSE(DecomposeFilter(0x15).comparison);
    EXPECT_TRUE(DecomposeFilter(0x95).comparison);
    EXPECT_EQ(DecomposeFilter(0x95).minFilter, GL_LINEAR_MIPMAP_LINEAR);
    EXPECT_EQ(DecomposeFilter(0x115).reduction, 1);
    EXPECT_FALSE(DecomposeFilter(0x115).comparison);
    EXPECT_EQ(DecomposeFilter(0x195).reduction, 2);
    EXPECT_TRUE(DecomposeFilter(0x55).anisotropic);
    EXPECT_TRUE(DecomposeFilter(0xD5).anisotropic);
    EXPECT_TRUE(DecomposeFilter(0xD5).comparison);
    EXPECT_FALSE(DecomposeFilter(0x15).anisotropic);
}

TEST(GlTranslate, AddressModesAndFormatsMapOneToOne)
{
    EXPECT_EQ(Platform::Gl::AddressMode(AddressMode::Wrap), GL_REPEAT);
    EXPECT_EQ(Platform::Gl::AddressMode(AddressMode::Mirror), GL_MIRRORED_REPEAT);
    EXPECT_EQ(Platform::Gl::AddressMode(AddressMode::Clamp), GL_CLAMP_TO_EDGE);
    EXPECT_EQ(Platform::Gl::AddressMode(AddressMode::Border), GL_CLAMP_TO_BORDER);
    EXPECT_EQ(Platform::Gl::AddressMode(AddressMode::MirrorOnce), GL_MIRROR_CLAMP_TO_EDGE);
    EXPECT_EQ(Platform::Gl::TextureFormat(Format::R10G10B10A2_UNORM).internalFormat, GL_RGB10_A2);
    EXPECT_EQ(Platform::Gl::TextureFormat(Format::R8G8B8A8_UNORM_SRGB).internalFormat, GL_SRGB8_ALPHA8);
    EXPECT_EQ(Platform::Gl::TextureFormat(Format::B8G8R8A8_UNORM).internalFormat, GL_RGBA8);
    EXPECT_EQ(Platform::Gl::TextureFormat(Format::R32_TYPELESS).internalFormat, GL_DEPTH_COMPONENT32F);
    EXPECT_EQ(Platform::Gl::TextureFormat(static_cast<Format>(12345)).internalFormat, 0u);
    EXPECT_EQ(Platform::Gl::PrimitiveMode(PrimitiveTopology::PatchList3), static_cast<std::uint32_t>(GL_PATCHES));
    EXPECT_EQ(Platform::Gl::PatchControlPoints(PrimitiveTopology::PatchList3), 3);
}

TEST_F(GlDeviceFixture, ASamplerFromAFilterNumberHasTheMatchingGlFilters)
{
    SamplerDesc point;
    point.filter = 0x00;
    point.addressU = AddressMode::Wrap;
    point.addressV = AddressMode::Border;
    point.addressW = AddressMode::Mirror;
    const SamplerHandle pointSampler = m_Device->CreateSampler(point);
    EXPECT_EQ(SamplerParameter(pointSampler, GL_TEXTURE_MIN_FILTER), GL_NEAREST_MIPMAP_NEAREST);
    EXPECT_EQ(SamplerParameter(pointSampler, GL_TEXTURE_MAG_FILTER), GL_NEAREST);
    EXPECT_EQ(SamplerParameter(pointSampler, GL_TEXTURE_WRAP_S), GL_REPEAT);
    EXPECT_EQ(SamplerParameter(pointSampler, GL_TEXTURE_WRAP_T), GL_CLAMP_TO_BORDER);
    EXPECT_EQ(SamplerParameter(pointSampler, GL_TEXTURE_WRAP_R), GL_MIRRORED_REPEAT);
    EXPECT_EQ(SamplerParameter(pointSampler, GL_TEXTURE_COMPARE_MODE), GL_NONE);

    SamplerDesc shadow;
    shadow.filter = 0x94;  // COMPARISON_MIN_MAG_LINEAR_MIP_POINT
    shadow.comparison = ComparisonFunc::LessEqual;
    shadow.mipLodBias = 0.5f;
    shadow.minLod = 1.0f;
    shadow.maxLod = 4.0f;
    const SamplerHandle shadowSampler = m_Device->CreateSampler(shadow);
    EXPECT_EQ(SamplerParameter(shadowSampler, GL_TEXTURE_MIN_FILTER), GL_LINEAR_MIPMAP_NEAREST);
    EXPECT_EQ(SamplerParameter(shadowSampler, GL_TEXTURE_MAG_FILTER), GL_LINEAR);
    EXPECT_EQ(SamplerParameter(shadowSampler, GL_TEXTURE_COMPARE_MODE), GL_COMPARE_REF_TO_TEXTURE);
    EXPECT_EQ(SamplerParameter(shadowSampler, GL_TEXTURE_COMPARE_FUNC), GL_LEQUAL);
    EXPECT_FLOAT_EQ(SamplerParameterFloat(shadowSampler, GL_TEXTURE_LOD_BIAS), 0.5f);
    EXPECT_FLOAT_EQ(SamplerParameterFloat(shadowSampler, GL_TEXTURE_MIN_LOD), 1.0f);
    EXPECT_FLOAT_EQ(SamplerParameterFloat(shadowSampler, GL_TEXTURE_MAX_LOD), 4.0f);

    SamplerDesc anisotropic;
    anisotropic.filter = 0x55;
    anisotropic.maxAnisotropy = 8;
    const SamplerHandle anisotropicSampler = m_Device->CreateSampler(anisotropic);
    EXPECT_EQ(SamplerParameter(anisotropicSampler, GL_TEXTURE_MIN_FILTER), GL_LINEAR_MIPMAP_LINEAR);
    EXPECT_FLOAT_EQ(SamplerParameterFloat(anisotropicSampler, GL_TEXTURE_MAX_ANISOTROPY_EXT), 8.0f);

    const SamplerHandle defaults = m_Device->CreateSampler({});
    EXPECT_EQ(SamplerParameter(defaults, GL_TEXTURE_MIN_FILTER), GL_LINEAR_MIPMAP_LINEAR);
    EXPECT_EQ(SamplerParameter(defaults, GL_TEXTURE_WRAP_S), GL_CLAMP_TO_EDGE);
    EXPECT_FLOAT_EQ(SamplerParameterFloat(defaults, GL_TEXTURE_MAX_LOD), FLT_MAX);
    EXPECT_FLOAT_EQ(SamplerParameterFloat(defaults, GL_TEXTURE_MIN_LOD), -FLT_MAX);
}
