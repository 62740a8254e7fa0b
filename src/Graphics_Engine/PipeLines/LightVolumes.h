// The volume path's light lists: the lights that are on, sorted for drawing
// their volumes. A point or spot light is drawn as the model "lightsphere"
// (radius 0.5) scaled by 2 Range and moved to its position; when the camera
// stands inside that sphere (Range^2 greater than its squared distance, so
// a camera exactly at Range is outside) it goes to the inside list, whose
// volumes are drawn with front faces culled, otherwise to the outside list
// (back faces culled). A directional light covers the screen: the
// full-screen quad with the identity. Each entry keeps its record and its
// world-view-projection matrix in the order uniform blocks read it. Plain
// logic: it needs no device.
#pragma once

#include "Graphics_Engine/Lights/LightRecord.h"
#include "engine/Math/Matrix4.h"
#include "engine/Math/Vector3D.h"

#include <vector>

namespace Graphics
{
// How much a light volume is widened beyond 2 Range so that "lightsphere"'s faces enclose the ball.
inline constexpr float kLightVolumeCover = 1.07f;

// One light volume to draw.
struct LightVolume
{
    // The light's record.
    const s_Light* Record = nullptr;
    // World times view-projection, in std140 order (the transposed matrix, row by row).
    float WorldViewPerspective[16];
};

// The three lists of the volume path.
struct LightVolumeLists
{
    // Point and spot lights whose sphere holds the camera.
    std::vector<LightVolume> Inside;
    // Point and spot lights seen from outside their sphere.
    std::vector<LightVolume> Outside;
    // Directional lights.
    std::vector<LightVolume> Directional;

    // Empties the three lists, keeping their storage.
    void Clear();
};

// Sorts the records that are on, in index order, into `lists` (which are emptied first), from the
// view-projection matrix and the camera's position.
void BuildLightVolumes(const std::vector<s_Light>& records, const Math::Matrix4& viewPerspective,
                       const Math::Vector3D& cameraPosition, LightVolumeLists& lists);
}
