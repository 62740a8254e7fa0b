// Graphics::GraphicsEngine: the deferred renderer as an engine system. It owns
// the graphics device (an OpenGL 4.5 context on the game's window), the
// texture, model and shader managers, the variable table and the render
// pipeline. Initialize picks the resolution (the largest row of the table
// whose pixel count fits the monitor, unless one was set), makes the device,
// the targets, the managers and the pipeline, and sets full screen and the
// projection; Update draws one frame and presents it (a swap, no vsync).
// Without a device (none could be made) every call does nothing and the game
// runs on. It follows the window through "WindowResize" (0 resize, 1 full
// screen, 2 windowed, 3 toggle) and "WindowFocus".
//
// Each frame, after the spaces have placed their objects and set the camera,
// Update builds the visible lists (RenderLists) from every attached space's
// quad tree and runs the pipeline, whose geometry and forward stages draw the
// lists through the instance buffer. A GraphicsSpace attaches itself when it
// starts (AttachSpace), which hands it the lists, the shader manager, the
// variable table, the light manager and the window's size and projection for
// picking.
//
// The light manager always holds the lights' records; with compute lighting
// the engine also makes its storage buffer sb_lights and its light list
// t3D_LightList (published in the variable table for forward shaders), and
// makes the list again at every resize.
//
// Options: --no-post (no glow), --NoComputeLighting, --Windowed, --Resolution=NN, --UseWindowSize,
// --screenshot=N and --screenshotpath=FILE (saves the frame shown at frame N,
// counted from 0, as a PNG). Under a video driver that shows nothing
// (offscreen, dummy), full screen is off and an unset resolution is row 0,
// so pictures have a known size.
#pragma once

#include "Graphics_Engine/GraphicsDevice.h"
#include "engine/Math/Point2D.h"
#include "engine/Math/Point3D.h"
#include "engine/Math/Vector2D.h"
#include "engine/Math/Vector3D.h"
#include "engine/Options.h"
#include "engine/System.h"

#include <functional>
#include <memory>
#include <string>

class Event;

namespace Platform
{
class GlContext;
class NativeWindow;
}

namespace Graphics
{
class DeviceRenderStateApplier;
class GraphicsSpace;
class InstanceBuffer;
class LightManager;
class ManagerShaderLookup;
class ManagerShaderSource;
class ModelManager;
class RenderLists;
class RenderPipeline;
class ShaderManager;
class TextureManager;
class VariableTable;

class GraphicsEngine : public System
{
public:
    // The one graphics engine.
    static GraphicsEngine& Get();
    // An engine of its own (tests); the game uses Get.
    GraphicsEngine();
    ~GraphicsEngine() override;
    GraphicsEngine(const GraphicsEngine&) = delete;
    GraphicsEngine& operator=(const GraphicsEngine&) = delete;

    // Starts on the game's window with its display scale, from the data directory.
    void Initialize() override;
    // Starts on `window` (made with OpenGL requested) whose size in pixels over `scaleX`, `scaleY` is the
    // client size, with shaders, models and textures from `dataDirectory` (ending in '/').
    void InitializeOn(Platform::NativeWindow& window, float scaleX, float scaleY, const std::string& dataDirectory);
    // Draws and presents one frame.
    void Update(float dt) override;
    Meta::Data* GetMeta() const override;
    // A new client size: the targets are made again at the new render size.
    void Resize(int width, int height);
    // Gives the device and everything made on it back, before the rest of the engine goes.
    void ShutdownDevice();

    // Handler of "WindowResize".
    void OnWindowResize(Event* event);
    // Handler of "WindowFocus".
    void OnWindowFocus(Event* event);

    // Script interface.
    bool GetFullscreen() const { return Fullscreen; }
    // Goes full screen or windowed (once initialized; before, it only sets the field).
    void SetFullscreen(bool fullscreen);
    unsigned GetResolution() const { return Resolution; }
    // Sets the resolution index, clamped to the last row.
    void SetResolution(unsigned index);
    bool GetUseWindowSize() const { return UseWindowSize; }
    void SetUseWindowSize(bool use) { UseWindowSize = use; }
    // "width X height" of row `index`.
    std::string GetResolutionString(unsigned index) const;
    // The number of rows of the resolution table.
    unsigned GetResolutionCount() const;
    // The render size.
    int GetWidth() const { return m_RenderWidth; }
    int GetHeight() const { return m_RenderHeight; }
    // The world direction under the mouse, whose position is in percent of the window (0 to 100).
    Math::Vector3D GetMouseVec(const Math::Vector2D& mousePercent) const;
    // Where the ray under the mouse (in percent of the window) meets the plane y = 0; all coordinates
    // the largest float when it does not.
    Math::Point3D GetMousePos(const Math::Vector2D& mousePercent) const;
    // The window point (client pixels, y down) a world point is drawn at.
    Math::Point2D Point3DTo2D(const Math::Point3D& point) const;

    // Hands `space` the visible lists, the shader manager, the variable table, the light manager and
    // the screen's size and projection; its render data is listed from now on.
    void AttachSpace(GraphicsSpace& space);
    // The visible lists of the frame.
    RenderLists& Lists() { return *m_RenderLists; }

