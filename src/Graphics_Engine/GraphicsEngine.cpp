#include "Graphics_Engine/GraphicsEngine.h"

#include "Graphics_Engine/Components/MeshResources.h"
#include "Graphics_Engine/DeviceRenderStateApplier.h"
#include "Graphics_Engine/Lights/LightManager.h"
#include "Graphics_Engine/Material/Texture/TextureManager.h"
#include "Graphics_Engine/Model/ModelManager.h"
#include "Graphics_Engine/PipeLines/Batching.h"
#include "Graphics_Engine/PipeLines/FrameContext.h"
#include "Graphics_Engine/PipeLines/InstanceBuffer/InstanceBuffer.h"
#include "Graphics_Engine/PipeLines/RenderPipeline.h"
#include "Graphics_Engine/PipeLines/ShaderSource.h"
#include "Graphics_Engine/Projection.h"
#include "Graphics_Engine/RenderLists.h"
#include "Graphics_Engine/Resolution.h"
#include "Graphics_Engine/ShaderLookup.h"
#include "Graphics_Engine/ShaderManager.h"
#include "Graphics_Engine/Spaces/GraphicsSpace.h"
#include "Graphics_Engine/VariableTable.h"
#include "engine/Files.h"
#include "engine/Log.h"
#include "engine/Window.h"
#include "platform/ImageWriter.h"
#include "platform/NativeWindow.h"
#include "platform/gl/GlContext.h"
#include "platform/gl/GlDevice.h"
#include "utilities/Meta/Registration.h"

#include <cstdio>
#include <cstdlib>
#include <sstream>

META_REGISTER_NS(Graphics, GraphicsEngine)
{
    DERIVE(System);
    DESCRIPTION("The 3D renderer.");
    PROPERTY(Fullscreen, GetFullscreen, SetFullscreen, "Whether the game fills the monitor.");
    PROPERTY(Resolution, GetResolution, SetResolution, "The index into the resolution table (0 to 8).");
    PROPERTY(UseWindowSize, GetUseWindowSize, SetUseWindowSize, "Render at the window's size.");
    METHOD(Resize);
    METHOD(GetFullscreen);
    METHOD(SetFullscreen);
    METHOD(GetResolutionString);
    METHOD(GetResolutionCount);
    HELP("The world direction under the mouse (x, y in percent of the window).");
    METHOD(GetMouseVec);
    HELP("Where the ray under the mouse (x, y in percent of the window) meets the ground plane y = 0.");
    METHOD(GetMousePos);
    METHOD(GetWidth);
    METHOD(GetHeight);
    HELP("The window point a world point is drawn at.");
    METHOD(Point3DTo2D);
    METHOD(Get);
    HELP("Saves the picture drawn the given number of frames from now (0: the next) as a PNG at the path.");
    METHOD(ScreenshotAfter);
}

