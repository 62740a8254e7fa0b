#include "Graphics_Engine/Resolution.h"

#include <algorithm>

namespace Graphics
{
unsigned ResolutionCount()
{
    return static_cast<unsigned>(kResolutions.size());
}

unsigned ClampResolution(unsigned index)
{
    return std::min(index, kLastResolution);
}

std::string ResolutionString(unsigned index)
{
    const ResolutionRow& row = kResolutions[ClampResolution(index)];
    return std::to_string(row.width) + " X " + std::to_string(row.height);
}

unsigned ChooseResolution(int monitorWidth, int monitorHeight)
{
    const long long monitorPixels = static_cast<long long>(std::max(monitorWidth, 0)) * std::max(monitorHeight, 0);
    unsigned chosen = 0;
    for (unsigned index = 1; index <= kLastResolution; ++index)
    {
        const long long pixels = static_cast<long long>(kResolutions[index].width) * kResolutions[index].height;
        if (pixels <= monitorPixels)
            chosen = index;
    }
    return chosen;
}

ResolutionRow RenderSize(const RenderSizeInput& input)
{
    if (input.useWindowSize && input.fullscreen)
        return {input.monitorWidth, input.monitorHeight};
    if (input.useWindowSize)
        return {input.clientWidth, input.clientHeight};
    return {input.selectedWidth, input.selectedHeight};
}
}
