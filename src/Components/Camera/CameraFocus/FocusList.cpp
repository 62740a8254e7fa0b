#include "Components/Camera/CameraFocus/FocusList.h"

#include <algorithm>
#include <map>

namespace CameraFocusList
{
namespace
{
std::map<const Engine::Space*, std::vector<CameraFocus*>>& Lists()
{
    static auto* lists = new std::map<const Engine::Space*, std::vector<CameraFocus*>>();
    return *lists;
}
}

void Add(const Engine::Space* space, CameraFocus* focus)
{
    if (!focus)
        return;
    std::vector<CameraFocus*>& list = Lists()[space];
    if (std::find(list.begin(), list.end(), focus) == list.end())
        list.push_back(focus);
}

void Remove(const Engine::Space* space, CameraFocus* focus)
{
    auto found = Lists().find(space);
    if (found == Lists().end())
        return;
    std::vector<CameraFocus*>& list = found->second;
    list.erase(std::remove(list.begin(), list.end(), focus), list.end());
    if (list.empty())
        Lists().erase(found);
}

const std::vector<CameraFocus*>& Of(const Engine::Space* space)
{
    static const std::vector<CameraFocus*> none;
    auto found = Lists().find(space);
    return found == Lists().end() ? none : found->second;
}
}