namespace Graphics
{
namespace
{
// Bytes as gigabytes, for the adapter log.
std::string Gigabytes(std::uint64_t bytes)
{
    std::ostringstream text;
    text << static_cast<double>(bytes) * (1.0 / 1073741824.0);
    return text.str();
}
}

GraphicsEngine& GraphicsEngine::Get()
{
    static GraphicsEngine* engine = new GraphicsEngine();
    return *engine;
}

GraphicsEngine::GraphicsEngine()
    : m_RenderLists(std::make_unique<RenderLists>()), m_LightManager(std::make_unique<LightManager>()),
      m_VariableTable(std::make_unique<VariableTable>())
{
}

GraphicsEngine::~GraphicsEngine()
{
    ShutdownDevice();
    // Spaces that outlive the engine keep no pointer to its light manager.
    for (const std::shared_ptr<SpaceRenderData>& data : m_RenderLists->m_Spaces)
        if (data && data->Owner)
            data->Owner->SetLightManager(nullptr);
}

Meta::Data* GraphicsEngine::GetMeta() const
{
    return Meta::Get<GraphicsEngine>();
}

void GraphicsEngine::OnResolutionOption(const char* value)
{
    if (value == nullptr)
        return;
    SetResolution(static_cast<unsigned>(std::strtoul(value, nullptr, 10)));
    m_ResolutionFromOption = true;
}

void GraphicsEngine::OnScreenshotOption(const char* value)
{
    if (value == nullptr)
    {
        LOG("WARNING", "Option --screenshot needs a frame number of two or more digits, such as --screenshot=05.");
        return;
    }
    m_ScreenshotFrame = std::strtoll(value, nullptr, 10);
}

void GraphicsEngine::RequestScreenshot(unsigned frame, const std::string& path)
{
    m_ScreenshotFrame = frame;
    m_ScreenshotPath = path;
}

void GraphicsEngine::SetResolution(unsigned index)
{
    Resolution = ClampResolution(index);
}

std::string GraphicsEngine::GetResolutionString(unsigned index) const
{
    return ResolutionString(index);
}

unsigned GraphicsEngine::GetResolutionCount() const
{
    return ResolutionCount();
}

void GraphicsEngine::Initialize()
{
    Window& window = Window::Get();
    // Where nobody sees the screen, the picture has a known size.
    if (Platform::IsHeadlessVideo())
    {
        Fullscreen = false;
        if (!m_ResolutionFromOption)
            Resolution = 0;
    }
    InitializeOn(window.GetNativeWindow(), window.m_HorizontalScale, window.m_VerticalScale,
                 Util::GetDataDirectory());
}

void GraphicsEngine::ReadMonitor()
{
    const Platform::DisplayRect monitor = m_Window ? m_Window->GetMonitorRect() : Platform::DisplayRect{};
    m_WindowLeft = monitor.left;
    m_WindowTop = monitor.top;
    m_MonitorWidth = monitor.width;
    m_MonitorHeight = monitor.height;
}

void GraphicsEngine::InitializeOn(Platform::NativeWindow& window, float scaleX, float scaleY,
                                  const std::string& dataDirectory)
{
    m_Window = &window;
    // 1. The monitor the window is on.
    ReadMonitor();
    // 2. and 3. The resolution.
    if (Resolution == kResolutionUnset)
        Resolution = ChooseResolution(m_MonitorWidth, m_MonitorHeight);
    Resolution = ClampResolution(Resolution);
    m_SelectedWidth = kResolutions[Resolution].width;
    m_SelectedHeight = kResolutions[Resolution].height;
    // 4. Client and render size.
    int width = 0;
    int height = 0;
    window.GetClientSize(width, height);
    m_ClientWidth = static_cast<int>(static_cast<float>(width) / (scaleX > 0.0f ? scaleX : 1.0f));
    m_ClientHeight = static_cast<int>(static_cast<float>(height) / (scaleY > 0.0f ? scaleY : 1.0f));
    const ResolutionRow render = RenderSize({false, UseWindowSize, m_MonitorWidth, m_MonitorHeight, m_ClientWidth,
                                             m_ClientHeight, m_SelectedWidth, m_SelectedHeight});
    m_RenderWidth = render.width;
    m_RenderHeight = render.height;
    // 5. The device, the back buffer, depth and targets, then the managers and the table.
    std::string error;
    if (!CreateDevice(error))
    {
        LOG("ERROR", "D3D11CreateDevice Failed");
        std::fprintf(stderr, "D3D11CreateDevice Failed: %s\n", error.c_str());
        m_Pipeline = std::make_unique<RenderPipeline>(nullptr);
        PublishScreenSize();
        ComputeProjection();
        return;
    }
    LogAdapter();
    m_Pipeline = std::make_unique<RenderPipeline>(m_Device.get());
    m_Pipeline->CreateTargets(m_RenderWidth, m_RenderHeight, m_ClientWidth, m_ClientHeight, *m_VariableTable);
    Initialized = true;
    m_TextureManager = std::make_unique<TextureManager>(*m_Device);
    m_ModelManager = std::make_unique<ModelManager>(*m_Device);
    m_ModelManager->Initialize(dataDirectory);
    m_TextureManager->InitTextureManager(dataDirectory);
    SetMeshModels(m_ModelManager.get());
    SetMeshTextures(m_TextureManager.get());
    // 6. Compute lighting when the device runs compute shaders, with the light buffer and the light list.
    ComputeLighting = m_Device->SupportsCompute() && !m_NoComputeLighting;
    m_LightManager->SetDevice(m_Device.get());
    if (ComputeLighting)
        CreateLightBuffers();
    // 7. The render size for the shaders.
    PublishScreenSize();
    // 8. Shaders, then the pipeline.
    m_ShaderManager = std::make_unique<ShaderManager>(*m_Device, *m_VariableTable, dataDirectory + "Shaders/");
    m_ShaderManager->LoadAll();
    m_States = std::make_unique<DeviceRenderStateApplier>(*m_Device);
    m_ShaderSource = std::make_unique<ManagerShaderSource>(*m_ShaderManager);
    m_Pipeline->Build(*m_ShaderSource, *m_States, {ComputeLighting, m_NoPost});
    m_InstanceBuffer = std::make_unique<InstanceBuffer>(*m_Device, DiscardInstanceBuffer);
    m_InstanceBuffer->BuildBuffer();
    m_ShaderLookup = std::make_unique<ManagerShaderLookup>(*m_ShaderManager);
    ConnectStages();
    // 9. Full screen.
    if (Fullscreen)
        GoFullscreen();
    // 10. The projection.
    ComputeProjection();
    RefreshSpaces();
}

void GraphicsEngine::CreateLightBuffers()
{
    m_LightManager->CreateLightBuffer();
    m_LightManager->CreateLightListBuffer(m_RenderWidth, m_RenderHeight);
    m_VariableTable->SetResource("sb_lights", m_LightManager->GetLightBuffer().id);
    m_VariableTable->SetResource("t3D_LightList", m_LightManager->GetLightListView().id);
}

void GraphicsEngine::ConnectStages()
{
    m_Pipeline->Geometry().m_DrawDeferred = [this](FrameContext& frame) {
        for (const auto& [key, records] : m_RenderLists->m_Deferred)
            DrawDeferredKey(records, m_ShaderManager.get(), frame.Device, *m_InstanceBuffer);
    };
    m_Pipeline->Forward().m_DrawForward = [this](FrameContext& frame, ForwardStage& stage) {
        for (const ForwardRecord& record : m_RenderLists->m_Forward)
        {
            stage.ApplyStates(frame);
            DrawForwardRecord(record, frame.Device, *m_InstanceBuffer);
        }
    };
}

void GraphicsEngine::AttachSpace(GraphicsSpace& space)
{
    space.SetRenderLists(m_RenderLists.get());
    RefreshSpace(space);
}

void GraphicsEngine::RefreshSpace(GraphicsSpace& space)
{
    space.m_ShaderManager = m_ShaderManager.get();
    space.m_VariableTable = m_VariableTable.get();
    space.SetLightManager(m_LightManager.get());
    space.m_Screen.ClientWidth = static_cast<float>(m_ClientWidth);
    space.m_Screen.ClientHeight = static_cast<float>(m_ClientHeight);
    space.m_Screen.Projection = m_VariableTable->m_Perspective;
}

void GraphicsEngine::RefreshSpaces()
{
    for (const std::shared_ptr<SpaceRenderData>& data : m_RenderLists->m_Spaces)
        if (data && data->Owner)
            RefreshSpace(*data->Owner);
}

bool GraphicsEngine::CreateDevice(std::string& error)
{
    m_Context = std::make_unique<Platform::GlContext>();
    if (m_Window == nullptr || !m_Context->Create(*m_Window, error))
    {
        if (m_Window == nullptr)
            error = "there is no window";
        m_Context.reset();
        return false;
    }
    m_Device = Platform::CreateGlDevice(*m_Context);
    if (!m_Device)
    {
        error = "the device could not be made on the context";
        m_Context.reset();
        return false;
    }
    // A GL buffer written unsynchronised never stalls, so instance rows need no discard between draws.
    DiscardInstanceBuffer = false;
    return true;
}

void GraphicsEngine::LogAdapter()
{
    const Platform::GlAdapter adapter = m_Context->QueryAdapter();
    LOG("Info", "Graphics Hardware:");
    LOG("Info", "Description: " + adapter.renderer + " (" + adapter.vendor + ", OpenGL " + adapter.version + ")");
    LOG("Info", "VendorId: " + std::to_string(adapter.vendorId));
    LOG("Info", "DeviceId: 0");
    LOG("Info", "SubSysId: 0");
    LOG("Info", "Revision: 0");
    LOG("Info", "DedicatedVideoMemory: " + Gigabytes(adapter.dedicatedVideoMemory));
    LOG("Info", "DedicatedSystemMemory: " + Gigabytes(adapter.dedicatedSystemMemory));
    LOG("Info", "SharedSystemMemory: " + Gigabytes(adapter.sharedSystemMemory));
}

void GraphicsEngine::PublishScreenSize()
{
    m_VariableTable->SetVariable("ui2_ScreenSize", static_cast<unsigned>(m_RenderWidth),
                                 static_cast<unsigned>(m_RenderHeight));
}

void GraphicsEngine::ComputeProjection()
{
    m_VariableTable->Resize(static_cast<unsigned>(m_RenderWidth), static_cast<unsigned>(m_RenderHeight),
                            MakeProjection(FieldOfView, m_RenderWidth, m_RenderHeight));
}

void GraphicsEngine::Update(float dt)
{
    // 1. The shared variables of the frame.
    m_VariableTable->Update(dt);
    if (!m_Device || !m_Pipeline)
        return;
    // 2. The visible lists, from the current camera.
    const Math::Matrix4 viewPerspective = m_VariableTable->m_View * m_VariableTable->m_Perspective;
    const Math::Vector3D& eye = m_VariableTable->m_CameraPosition;
    m_RenderLists->Build(viewPerspective, Math::Point3D(eye.x, eye.y, eye.z), *m_ShaderLookup);
    // 3. The pipeline; 4. and 5. the 2D layer and the GUI come with their parts; 6. present.
    FrameContext frame{*m_Device,
                       *m_States,
                       *m_VariableTable,
                       m_ModelManager->GetModel("FullScreenQuad"),
                       ComputeLighting,
                       m_LightManager.get(),
                       m_ModelManager->GetModel("lightsphere")};
    m_Pipeline->Run(frame);
    if (m_ScreenshotFrame >= 0 && static_cast<long long>(m_FramesDrawn) == m_ScreenshotFrame)
        SaveScreenshot();
    m_Device->Present();
    ++m_FramesDrawn;
}

void GraphicsEngine::SaveScreenshot()
{
    int width = 0;
    int height = 0;
    m_Context->DrawableSize(width, height);
    const std::string path =
        m_ScreenshotPath.empty() ? "Screenshot-" + std::to_string(m_FramesDrawn) + ".png" : m_ScreenshotPath;
    const std::vector<std::uint8_t> pixels = m_Device->ReadPixels({}, 0, 0, 0, width, height);
    if (Platform::WritePng(path, pixels, width, height))
        LOG("Info", "Frame " + std::to_string(m_FramesDrawn) + " saved as \"" + path + "\" (" + std::to_string(width) +
                        " x " + std::to_string(height) + ").");
    else
        LOG("WARNING", "Frame " + std::to_string(m_FramesDrawn) + " could not be saved as \"" + path + "\".");
}

void GraphicsEngine::Resize(int width, int height)
{
    if (!m_Pipeline || width <= 0 || height <= 0)
        return;
    // 1. The pipeline's targets go.
    m_Pipeline->ReleaseTargets();
    // 2. The client size and the render size.
    m_ClientWidth = width;
    m_ClientHeight = height;
    const ResolutionRow render = RenderSize({Fullscreen, UseWindowSize, m_MonitorWidth, m_MonitorHeight, m_ClientWidth,
                                             m_ClientHeight, m_SelectedWidth, m_SelectedHeight});
    m_RenderWidth = render.width;
    m_RenderHeight = render.height;
    // 3. to 5. The window's picture follows the window by itself; targets, size, viewports, projection.
    m_Pipeline->CreateTargets(m_RenderWidth, m_RenderHeight, m_ClientWidth, m_ClientHeight, *m_VariableTable);
    if (ComputeLighting && m_Device)
    {
        m_LightManager->Resize(m_RenderWidth, m_RenderHeight);
        m_VariableTable->SetResource("t3D_LightList", m_LightManager->GetLightListView().id);
    }
    PublishScreenSize();
    ComputeProjection();
    RefreshSpaces();
}

void GraphicsEngine::ShutdownDevice()
{
    // Everything made on the device goes before it: pipeline, managers, then the device and the context.
    SetMeshModels(nullptr);
    SetMeshTextures(nullptr);
    m_RenderLists->m_Deferred.clear();
    m_RenderLists->m_Forward.clear();
    m_Pipeline.reset();
    m_LightManager->SetDevice(nullptr);
    m_VariableTable->SetResource("sb_lights", 0);
    m_VariableTable->SetResource("t3D_LightList", 0);
    m_InstanceBuffer.reset();
    m_ShaderLookup.reset();
    m_ShaderSource.reset();
    m_ShaderManager.reset();
    RefreshSpaces();
    m_TextureManager.reset();
    m_ModelManager.reset();
    m_States.reset();
    m_Device.reset();
    m_Context.reset();
    Initialized = false;
}
}
