// Cursor: showing and hiding the mouse cursor, counted the way the engine's
// callers expect: each call to show adds one, each call to hide takes one away,
// and the cursor shows while the count is 0 or more. Two independent callers
// (one hiding, one forcing the cursor on) thus leave it shown.
#pragma once

namespace Platform
{
// Adds one to the display count when `show`, takes one away otherwise, shows or hides the cursor
// accordingly and returns the new count. Without video it only counts.
int ShowCursor(bool show);
// The display count now: 0 at the start.
int GetCursorCount();
}
