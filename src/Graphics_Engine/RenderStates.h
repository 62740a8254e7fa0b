// Plain descriptions of the fixed-function states a RenderStateBlock keeps:
// blending, depth and stencil, rasterizer, and the primitive topology. The
// numbers and defaults are those of the Direct3D 11 descriptions the renderer's
// code is written against; the device maps them onto OpenGL one to one. The
// enumerations (blend, comparison, stencil, fill, cull, topology) are the device's own.
#pragma once

#include "Graphics_Engine/DeviceTypes.h"

#include <array>

namespace Graphics
{
// Blending of one render target after the first, used when IndependentBlendEnable is on.
struct TargetBlendDescription
{
    // Descriptions compare member by member.
    bool operator==(const TargetBlendDescription&) const = default;
    // Blending on.
    bool BlendEnable = false;
    // Colour factor of the source.
    Blend SrcBlend = Blend::One;
    // Colour factor of the destination.
    Blend DestBlend = Blend::Zero;
    // Colour operation.
    BlendOp Op = BlendOp::Add;
    // Alpha factor of the source.
    Blend SrcBlendAlpha = Blend::One;
    // Alpha factor of the destination.
    Blend DestBlendAlpha = Blend::Zero;
    // Alpha operation.
    BlendOp OpAlpha = BlendOp::Add;
    // Channels written, bit 0 red to bit 3 alpha.
    unsigned WriteMask = 0xF;
};

// Blending of the render targets: the fields below describe target 0, and every target when
// IndependentBlendEnable is off.
struct BlendDescription
{
    // Descriptions compare member by member.
    bool operator==(const BlendDescription&) const = default;
    // Alpha to coverage in multisampling.
    bool AlphaToCoverageEnable = false;
    // Blending on.
    bool BlendEnable = false;
    // Colour factor of the source.
    Blend SrcBlend = Blend::One;
    // Colour factor of the destination.
    Blend DestBlend = Blend::Zero;
    // Colour operation.
    BlendOp Op = BlendOp::Add;
    // Alpha factor of the source.
    Blend SrcBlendAlpha = Blend::One;
    // Alpha factor of the destination.
    Blend DestBlendAlpha = Blend::Zero;
    // Alpha operation.
    BlendOp OpAlpha = BlendOp::Add;
    // Channels written, bit 0 red to bit 3 alpha.
    unsigned WriteMask = 0xF;
    // Targets 1 to 7 blend as OtherTargets says instead of as target 0.
    bool IndependentBlendEnable = false;
    // Blending of targets 1 to 7 (element 0 is target 1), used when IndependentBlendEnable is on.
    std::array<TargetBlendDescription, 7> OtherTargets{};
};

// The operations of one stencil face.
struct StencilFace
{
    // Descriptions compare member by member.
    bool operator==(const StencilFace&) const = default;
    // When the stencil test fails.
    StencilOp FailOp = StencilOp::Keep;
    // When the stencil test passes and the depth test fails.
    StencilOp DepthFailOp = StencilOp::Keep;
    // When both pass.
    StencilOp PassOp = StencilOp::Keep;
    // The stencil test.
    ComparisonFunc Func = ComparisonFunc::Always;
};

// Depth and stencil testing.
struct DepthStencilDescription
{
    // Descriptions compare member by member.
    bool operator==(const DepthStencilDescription&) const = default;
    // Depth test on.
    bool DepthEnable = true;
    // Depth writes on.
    bool DepthWrite = true;
    // The depth test.
    ComparisonFunc DepthFunc = ComparisonFunc::Less;
    // Stencil test on.
    bool StencilEnable = false;
    // Bits read by the stencil test.
    unsigned StencilReadMask = 0xFF;
    // Bits written to the stencil.
    unsigned StencilWriteMask = 0xFF;
    // Front faces.
    StencilFace Front;
    // Back faces.
    StencilFace Back;
};

// Rasterization.
struct RasterizerDescription
{
    // Descriptions compare member by member.
    bool operator==(const RasterizerDescription&) const = default;
    // Solid or wireframe.
    FillMode Fill = FillMode::Solid;
    // Culled faces.
    CullMode Cull = CullMode::Back;
    // Counter-clockwise triangles are front faces.
    bool FrontCounterClockwise = false;
    // Constant depth bias.
    int DepthBias = 0;
    // Largest depth bias.
    float DepthBiasClamp = 0.0f;
    // Depth bias by slope.
    float SlopeScaledDepthBias = 0.0f;
    // Clipping against depth (no depth clamp).
    bool DepthClipEnable = true;
    // Scissor test on.
    bool ScissorEnable = false;
    // Multisampling on.
    bool MultisampleEnable = false;
    // Line antialiasing on.
    bool AntialiasedLineEnable = false;
};
}
