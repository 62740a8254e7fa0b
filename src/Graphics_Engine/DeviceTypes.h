// DeviceTypes: the plain data that the renderer hands to the graphics device.
// Handles name device objects without exposing what stands behind them; the
// descriptors describe buffers, textures, render targets, samplers and the
// three state blocks. Enumerations keep the numbers of the Direct3D 11 names
// they stand for (DXGI formats, D3D11_FILTER, address modes, comparison
// functions, blend factors, topologies), so that data written with those
// numbers means the same thing here.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace Graphics
{
// A device object of one kind; id 0 is no object.
template <typename Tag>
struct DeviceHandle
{
    // The device's own number for the object; 0 for none.
    std::uint32_t id = 0;
    // True when the handle names an object.
    explicit operator bool() const { return id != 0; }
    // Handles compare by id.
    bool operator==(const DeviceHandle&) const = default;
};

// A vertex, index, uniform or shader-storage buffer.
using BufferHandle = DeviceHandle<struct BufferTag>;
// A 2D texture with its storage.
using TextureHandle = DeviceHandle<struct TextureTag>;
// A view of a texture's storage under a compatible format.
using TextureViewHandle = DeviceHandle<struct TextureViewTag>;
// Colour targets and a depth target drawn into together.
using RenderTargetHandle = DeviceHandle<struct RenderTargetTag>;
// A sampler object.
using SamplerHandle = DeviceHandle<struct SamplerTag>;
// One compiled stage, linked on its own.
using StageProgramHandle = DeviceHandle<struct StageProgramTag>;
// Stage programs combined for drawing or dispatching.
using PipelineHandle = DeviceHandle<struct PipelineTag>;
// The vertex input format.
using InputLayoutHandle = DeviceHandle<struct InputLayoutTag>;
// A blend state.
using BlendStateHandle = DeviceHandle<struct BlendStateTag>;
// A rasterizer state.
using RasterizerStateHandle = DeviceHandle<struct RasterizerStateTag>;
// A depth-stencil state.
using DepthStencilStateHandle = DeviceHandle<struct DepthStencilStateTag>;

// Texture and vertex element formats, by their DXGI_FORMAT numbers.
enum class Format : std::uint32_t
{
    UNKNOWN = 0,
    R32G32B32A32_FLOAT = 2,
    R32G32B32A32_UINT = 3,
    R32G32B32A32_SINT = 4,
    R32G32B32_FLOAT = 6,
    R32G32B32_UINT = 7,
    R32G32B32_SINT = 8,
    R16G16B16A16_FLOAT = 10,
    R32G32_FLOAT = 16,
    R32G32_UINT = 17,
    R32G32_SINT = 18,
    R10G10B10A2_UNORM = 24,
    R8G8B8A8_UNORM = 28,
    R8G8B8A8_UNORM_SRGB = 29,
    R16G16_FLOAT = 34,
    R32_TYPELESS = 39,
    D32_FLOAT = 40,
    R32_FLOAT = 41,
    R32_UINT = 42,
    R32_SINT = 43,
    R16_FLOAT = 54,
    R16_UINT = 57,
    B8G8R8A8_UNORM = 87,
};

// What a buffer is bound as.
enum class BufferKind
{
    Vertex,
    Index,
    Uniform,
    ShaderStorage,
};

// How a buffer is written after creation.
enum class BufferUsage
{
    // Written with UpdateSubresource only.
    Default,
    // Written through Map and Unmap, often.
    Dynamic,
};

// How Map treats the buffer's earlier contents.
enum class MapMode
{
    // D3D11_MAP_WRITE_DISCARD: the whole old contents are dropped (the buffer is orphaned).
    WriteDiscard = 4,
    // D3D11_MAP_WRITE_NO_OVERWRITE: the caller writes only a region the GPU is not reading.
    WriteNoOverwrite = 5,
};

// A buffer to create.
struct BufferDesc
{
    // Bytes; at least 1.
    std::uint32_t size = 0;
    // What it is bound as.
    BufferKind kind = BufferKind::Vertex;
    // How it is written.
    BufferUsage usage = BufferUsage::Default;
};

// What a texture may be used as, besides being sampled.
enum TextureBindFlags : std::uint32_t
{
    // Sampled in shaders.
    BindShaderResource = 0x8,
    // Drawn into as a colour target.
    BindRenderTarget = 0x20,
    // Drawn into as the depth target.
    BindDepthStencil = 0x40,
    // Written as an image (unordered access).
    BindUnorderedAccess = 0x80,
};

// A 2D texture to create.
struct TextureDesc
{
    // Size in texels.
    std::uint32_t width = 1;
    std::uint32_t height = 1;
    // Mip levels; 0 means the full chain.
    std::uint32_t mipLevels = 1;
    // Storage format; R32_TYPELESS and D32_FLOAT make a 32-bit float depth texture.
    Format format = Format::R8G8B8A8_UNORM;
    // TextureBindFlags combined.
    std::uint32_t bindFlags = BindShaderResource;
};

// Colour targets and an optional depth target to draw into together.
struct RenderTargetDesc
{
    // Colour textures in attachment order (at most 8).
    std::vector<TextureHandle> colours;
    // The depth texture, or none.
    TextureHandle depth;
};

// D3D11_TEXTURE_ADDRESS_MODE numbers.
enum class AddressMode : std::uint32_t
{
    Wrap = 1,
    Mirror = 2,
    Clamp = 3,
    Border = 4,
    MirrorOnce = 5,
};

// D3D11_COMPARISON_FUNC numbers.
enum class ComparisonFunc : std::uint32_t
{
    Never = 1,
    Less = 2,
    Equal = 3,
    LessEqual = 4,
    Greater = 5,
    NotEqual = 6,
    GreaterEqual = 7,
    Always = 8,
};

// A sampler, as a D3D11_SAMPLER_DESC: `filter` is a D3D11_FILTER number.
struct SamplerDesc
{
    // D3D11_FILTER: bit 0 mip linear, bit 2 mag linear, bit 4 min linear, 0x40 anisotropic,
    // 0x80 comparison, 0x100 minimum, 0x180 maximum.
    std::uint32_t filter = 0x15;
    AddressMode addressU = AddressMode::Clamp;
    AddressMode addressV = AddressMode::Clamp;
    AddressMode addressW = AddressMode::Clamp;
    float mipLodBias = 0.0f;
    // Used with anisotropic filters; 1 to 16.
    std::uint32_t maxAnisotropy = 1;
    // Used with comparison filters.
    ComparisonFunc comparison = ComparisonFunc::Never;
    std::array<float, 4> borderColor{1.0f, 1.0f, 1.0f, 1.0f};
    float minLod = -3.402823466e+38f;
    float maxLod = 3.402823466e+38f;
};

// D3D11_BLEND numbers.
enum class Blend : std::uint32_t
{
    Zero = 1,
    One = 2,
    SrcColor = 3,
    InvSrcColor = 4,
    SrcAlpha = 5,
    InvSrcAlpha = 6,
    DestAlpha = 7,
    InvDestAlpha = 8,
    DestColor = 9,
    InvDestColor = 10,
    SrcAlphaSat = 11,
    BlendFactor = 14,
    InvBlendFactor = 15,
    Src1Color = 16,
    InvSrc1Color = 17,
    Src1Alpha = 18,
    InvSrc1Alpha = 19,
};

// D3D11_BLEND_OP numbers.
enum class BlendOp : std::uint32_t
{
    Add = 1,
    Subtract = 2,
    RevSubtract = 3,
    Min = 4,
    Max = 5,
};

// Blending of one colour target.
struct RenderTargetBlendDesc
{
    bool blendEnable = false;
    Blend srcBlend = Blend::One;
    Blend destBlend = Blend::Zero;
    BlendOp blendOp = BlendOp::Add;
    Blend srcBlendAlpha = Blend::One;
    Blend destBlendAlpha = Blend::Zero;
    BlendOp blendOpAlpha = BlendOp::Add;
    // Bits 1 red, 2 green, 4 blue, 8 alpha.
    std::uint8_t writeMask = 0xF;
};

// A blend state, as a D3D11_BLEND_DESC.
struct BlendDesc
{
    bool alphaToCoverage = false;
    // Off: every target uses renderTargets[0].
    bool independentBlend = false;
    std::array<RenderTargetBlendDesc, 8> renderTargets{};
};

// D3D11_FILL_MODE numbers.
enum class FillMode : std::uint32_t
{
    Wireframe = 2,
    Solid = 3,
};

// D3D11_CULL_MODE numbers.
enum class CullMode : std::uint32_t
{
    None = 1,
    Front = 2,
    Back = 3,
};

// A rasterizer state, as a D3D11_RASTERIZER_DESC.
struct RasterizerDesc
{
    FillMode fillMode = FillMode::Solid;
    CullMode cullMode = CullMode::Back;
    // Front faces wind counter-clockwise on the screen.
    bool frontCounterClockwise = false;
    std::int32_t depthBias = 0;
    float depthBiasClamp = 0.0f;
    float slopeScaledDepthBias = 0.0f;
    // Off clamps depth instead of clipping.
    bool depthClipEnable = true;
    bool scissorEnable = false;
    bool multisampleEnable = false;
    bool antialiasedLineEnable = false;
};

// D3D11_STENCIL_OP numbers.
enum class StencilOp : std::uint32_t
{
    Keep = 1,
    Zero = 2,
    Replace = 3,
    IncrSat = 4,
    DecrSat = 5,
    Invert = 6,
    Incr = 7,
    Decr = 8,
};

// Stencil handling of one face.
struct StencilFaceDesc
{
    StencilOp failOp = StencilOp::Keep;
    StencilOp depthFailOp = StencilOp::Keep;
    StencilOp passOp = StencilOp::Keep;
    ComparisonFunc func = ComparisonFunc::Always;
};

// A depth-stencil state, as a D3D11_DEPTH_STENCIL_DESC.
struct DepthStencilDesc
{
    bool depthEnable = true;
    // D3D11_DEPTH_WRITE_MASK_ALL when true, _ZERO when false.
    bool depthWrite = true;
    ComparisonFunc depthFunc = ComparisonFunc::Less;
    bool stencilEnable = false;
    std::uint8_t stencilReadMask = 0xFF;
    std::uint8_t stencilWriteMask = 0xFF;
    StencilFaceDesc frontFace{};
    StencilFaceDesc backFace{};
};

// D3D11_PRIMITIVE_TOPOLOGY numbers; 33 to 64 are patch lists of 1 to 32 control points.
enum class PrimitiveTopology : std::uint32_t
{
    Undefined = 0,
    PointList = 1,
    LineList = 2,
    LineStrip = 3,
    TriangleList = 4,
    TriangleStrip = 5,
    LineListAdj = 10,
    LineStripAdj = 11,
    TriangleListAdj = 12,
    TriangleStripAdj = 13,
    PatchList1 = 33,
    PatchList3 = 35,
    PatchList4 = 36,
};

// One element of a vertex input format.
struct InputElementDesc
{
    // The vertex program's input location.
    std::uint32_t location = 0;
    // One of the float, signed or unsigned 32-bit formats of one to four components.
    Format format = Format::R32G32B32A32_FLOAT;
    // The vertex buffer slot it is read from.
    std::uint32_t slot = 0;
    // Byte offset in the vertex; kAppendAligned places it right after the element before.
    std::uint32_t offset = 0xFFFFFFFF;
    // Read once per instance instead of once per vertex.
    bool perInstance = false;
};

// D3D11_APPEND_ALIGNED_ELEMENT.
inline constexpr std::uint32_t kAppendAligned = 0xFFFFFFFF;

// The stages of a program.
enum class ShaderStage
{
    Vertex,
    Geometry,
    Hull,
    Domain,
    Pixel,
    Compute,
};

// How a shader reaches an image.
enum class ImageAccess
{
    ReadOnly,
    WriteOnly,
    ReadWrite,
};

// A rectangle of the target, top-left origin, with its depth range.
struct Viewport
{
    float x = 0.0f;
    float y = 0.0f;
    float width = 0.0f;
    float height = 0.0f;
    float minDepth = 0.0f;
    float maxDepth = 1.0f;
};
}
