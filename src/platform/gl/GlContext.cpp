#include "platform/gl/GlContext.h"

#include "platform/NativeWindow.h"

#include <SDL.h>
#include <epoxy/gl.h>

#include <dlfcn.h>
#include <link.h>

#include <cstring>

namespace
{
// Keeps the driver mapped to the end of the process. Unloaded at exit, its globals vanish and the
// blocks they point to look leaked to the leak checker; kept, they stay reachable.
int KeepDriverLoaded(dl_phdr_info* info, size_t, void*)
{
    if (info->dlpi_name == nullptr)
        return 0;
    // The driver and the libraries of the display system that load it (EGL, GLX, GBM, the dispatch table).
    for (const char* part : {"_dri.so", "libEGL", "libGLX", "libgbm", "libglapi", "libGLdispatch"})
        if (std::strstr(info->dlpi_name, part) != nullptr)
        {
            dlopen(info->dlpi_name, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
            break;
        }
    return 0;
}
}

namespace Platform
{
void KeepGlDriverLoaded()
{
    dl_iterate_phdr(KeepDriverLoaded, nullptr);
}

void SetGlContextAttributes()
{
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_CORE);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MAJOR_VERSION, 4);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MINOR_VERSION, 5);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 24);
}

GlContext::~GlContext()
{
    Destroy();
}

bool GlContext::Create(NativeWindow& window, std::string& error)
{
    Destroy();
    auto* sdlWindow = static_cast<SDL_Window*>(window.GetNativeHandle());
    if (sdlWindow == nullptr)
    {
        error = "there is no window";
        return false;
    }
    if ((SDL_GetWindowFlags(sdlWindow) & SDL_WINDOW_OPENGL) == 0)
    {
        error = "the window was not made for OpenGL";
        return false;
    }
    SetGlContextAttributes();
    SDL_GLContext context = SDL_GL_CreateContext(sdlWindow);
    if (context == nullptr)
    {
        error = std::string("cannot create an OpenGL 4.5 core context: ") + SDL_GetError();
        return false;
    }
    m_Context = context;
    m_Window = sdlWindow;
    KeepGlDriverLoaded();
    SDL_GL_MakeCurrent(sdlWindow, context);
    m_Version = epoxy_gl_version();
    if (m_Version < 45)
    {
        error = "the driver offers OpenGL " + std::to_string(m_Version / 10) + "." + std::to_string(m_Version % 10) +
                ", 4.5 is needed";
        Destroy();
        return false;
    }
    m_HasCompute = m_Version >= 43 || epoxy_has_gl_extension("GL_ARB_compute_shader");
    SDL_GL_SetSwapInterval(0);
    glClipControl(GL_UPPER_LEFT, GL_ZERO_TO_ONE);
    return true;
}

void GlContext::Destroy()
{
    if (m_Context != nullptr)
    {
        SDL_GL_MakeCurrent(static_cast<SDL_Window*>(m_Window), nullptr);
        SDL_GL_DeleteContext(static_cast<SDL_GLContext>(m_Context));
    }
    m_Context = nullptr;
    m_Window = nullptr;
    m_Version = 0;
    m_HasCompute = false;
}

void GlContext::MakeCurrent()
{
    if (m_Context != nullptr)
        SDL_GL_MakeCurrent(static_cast<SDL_Window*>(m_Window), static_cast<SDL_GLContext>(m_Context));
}

void GlContext::Swap()
{
    if (m_Context != nullptr)
        SDL_GL_SwapWindow(static_cast<SDL_Window*>(m_Window));
}
}

namespace Platform
{
void GlContext::DrawableSize(int& width, int& height) const
{
    width = 0;
    height = 0;
    if (m_Context != nullptr)
        SDL_GL_GetDrawableSize(static_cast<SDL_Window*>(m_Window), &width, &height);
}
}

namespace Platform
{
namespace
{
std::string GlString(GLenum name)
{
    const auto* text = reinterpret_cast<const char*>(glGetString(name));
    return text ? text : "";
}

std::uint32_t VendorIdOf(const std::string& vendor)
{
    if (vendor.find("NVIDIA") != std::string::npos)
        return 0x10DE;
    if (vendor.find("AMD") != std::string::npos || vendor.find("ATI") != std::string::npos)
        return 0x1002;
    if (vendor.find("Intel") != std::string::npos)
        return 0x8086;
    return 0;
}
}

GlAdapter GlContext::QueryAdapter() const
{
    GlAdapter adapter;
    if (m_Context == nullptr)
        return adapter;
    adapter.vendor = GlString(GL_VENDOR);
    adapter.renderer = GlString(GL_RENDERER);
    adapter.version = GlString(GL_VERSION);
    adapter.vendorId = VendorIdOf(adapter.vendor);
    if (epoxy_has_gl_extension("GL_NVX_gpu_memory_info"))
    {
        GLint kilobytes = 0;
        glGetIntegerv(0x9047 /* GL_GPU_MEMORY_INFO_DEDICATED_VIDMEM_NVX */, &kilobytes);
        adapter.dedicatedVideoMemory = static_cast<std::uint64_t>(kilobytes > 0 ? kilobytes : 0) * 1024u;
    }
    return adapter;
}

}
