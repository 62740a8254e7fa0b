#include "platform/NativeWindow.h"

#include "platform/KeyCodes.h"
#include "platform/gl/GlContext.h"

#include <SDL.h>

#include <algorithm>
#include <cstdio>

namespace Platform
{
namespace
{
SDL_Window* AsWindow(void* window)
{
    return static_cast<SDL_Window*>(window);
}

WindowMessage MakeMessage(WindowMessageKind kind)
{
    WindowMessage message;
    message.kind = kind;
    return message;
}

WindowMessage MakeSize(int width, int height, int sizeType)
{
    WindowMessage message = MakeMessage(WindowMessageKind::Size);
    message.width = width;
    message.height = height;
    message.sizeType = sizeType;
    return message;
}

WindowMessage MakeCurrentSize(SDL_Window* window, int sizeType)
{
    int width = 0;
    int height = 0;
    SDL_GetWindowSize(window, &width, &height);
    return MakeSize(width, height, sizeType);
}

WindowMessage MakeActivate(int activation)
{
    WindowMessage message = MakeMessage(WindowMessageKind::Activate);
    message.activation = activation;
    message.otherWindowIsNull = true;
    return message;
}

// Decodes one UTF-8 sequence at `text[i]`, advancing `i`; malformed input gives U+FFFD.
std::uint32_t DecodeUtf8(const char* text, std::size_t& i)
{
    const auto lead = static_cast<unsigned char>(text[i++]);
    if (lead < 0x80)
        return lead;
    int length = 0;
    std::uint32_t codePoint = 0;
    std::uint32_t smallest = 0;
    if ((lead & 0xE0) == 0xC0)
    {
        length = 1;
        codePoint = lead & 0x1F;
        smallest = 0x80;
    }
    else if ((lead & 0xF0) == 0xE0)
    {
        length = 2;
        codePoint = lead & 0x0F;
        smallest = 0x800;
    }
    else if ((lead & 0xF8) == 0xF0)
    {
        length = 3;
        codePoint = lead & 0x07;
        smallest = 0x10000;
    }
    else
    {
        return 0xFFFD;
    }
    for (int k = 0; k < length; ++k)
    {
        const auto next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0) != 0x80)
            return 0xFFFD;  // the terminating NUL also stops here
        codePoint = (codePoint << 6) | (next & 0x3F);
        ++i;
    }
    if (codePoint < smallest || codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF))
        return 0xFFFD;
    return codePoint;
}

void AppendChar(std::vector<WindowMessage>& out, std::uint32_t unit)
{
    WindowMessage message = MakeMessage(WindowMessageKind::Char);
    message.character = unit;
    out.push_back(message);
}

// One Char message per UTF-16 code unit of the UTF-8 text.
void AppendText(std::vector<WindowMessage>& out, const char* text)
{
    std::size_t i = 0;
    while (text[i] != '\0')
    {
        const std::uint32_t codePoint = DecodeUtf8(text, i);
        if (codePoint < 0x10000)
        {
            AppendChar(out, codePoint);
            continue;
        }
        const std::uint32_t offset = codePoint - 0x10000;
        AppendChar(out, 0xD800 + (offset >> 10));
        AppendChar(out, 0xDC00 + (offset & 0x3FF));
    }
}

int ToMouseButton(Uint8 button)
{
    switch (button)
    {
    case SDL_BUTTON_LEFT:
        return LeftButton;
    case SDL_BUTTON_RIGHT:
        return RightButton;
    case SDL_BUTTON_MIDDLE:
        return MiddleButton;
    default:
        return -1;
    }
}

