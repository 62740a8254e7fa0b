// GlContext: an OpenGL 4.5 core context on the engine's window, loaded
// through libepoxy. The window must be made with OpenGL requested
// (NativeWindow::RequestOpenGl before Create); under SDL_VIDEODRIVER=offscreen
// the context comes from Mesa through EGL with no display. Creation sets the
// clip space the renderer expects: upper-left origin, depth 0 to 1.
#pragma once

#include <cstdint>
#include <string>

namespace Platform
{
class NativeWindow;

// Sets SDL's attributes for a 4.5 core context; called before the window is made.
void SetGlContextAttributes();
// Keeps the GL driver mapped to the end of the process once it is loaded (unloaded at exit, its
// globals would vanish and what they hold would look leaked to the leak checker).
void KeepGlDriverLoaded();

// What the driver tells of the graphics hardware, for the log.
struct GlAdapter
{
    // GL_VENDOR, GL_RENDERER and GL_VERSION.
    std::string vendor;
    std::string renderer;
    std::string version;
    // The PCI vendor id guessed from the vendor's name (0x10DE, 0x1002, 0x8086), 0 when unknown.
    std::uint32_t vendorId = 0;
    // Bytes of video memory where GL_NVX_gpu_memory_info reports it, else 0; GL reports no
    // dedicated or shared system memory, so those stay 0.
    std::uint64_t dedicatedVideoMemory = 0;
    std::uint64_t dedicatedSystemMemory = 0;
    std::uint64_t sharedSystemMemory = 0;
};

class GlContext
{
public:
    GlContext() = default;
    ~GlContext();
    GlContext(const GlContext&) = delete;
    GlContext& operator=(const GlContext&) = delete;

    // Makes the context on the window and makes it current; false with the reason in `error`.
    bool Create(NativeWindow& window, std::string& error);
    // Deletes the context.
    void Destroy();
    // True between a successful Create and Destroy.
    bool IsCreated() const { return m_Context != nullptr; }
    // Makes this context current on the calling thread.
    void MakeCurrent();
    // Shows the default framebuffer (swap interval 0).
    void Swap();
    // The window's drawable size in pixels; 0 x 0 without a context.
    void DrawableSize(int& width, int& height) const;
    // The version as major * 10 + minor (45 for 4.5); 0 without a context.
    int Version() const { return m_Version; }
    // What the driver reports of the hardware; empty without a context.
    GlAdapter QueryAdapter() const;
    // True when the context offers compute shaders.
    bool HasCompute() const { return m_HasCompute; }

private:
    void* m_Context = nullptr;
    void* m_Window = nullptr;
    int m_Version = 0;
    bool m_HasCompute = false;
};
}
