// The resolution table of the graphics engine: nine render sizes that a
// player picks by index, the choice made at start when none was picked
// (the largest row whose pixel count fits the monitor's), and the render size
// that follows from full screen, UseWindowSize and the client size.
#pragma once

#include <array>
#include <string>

namespace Graphics
{
// One row of the table.
struct ResolutionRow
{
    int width;
    int height;
};

// The rows, index to width by height; row 4 is 1366 X 786 on purpose.
inline constexpr std::array<ResolutionRow, 9> kResolutions{{{1024, 576},
                                                            {1024, 768},
                                                            {1280, 800},
                                                            {1280, 1024},
                                                            {1366, 786},
                                                            {1600, 900},
                                                            {1920, 1080},
                                                            {2560, 1440},
                                                            {3840, 2160}}};
// The index that asks for a choice at start.
inline constexpr unsigned kResolutionUnset = 0xFFFFFFFFu;
// The largest index.
inline constexpr unsigned kLastResolution = 8;

// The number of rows: 9.
unsigned ResolutionCount();
// "width X height" of row `index` (clamped to the last row).
std::string ResolutionString(unsigned index);
// The index clamped to the last row.
unsigned ClampResolution(unsigned index);
// The row chosen for a monitor: rows 1 to 8 are tested in order and the last whose pixel count does not
// exceed the monitor's wins; 0 when none does (a monitor smaller than 1024 x 576 keeps 0).
unsigned ChooseResolution(int monitorWidth, int monitorHeight);

// What decides the render size.
struct RenderSizeInput
{
    bool fullscreen = false;
    bool useWindowSize = false;
    int monitorWidth = 0;
    int monitorHeight = 0;
    int clientWidth = 0;
    int clientHeight = 0;
    int selectedWidth = 0;
    int selectedHeight = 0;
};

// Full screen with UseWindowSize: the monitor; windowed with UseWindowSize: the client size;
// otherwise the selected resolution.
ResolutionRow RenderSize(const RenderSizeInput& input);
}
