#include "platform/gl/GlTranslate.h"

#include <epoxy/gl.h>

namespace Platform::Gl
{
using Graphics::Format;

FormatInfo TextureFormat(Format format)
{
    switch (format)
    {
    case Format::R32G32B32A32_FLOAT:
        return {GL_RGBA32F, GL_RGBA, GL_FLOAT, 16, false};
    case Format::R32G32B32A32_UINT:
        return {GL_RGBA32UI, GL_RGBA_INTEGER, GL_UNSIGNED_INT, 16, false};
    case Format::R32G32B32A32_SINT:
        return {GL_RGBA32I, GL_RGBA_INTEGER, GL_INT, 16, false};
    case Format::R16G16B16A16_FLOAT:
        return {GL_RGBA16F, GL_RGBA, GL_HALF_FLOAT, 8, false};
    case Format::R32G32_FLOAT:
        return {GL_RG32F, GL_RG, GL_FLOAT, 8, false};
    case Format::R16G16_FLOAT:
        return {GL_RG16F, GL_RG, GL_HALF_FLOAT, 4, false};
    case Format::R10G10B10A2_UNORM:
        return {GL_RGB10_A2, GL_RGBA, GL_UNSIGNED_INT_2_10_10_10_REV, 4, false};
    case Format::R8G8B8A8_UNORM:
    case Format::B8G8R8A8_UNORM:
        return {GL_RGBA8, GL_RGBA, GL_UNSIGNED_BYTE, 4, false};
    case Format::R8G8B8A8_UNORM_SRGB:
        return {GL_SRGB8_ALPHA8, GL_RGBA, GL_UNSIGNED_BYTE, 4, false};
    case Format::R32_TYPELESS:
    case Format::D32_FLOAT:
        return {GL_DEPTH_COMPONENT32F, GL_DEPTH_COMPONENT, GL_FLOAT, 4, true};
    case Format::R32_FLOAT:
        return {GL_R32F, GL_RED, GL_FLOAT, 4, false};
    case Format::R32_UINT:
        return {GL_R32UI, GL_RED_INTEGER, GL_UNSIGNED_INT, 4, false};
    case Format::R32_SINT:
        return {GL_R32I, GL_RED_INTEGER, GL_INT, 4, false};
    case Format::R16_FLOAT:
        return {GL_R16F, GL_RED, GL_HALF_FLOAT, 2, false};
    case Format::R16_UINT:
        return {GL_R16UI, GL_RED_INTEGER, GL_UNSIGNED_SHORT, 2, false};
    default:
        return {};
    }
}

VertexFormatInfo VertexFormat(Format format)
{
    switch (format)
    {
    case Format::R32G32B32A32_FLOAT:
        return {4, GL_FLOAT, false, 16};
    case Format::R32G32B32_FLOAT:
        return {3, GL_FLOAT, false, 12};
    case Format::R32G32_FLOAT:
        return {2, GL_FLOAT, false, 8};
    case Format::R32_FLOAT:
        return {1, GL_FLOAT, false, 4};
    case Format::R32G32B32A32_UINT:
        return {4, GL_UNSIGNED_INT, true, 16};
    case Format::R32G32B32_UINT:
        return {3, GL_UNSIGNED_INT, true, 12};
    case Format::R32G32_UINT:
        return {2, GL_UNSIGNED_INT, true, 8};
    case Format::R32_UINT:
        return {1, GL_UNSIGNED_INT, true, 4};
    case Format::R32G32B32A32_SINT:
        return {4, GL_INT, true, 16};
    case Format::R32G32B32_SINT:
        return {3, GL_INT, true, 12};
    case Format::R32G32_SINT:
        return {2, GL_INT, true, 8};
    case Format::R32_SINT:
        return {1, GL_INT, true, 4};
    case Format::R8G8B8A8_UNORM:
        return {4, GL_UNSIGNED_BYTE, false, 4};
    default:
        return {};
    }
}

FilterInfo DecomposeFilter(std::uint32_t filter)
{
    FilterInfo info;
    const bool mipLinear = (filter & 0x01) != 0;
    const bool magLinear = (filter & 0x04) != 0;
    const bool minLinear = (filter & 0x10) != 0;
    info.anisotropic = (filter & 0x40) != 0;
    const std::uint32_t reduction = (filter >> 7) & 0x3;
    info.comparison = reduction == 1;
    info.reduction = reduction >= 2 ? static_cast<int>(reduction) - 1 : 0;
    if (info.anisotropic)
    {
        info.minFilter = GL_LINEAR_MIPMAP_LINEAR;
        info.magFilter = GL_LINEAR;
        return info;
    }
    info.magFilter = magLinear ? GL_LINEAR : GL_NEAREST;
    if (minLinear)
        info.minFilter = mipLinear ? GL_LINEAR_MIPMAP_LINEAR : GL_LINEAR_MIPMAP_NEAREST;
    else
        info.minFilter = mipLinear ? GL_NEAREST_MIPMAP_LINEAR : GL_NEAREST_MIPMAP_NEAREST;
    return info;
}

std::int32_t AddressMode(Graphics::AddressMode mode)
{
    switch (mode)
    {
    case Graphics::AddressMode::Wrap:
        return GL_REPEAT;
    case Graphics::AddressMode::Mirror:
        return GL_MIRRORED_REPEAT;
    case Graphics::AddressMode::Border:
        return GL_CLAMP_TO_BORDER;
    case Graphics::AddressMode::MirrorOnce:
        return GL_MIRROR_CLAMP_TO_EDGE;
    case Graphics::AddressMode::Clamp:
    default:
        return GL_CLAMP_TO_EDGE;
    }
}

std::uint32_t ComparisonFunc(Graphics::ComparisonFunc func)
{
    switch (func)
    {
    case Graphics::ComparisonFunc::Never:
        return GL_NEVER;
    case Graphics::ComparisonFunc::Less:
        return GL_LESS;
    case Graphics::ComparisonFunc::Equal:
        return GL_EQUAL;
    case Graphics::ComparisonFunc::LessEqual:
        return GL_LEQUAL;
    case Graphics::ComparisonFunc::Greater:
        return GL_GREATER;
    case Graphics::ComparisonFunc::NotEqual:
        return GL_NOTEQUAL;
    case Graphics::ComparisonFunc::GreaterEqual:
        return GL_GEQUAL;
    case Graphics::ComparisonFunc::Always:
    default:
        return GL_ALWAYS;
    }
}

std::uint32_t BlendFactor(Graphics::Blend blend)
{
    using Graphics::Blend;
    switch (blend)
    {
    case Blend::Zero:
        return GL_ZERO;
    case Blend::SrcColor:
        return GL_SRC_COLOR;
    case Blend::InvSrcColor:
        return GL_ONE_MINUS_SRC_COLOR;
    case Blend::SrcAlpha:
        return GL_SRC_ALPHA;
    case Blend::InvSrcAlpha:
        return GL_ONE_MINUS_SRC_ALPHA;
    case Blend::DestAlpha:
        return GL_DST_ALPHA;
    case Blend::InvDestAlpha:
        return GL_ONE_MINUS_DST_ALPHA;
    case Blend::DestColor:
        return GL_DST_COLOR;
    case Blend::InvDestColor:
        return GL_ONE_MINUS_DST_COLOR;
    case Blend::SrcAlphaSat:
        return GL_SRC_ALPHA_SATURATE;
    case Blend::BlendFactor:
        return GL_CONSTANT_COLOR;
    case Blend::InvBlendFactor:
        return GL_ONE_MINUS_CONSTANT_COLOR;
    case Blend::Src1Color:
        return GL_SRC1_COLOR;
    case Blend::InvSrc1Color:
        return GL_ONE_MINUS_SRC1_COLOR;
    case Blend::Src1Alpha:
        return GL_SRC1_ALPHA;
    case Blend::InvSrc1Alpha:
        return GL_ONE_MINUS_SRC1_ALPHA;
    case Blend::One:
    default:
        return GL_ONE;
    }
}

std::uint32_t BlendOperation(Graphics::BlendOp op)
{
    switch (op)
    {
    case Graphics::BlendOp::Subtract:
        return GL_FUNC_SUBTRACT;
    case Graphics::BlendOp::RevSubtract:
        return GL_FUNC_REVERSE_SUBTRACT;
    case Graphics::BlendOp::Min:
        return GL_MIN;
    case Graphics::BlendOp::Max:
        return GL_MAX;
    case Graphics::BlendOp::Add:
    default:
        return GL_FUNC_ADD;
    }
}

std::uint32_t StencilOperation(Graphics::StencilOp op)
{
    using Graphics::StencilOp;
    switch (op)
    {
    case StencilOp::Zero:
        return GL_ZERO;
    case StencilOp::Replace:
        return GL_REPLACE;
    case StencilOp::IncrSat:
        return GL_INCR;
    case StencilOp::DecrSat:
        return GL_DECR;
    case StencilOp::Invert:
        return GL_INVERT;
    case StencilOp::Incr:
        return GL_INCR_WRAP;
    case StencilOp::Decr:
        return GL_DECR_WRAP;
    case StencilOp::Keep:
    default:
        return GL_KEEP;
    }
}

std::uint32_t PrimitiveMode(Graphics::PrimitiveTopology topology)
{
    using Graphics::PrimitiveTopology;
    if (PatchControlPoints(topology) > 0)
        return GL_PATCHES;
    switch (topology)
    {
    case PrimitiveTopology::PointList:
        return GL_POINTS;
    case PrimitiveTopology::LineList:
        return GL_LINES;
    case PrimitiveTopology::LineStrip:
        return GL_LINE_STRIP;
    case PrimitiveTopology::TriangleStrip:
        return GL_TRIANGLE_STRIP;
    case PrimitiveTopology::LineListAdj:
        return GL_LINES_ADJACENCY;
    case PrimitiveTopology::LineStripAdj:
        return GL_LINE_STRIP_ADJACENCY;
    case PrimitiveTopology::TriangleListAdj:
        return GL_TRIANGLES_ADJACENCY;
    case PrimitiveTopology::TriangleStripAdj:
        return GL_TRIANGLE_STRIP_ADJACENCY;
    case PrimitiveTopology::TriangleList:
    default:
        return GL_TRIANGLES;
    }
}

int PatchControlPoints(Graphics::PrimitiveTopology topology)
{
    const auto value = static_cast<std::uint32_t>(topology);
    return value >= 33 && value <= 64 ? static_cast<int>(value - 32) : 0;
}
}