void TranslateWindowEvent(SDL_Window* window, const SDL_WindowEvent& event, std::vector<WindowMessage>& out)
{
    switch (event.event)
    {
    case SDL_WINDOWEVENT_MOVED:
    {
        WindowMessage message = MakeMessage(WindowMessageKind::Move);
        message.x = event.data1;
        message.y = event.data2;
        out.push_back(message);
        break;
    }
    case SDL_WINDOWEVENT_SIZE_CHANGED:
    {
        const bool maximized = (SDL_GetWindowFlags(window) & SDL_WINDOW_MAXIMIZED) != 0;
        out.push_back(MakeSize(event.data1, event.data2, maximized ? SizeMaximized : SizeRestored));
        break;
    }
    case SDL_WINDOWEVENT_MINIMIZED:
        out.push_back(MakeSize(0, 0, SizeMinimized));
        break;
    case SDL_WINDOWEVENT_RESTORED:
        out.push_back(MakeCurrentSize(window, SizeRestored));
        break;
    case SDL_WINDOWEVENT_MAXIMIZED:
        out.push_back(MakeCurrentSize(window, SizeMaximized));
        break;
    case SDL_WINDOWEVENT_FOCUS_GAINED:
        out.push_back(MakeActivate(Active));
        break;
    case SDL_WINDOWEVENT_FOCUS_LOST:
        out.push_back(MakeActivate(Inactive));
        break;
    case SDL_WINDOWEVENT_EXPOSED:
        out.push_back(MakeMessage(WindowMessageKind::Paint));
        break;
    default:
        break;
    }
}

// Alt combinations and F10 are system keys, as the window procedure sees them.
void TranslateKeyDown(const SDL_KeyboardEvent& event, std::vector<WindowMessage>& out)
{
    const int key = TranslateKeycode(event.keysym.sym);
    if (key == 0)
        return;
    const bool altHeld = (event.keysym.mod & KMOD_ALT) != 0;
    WindowMessage message = MakeMessage(altHeld || key == VK_F10 ? WindowMessageKind::SysKeyDown
                                                                 : WindowMessageKind::KeyDown);
    message.key = key;
    message.altHeld = altHeld;
    out.push_back(message);
}

void TranslateKeyUp(const SDL_KeyboardEvent& event, std::vector<WindowMessage>& out)
{
    const int key = TranslateKeycode(event.keysym.sym);
    if (key == 0)
        return;
    WindowMessage message = MakeMessage(WindowMessageKind::KeyUp);
    message.key = key;
    out.push_back(message);
}

void TranslateMouseMotion(const SDL_MouseMotionEvent& event, std::vector<WindowMessage>& out)
{
    WindowMessage message = MakeMessage(WindowMessageKind::MouseMove);
    message.x = event.x;
    message.y = event.y;
    out.push_back(message);
}

void TranslateMouseButton(const SDL_MouseButtonEvent& event, WindowMessageKind kind, std::vector<WindowMessage>& out)
{
    const int button = ToMouseButton(event.button);
    if (button < 0)
        return;
    WindowMessage message = MakeMessage(kind);
    message.button = button;
    message.x = event.x;
    message.y = event.y;
    out.push_back(message);
}

// 120 per notch, positive away from the user, whatever the system's scroll direction.
void TranslateMouseWheel(const SDL_MouseWheelEvent& event, std::vector<WindowMessage>& out)
{
    if (event.y == 0)
        return;
    const int notches = event.direction == SDL_MOUSEWHEEL_FLIPPED ? -event.y : event.y;
    WindowMessage message = MakeMessage(WindowMessageKind::MouseWheel);
    message.wheelDelta = 120 * notches;
    out.push_back(message);
}

// Appends the messages for one SDL event other than a close request.
void TranslateEvent(SDL_Window* window, Uint32 windowId, const SDL_Event& event, std::vector<WindowMessage>& out)
{
    switch (event.type)
    {
    case SDL_WINDOWEVENT:
        if (event.window.windowID == windowId)
            TranslateWindowEvent(window, event.window, out);
        break;
    case SDL_KEYDOWN:
        TranslateKeyDown(event.key, out);
        break;
    case SDL_KEYUP:
        TranslateKeyUp(event.key, out);
        break;
    case SDL_TEXTINPUT:
        AppendText(out, event.text.text);
        break;
    case SDL_MOUSEMOTION:
        TranslateMouseMotion(event.motion, out);
        break;
    case SDL_MOUSEBUTTONDOWN:
        TranslateMouseButton(event.button, WindowMessageKind::MouseButtonDown, out);
        break;
    case SDL_MOUSEBUTTONUP:
        TranslateMouseButton(event.button, WindowMessageKind::MouseButtonUp, out);
        break;
    case SDL_MOUSEWHEEL:
        TranslateMouseWheel(event.wheel, out);
        break;
    default:
        break;
    }
}
}

