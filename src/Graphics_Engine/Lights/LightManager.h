// Graphics::LightManager: the records of every light of the game in one flat
// vector, indexed by slot, with a queue of free slots that AddLight reuses
// first. Spaces write their lights' records each frame; a slot whose type is
// 0 is off and stays where it is.
//
// With compute lighting it also holds the device objects: the storage buffer
// sb_lights (32,767 records of 112 bytes, dynamic, written each frame by
// Upload: the records that are on, in slot order, then one fresh record as
// the sentinel, so indices in the buffer are not slot indices) and the light
// list t3D_LightList, an R16_UINT 3D texture of one texel column per 16 by 16
// tile (ceil(width / 16) x ceil(height / 16) x 1025): the compute pass writes
// each tile's light count in slice 0 and the tile's indices into sb_lights in
// the slices after it, at most MaxLightsPerTile. The list follows the render
// size through Resize. A refused buffer reports "Failed To Create Light
// Buffer", a refused texture "Failed To Create 3D Texture Buffer"; lighting
// then goes on without them.
#pragma once

#include "Graphics_Engine/DeviceTypes.h"
#include "Graphics_Engine/Lights/LightRecord.h"

#include <cstddef>
#include <cstdint>
#include <queue>
#include <vector>

namespace Graphics
{
class GraphicsDevice;

class LightManager
{
public:
    // Lights one tile's list holds at most.
    static constexpr unsigned MaxLightsPerTile = 1024;
    // Pixels a side of one tile.
    static constexpr unsigned kTileSize = 16;
    // Records sb_lights holds (the count is never tested against it).
    static constexpr unsigned kBufferRecords = 32767;

    // A manager of records only; SetDevice gives it a device for the buffers.
    LightManager() = default;
    // Gives the device objects back.
    ~LightManager();
    LightManager(const LightManager&) = delete;
    LightManager& operator=(const LightManager&) = delete;

    // The device the buffer and the list are made on (null: none); the old device's objects go first.
    void SetDevice(GraphicsDevice* device);
    // Gives the buffer and the list back to the device; the records stay.
    void ReleaseDeviceObjects();

    // A slot for a new light: a free one first, else a fresh record appended.
    unsigned AddLight();
    // Switches the slot off (type 0) and queues it for reuse; an unknown slot is ignored.
    void FreeLight(unsigned index);
    // The record of a slot, or null for an unknown one.
    s_Light* GetRecord(unsigned index);

    // Writes the records that are on to sb_lights, then the sentinel; sets ActiveLights.
    void Upload();
    // Writes the records of `records` that are on, in order, to `out`, then one fresh record; gives
    // how many were written. `out` holds `capacity` records (at least 1): records past capacity - 1
    // are left out, so that the sentinel always fits.
    static unsigned WriteActive(const std::vector<s_Light>& records, s_Light* out, std::size_t capacity);

    // Makes sb_lights; false (reported) when the device refuses it.
    bool CreateLightBuffer();
    // Makes the light list for a render size; false (reported) when the device refuses it.
    bool CreateLightListBuffer(int width, int height);
    // Makes the light list again for a new render size.
    void Resize(int width, int height);

    // Tiles across `pixels`: one more for a partial tile at the end.
    static unsigned TileCount(int pixels);
    // The light list as an image, for the compute pass (rwt_LightList).
    TextureHandle GetLightList() const { return m_LightList; }
    // The light list as a texture, for forward shaders (t3D_LightList).
    TextureViewHandle GetLightListView() const { return m_LightListView; }
    // The storage buffer sb_lights.
    BufferHandle GetLightBuffer() const { return m_LightBuffer; }
    // Width, height and depth of the light list; zeros when there is none.
    std::uint32_t ListWidth() const { return m_ListWidth; }
    std::uint32_t ListHeight() const { return m_ListHeight; }
    std::uint32_t ListDepth() const { return m_LightList ? MaxLightsPerTile + 1 : 0; }

    // The records, by slot.
    std::vector<s_Light> m_Records;
    // Slots freed by removed lights, reused first.
    std::queue<unsigned> m_FreeIndices;
    // Records written at the last upload, the sentinel not counted.
    unsigned ActiveLights = 0;

private:
    void ReleaseLightList();

    GraphicsDevice* m_Device = nullptr;
    BufferHandle m_LightBuffer;
    TextureHandle m_LightList;
    TextureViewHandle m_LightListView;
    std::uint32_t m_ListWidth = 0;
    std::uint32_t m_ListHeight = 0;
};
}
