// The shared list of camera focus targets, one list per space: a CameraFocus
// joins the list of its object's space when it starts and leaves it when it
// ends, and a CameraController follows only the targets of its own space, so
// an object in the HUD or a menu never pulls the level's camera. Objects with
// no space share the list of the null space.
#pragma once

#include <vector>

class CameraFocus;
namespace Engine
{
class Space;
}

namespace CameraFocusList
{
// Adds `focus` to the list of `space` (once).
void Add(const Engine::Space* space, CameraFocus* focus);
// Takes `focus` out of the list of `space`; nothing if it is not there.
void Remove(const Engine::Space* space, CameraFocus* focus);
// The targets of `space`, in the order they joined.
const std::vector<CameraFocus*>& Of(const Engine::Space* space);
}