NativeWindow::~NativeWindow()
{
    Destroy();
}

// One reference on SDL's video system, taken once and given back by Destroy.
bool NativeWindow::StartVideo()
{
    if (m_VideoStarted)
        return true;
    if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0)
    {
        std::fprintf(stderr, "NativeWindow: cannot start video: %s\n", SDL_GetError());
        return false;
    }
    m_VideoStarted = true;
    return true;
}

// Unknown (1) until video is running and the display reports its DPI.
DisplayScale NativeWindow::GetDisplayScale() const
{
    DisplayScale scale;
    if (SDL_WasInit(SDL_INIT_VIDEO) == 0)
        return scale;
    int display = 0;
    if (m_Window != nullptr)
        display = std::max(0, SDL_GetWindowDisplayIndex(AsWindow(m_Window)));
    float hdpi = 0.0f;
    float vdpi = 0.0f;
    if (SDL_GetDisplayDPI(display, nullptr, &hdpi, &vdpi) != 0 || !(hdpi > 0.0f) || !(vdpi > 0.0f))
        return scale;
    scale.horizontal = hdpi / 96.0f;
    scale.vertical = vdpi / 96.0f;
    return scale;
}

// Holds one reference on SDL's video system for as long as the window lives.
bool NativeWindow::Create(const std::string& title, int clientWidth, int clientHeight, int minWidth, int minHeight)
{
    if (m_Window != nullptr)
        Destroy();
    if (!StartVideo())
        return false;
    Uint32 flags = SDL_WINDOW_HIDDEN | SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI;
    if (m_OpenGl)
    {
        SetGlContextAttributes();
        flags |= SDL_WINDOW_OPENGL;
    }
    SDL_Window* window = SDL_CreateWindow(title.c_str(), SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, clientWidth,
                                          clientHeight, flags);
    if (window == nullptr)
    {
        std::fprintf(stderr, "NativeWindow: cannot create the window: %s\n", SDL_GetError());
        return false;
    }
    if (m_OpenGl)
        KeepGlDriverLoaded();
    SDL_SetWindowMinimumSize(window, minWidth, minHeight);
    SDL_StartTextInput();
    m_Window = window;
    return true;
}

void NativeWindow::GetClientSize(int& width, int& height) const
{
    width = 0;
    height = 0;
    if (m_Window != nullptr)
        SDL_GetWindowSize(AsWindow(m_Window), &width, &height);
}

bool NativeWindow::SetCursorImage(const std::uint8_t* rgba, int width, int height, int hotspotX, int hotspotY,
                                  std::string& error)
{
    if (m_Window == nullptr)
    {
        error = "there is no window";
        return false;
    }
    if (rgba == nullptr || width <= 0 || height <= 0)
    {
        error = "the cursor image is empty";
        return false;
    }
    // SDL only reads the pixels while the cursor is made.
    SDL_Surface* surface = SDL_CreateRGBSurfaceWithFormatFrom(const_cast<std::uint8_t*>(rgba), width, height, 32,
                                                              width * 4, SDL_PIXELFORMAT_RGBA32);
    if (surface == nullptr)
    {
        error = SDL_GetError();
        return false;
    }
    SDL_Cursor* cursor = SDL_CreateColorCursor(surface, hotspotX, hotspotY);
    SDL_FreeSurface(surface);
    if (cursor == nullptr)
    {
        error = SDL_GetError();
        return false;
    }
    SDL_SetCursor(cursor);
    if (m_Cursor != nullptr)
        SDL_FreeCursor(static_cast<SDL_Cursor*>(m_Cursor));
    m_Cursor = cursor;
    return true;
}

void NativeWindow::Show()
{
    if (m_Window == nullptr)
        return;
    SDL_ShowWindow(AsWindow(m_Window));
    SDL_RaiseWindow(AsWindow(m_Window));
}

