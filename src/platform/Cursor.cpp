#include "platform/Cursor.h"

#include <SDL.h>

namespace Platform
{
namespace
{
int g_CursorCount = 0;
}

int ShowCursor(bool show)
{
    g_CursorCount += show ? 1 : -1;
    if (SDL_WasInit(SDL_INIT_VIDEO) != 0)
        SDL_ShowCursor(g_CursorCount >= 0 ? SDL_ENABLE : SDL_DISABLE);
    return g_CursorCount;
}

int GetCursorCount()
{
    return g_CursorCount;
}
}