    // The managers and the device; null without a device.
    GraphicsDevice* Device() const { return m_Device.get(); }
    TextureManager* Textures() const { return m_TextureManager.get(); }
    ModelManager* Models() const { return m_ModelManager.get(); }
    ShaderManager* Shaders() const { return m_ShaderManager.get(); }
    RenderPipeline* Pipeline() const { return m_Pipeline.get(); }
    // The lights' records and buffers; always there.
    LightManager& Lights() { return *m_LightManager; }
    // The shared variables; always there.
    VariableTable& Variables() { return *m_VariableTable; }
    // Client size, as last stored.
    int GetClientWidth() const { return m_ClientWidth; }
    int GetClientHeight() const { return m_ClientHeight; }
    // Frames drawn so far.
    unsigned FramesDrawn() const { return m_FramesDrawn; }
    // Asks to save the picture shown at frame `frame` (counted from 0) as a PNG at `path`.
    void RequestScreenshot(unsigned frame, const std::string& path);
    // Asks to save the picture drawn `frames` frames from now (0: the next one) as a PNG at `path`.
    void ScreenshotAfter(unsigned frames, const std::string& path) { RequestScreenshot(m_FramesDrawn + frames, path); }

    // The device, the context (immediate context and swap chain in one), the window.
    std::unique_ptr<GraphicsDevice> m_Device;
    std::unique_ptr<Platform::GlContext> m_Context;
    Platform::NativeWindow* m_Window = nullptr;
    // Window position.
    int m_WindowLeft = 0;
    int m_WindowTop = 0;
    // Render size.
    int m_RenderWidth = 800;
    int m_RenderHeight = 600;
    // Window client size.
    int m_ClientWidth = 800;
    int m_ClientHeight = 600;
    // Vertical field of view in degrees.
    float FieldOfView = 45.0f;
    // Lighting is the compute pass; false when the device has no compute shaders.
    bool ComputeLighting = true;
    // Spare.
    bool m_Spare = false;
    // True from the middle of Initialize on; window events wait for it.
    bool Initialized = false;
    // Full screen.
    bool Fullscreen = true;
    // Render at the window's size instead of the selected resolution.
    bool UseWindowSize = false;
    // Index into the resolution table; kResolutionUnset chooses at start.
    unsigned Resolution = 0xFFFFFFFFu;
    // Monitor size.
    int m_MonitorWidth = 0;
    int m_MonitorHeight = 0;
    // The selected resolution's size.
    int m_SelectedWidth = 0;
    int m_SelectedHeight = 0;
    // The instance buffer is written with discards only (true when the device cannot write unsynchronised).
    bool DiscardInstanceBuffer = true;
    // Owned objects, in this order (the particle library comes with particles).
    std::unique_ptr<RenderLists> m_RenderLists;
    std::unique_ptr<LightManager> m_LightManager;
    std::unique_ptr<TextureManager> m_TextureManager;
    std::unique_ptr<ModelManager> m_ModelManager;
    std::unique_ptr<ShaderManager> m_ShaderManager;
    std::unique_ptr<VariableTable> m_VariableTable;
    std::unique_ptr<RenderPipeline> m_Pipeline;
    // The instance rows of every draw; made with the device.
    std::unique_ptr<InstanceBuffer> m_InstanceBuffer;
    // Size of the window's client area in pixels and focus, from the last window events.
    unsigned m_Width = 0;
    unsigned m_Height = 0;
    bool m_Focused = true;
    // The command-line switch no-post.
    bool m_NoPost = false;
    // The command-line switch NoComputeLighting: light with the light-volume pass even where compute runs.
    bool m_NoComputeLighting = false;

private:
    bool CreateDevice(std::string& error);
    void LogAdapter();
    void ComputeProjection();
    void PublishScreenSize();
    void CreateLightBuffers();
    void GoFullscreen();
    void GoWindowed();
    void SaveScreenshot();
    void ReadMonitor();
    void ConnectStages();
    void RefreshSpaces();
    void RefreshSpace(GraphicsSpace& space);

    std::unique_ptr<DeviceRenderStateApplier> m_States;
    std::unique_ptr<ManagerShaderSource> m_ShaderSource;
    std::unique_ptr<ManagerShaderLookup> m_ShaderLookup;
    unsigned m_FramesDrawn = 0;
    long long m_ScreenshotFrame = -1;
    std::string m_ScreenshotPath;
    bool m_ResolutionFromOption = false;
    Engine::OwnedOption m_NoPostOption{"no-post", [this](const char*) { m_NoPost = true; }};
    Engine::OwnedOption m_NoComputeOption{"NoComputeLighting", [this](const char*) { m_NoComputeLighting = true; }};
    Engine::OwnedOption m_WindowedOption{"Windowed", [this](const char*) { Fullscreen = false; }};
    Engine::OwnedOption m_UseWindowSizeOption{"UseWindowSize", [this](const char*) { UseWindowSize = true; }};
    Engine::OwnedOption m_ResolutionOption{"Resolution", [this](const char* value) { OnResolutionOption(value); }};
    Engine::OwnedOption m_ScreenshotOption{"screenshot", [this](const char* value) { OnScreenshotOption(value); }};
    Engine::OwnedOption m_ScreenshotPathOption{"screenshotpath",
                                               [this](const char* value) { m_ScreenshotPath = value ? value : ""; }};
    void OnResolutionOption(const char* value);
    void OnScreenshotOption(const char* value);
};
}