void NativeWindow::PumpMessages(std::vector<WindowMessage>& out)
{
    if (m_Window == nullptr)
        return;
    SDL_Window* window = AsWindow(m_Window);
    const Uint32 windowId = SDL_GetWindowID(window);
    // Closing the only window also raises SDL_QUIT: report one Close per pump.
    bool closeReported = false;
    SDL_Event event;
    while (SDL_PollEvent(&event))
    {
        const bool isClose = event.type == SDL_QUIT ||
                             (event.type == SDL_WINDOWEVENT && event.window.windowID == windowId &&
                              event.window.event == SDL_WINDOWEVENT_CLOSE);
        if (isClose && !closeReported)
            out.push_back(MakeMessage(WindowMessageKind::Close));
        closeReported = closeReported || isClose;
        if (!isClose)
            TranslateEvent(window, windowId, event, out);
    }
}

// Safe to call any number of times; the destructor calls it too.
void NativeWindow::Destroy()
{
    if (m_Cursor != nullptr)
    {
        SDL_FreeCursor(static_cast<SDL_Cursor*>(m_Cursor));
        m_Cursor = nullptr;
    }
    if (m_Window != nullptr)
    {
        SDL_StopTextInput();
        SDL_DestroyWindow(AsWindow(m_Window));
        m_Window = nullptr;
    }
    if (m_VideoStarted)
    {
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
        m_VideoStarted = false;
    }
}
}

namespace Platform
{
bool IsHeadlessVideo()
{
    const char* driver = SDL_GetCurrentVideoDriver();
    if (driver == nullptr)
        driver = SDL_getenv("SDL_VIDEODRIVER");
    if (driver == nullptr)
        return false;
    const std::string name = driver;
    return name == "offscreen" || name == "dummy";
}

DisplayRect NativeWindow::GetMonitorRect() const
{
    DisplayRect rect;
    if (!m_VideoStarted && m_Window == nullptr)
        return rect;
    int display = m_Window != nullptr ? SDL_GetWindowDisplayIndex(AsWindow(m_Window)) : 0;
    if (display < 0)
        display = 0;
    SDL_Rect bounds{};
    if (SDL_GetDisplayBounds(display, &bounds) != 0)
        return rect;
    rect.left = bounds.x;
    rect.top = bounds.y;
    rect.width = bounds.w;
    rect.height = bounds.h;
    return rect;
}

void NativeWindow::SetPopup(const DisplayRect& rect)
{
    if (m_Window == nullptr || rect.width <= 0 || rect.height <= 0)
        return;
    SDL_Window* window = AsWindow(m_Window);
    SDL_SetWindowBordered(window, SDL_FALSE);
    SDL_SetWindowPosition(window, rect.left, rect.top);
    SDL_SetWindowSize(window, rect.width, rect.height);
}

void NativeWindow::SetWindowed(int clientWidth, int clientHeight)
{
    if (m_Window == nullptr || clientWidth <= 0 || clientHeight <= 0)
        return;
    SDL_Window* window = AsWindow(m_Window);
    SDL_SetWindowBordered(window, SDL_TRUE);
    SDL_SetWindowSize(window, clientWidth, clientHeight);
    const int display = std::max(0, SDL_GetWindowDisplayIndex(window));
    SDL_SetWindowPosition(window, static_cast<int>(SDL_WINDOWPOS_CENTERED_DISPLAY(display)),
                          static_cast<int>(SDL_WINDOWPOS_CENTERED_DISPLAY(display)));
}

void NativeWindow::GetFrameExtra(int& width, int& height) const
{
    width = 0;
    height = 0;
    if (m_Window == nullptr)
        return;
    int top = 0, left = 0, bottom = 0, right = 0;
    if (SDL_GetWindowBordersSize(AsWindow(m_Window), &top, &left, &bottom, &right) == 0)
    {
        width = left + right;
        height = top + bottom;
    }
}

void NativeWindow::Minimize()
{
    if (m_Window != nullptr)
        SDL_MinimizeWindow(AsWindow(m_Window));
}

void NativeWindow::Restore()
{
    if (m_Window != nullptr)
        SDL_RestoreWindow(AsWindow(m_Window));
}
}
