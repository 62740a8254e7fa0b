#include "Graphics_Engine/PipeLines/LightVolumes.h"

namespace Graphics
{
void LightVolumeLists::Clear()
{
    Inside.clear();
    Outside.clear();
    Directional.clear();
}

void BuildLightVolumes(const std::vector<s_Light>& records, const Math::Matrix4& viewPerspective,
                       const Math::Vector3D& cameraPosition, LightVolumeLists& lists)
{
    lists.Clear();
    for (const s_Light& record : records)
    {
        LightVolume volume;
        volume.Record = &record;
        switch (record.LightType)
        {
        case 1:
        case 3:
        {
            // "lightsphere" has the radius 0.5, so it is scaled by twice the range, and widened so that its
            // flat faces enclose the whole ball of the range.
            const float scale = 2.0f * record.Range * kLightVolumeCover;
            Math::Matrix4 world(scale, 0, 0, 0, 0, scale, 0, 0, 0, 0, scale, 0, record.Position[0],
                                record.Position[1], record.Position[2], 1);
            (world * viewPerspective).Std140Layout(volume.WorldViewPerspective);
            const float dx = record.Position[0] - cameraPosition.x;
            const float dy = record.Position[1] - cameraPosition.y;
            const float dz = record.Position[2] - cameraPosition.z;
            const bool inside = record.Range * record.Range > dx * dx + dy * dy + dz * dz;
            (inside ? lists.Inside : lists.Outside).push_back(volume);
            break;
        }
        case 2:
            Math::Matrix4::Identity().Std140Layout(volume.WorldViewPerspective);
            lists.Directional.push_back(volume);
            break;
        default:
            break;
        }
    }
}
}
