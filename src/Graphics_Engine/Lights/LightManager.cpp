#include "Graphics_Engine/Lights/LightManager.h"

#include "Graphics_Engine/GraphicsDevice.h"
#include "engine/Log.h"

#include <cstring>

namespace Graphics
{
LightManager::~LightManager()
{
    ReleaseDeviceObjects();
}

void LightManager::SetDevice(GraphicsDevice* device)
{
    ReleaseDeviceObjects();
    m_Device = device;
}

void LightManager::ReleaseDeviceObjects()
{
    ReleaseLightList();
    if (m_Device && m_LightBuffer)
        m_Device->DestroyBuffer(m_LightBuffer);
    m_LightBuffer = {};
    ActiveLights = 0;
}

void LightManager::ReleaseLightList()
{
    if (m_Device && m_LightList)
        m_Device->DestroyTexture(m_LightList);
    m_LightList = {};
    m_LightListView = {};
    m_ListWidth = 0;
    m_ListHeight = 0;
}

unsigned LightManager::AddLight()
{
    if (!m_FreeIndices.empty())
    {
        const unsigned index = m_FreeIndices.front();
        m_FreeIndices.pop();
        m_Records[index] = FreshLightRecord();
        return index;
    }
    m_Records.push_back(FreshLightRecord());
    return static_cast<unsigned>(m_Records.size() - 1);
}

void LightManager::FreeLight(unsigned index)
{
    if (index >= m_Records.size())
        return;
    m_Records[index].LightType = 0;
    m_FreeIndices.push(index);
}

s_Light* LightManager::GetRecord(unsigned index)
{
    return index < m_Records.size() ? &m_Records[index] : nullptr;
}

unsigned LightManager::WriteActive(const std::vector<s_Light>& records, s_Light* out, std::size_t capacity)
{
    unsigned count = 0;
    if (capacity == 0)
        return 0;
    for (const s_Light& record : records)
    {
        if (record.LightType != 0 && count + 1 < capacity)
            std::memcpy(&out[count++], &record, sizeof(s_Light));
    }
    out[count] = FreshLightRecord();
    return count;
}

void LightManager::Upload()
{
    ActiveLights = 0;
    if (!m_Device || !m_LightBuffer)
        return;
    void* memory = m_Device->Map(m_LightBuffer, MapMode::WriteDiscard);
    if (memory == nullptr)
        return;
    ActiveLights = WriteActive(m_Records, static_cast<s_Light*>(memory), kBufferRecords);
    m_Device->Unmap(m_LightBuffer);
}

bool LightManager::CreateLightBuffer()
{
    if (m_Device && m_LightBuffer)
        m_Device->DestroyBuffer(m_LightBuffer);
    m_LightBuffer = {};
    BufferDesc desc;
    desc.size = kBufferRecords * sizeof(s_Light);
    desc.kind = BufferKind::ShaderStorage;
    desc.usage = BufferUsage::Dynamic;
    if (m_Device)
        m_LightBuffer = m_Device->CreateBuffer(desc);
    if (!m_LightBuffer)
    {
        FATAL_ERROR("Failed To Create Light Buffer");
        return false;
    }
    return true;
}

unsigned LightManager::TileCount(int pixels)
{
    return pixels <= 0 ? 0u : (static_cast<unsigned>(pixels) + kTileSize - 1) / kTileSize;
}

bool LightManager::CreateLightListBuffer(int width, int height)
{
    ReleaseLightList();
    TextureDesc desc;
    desc.width = TileCount(width);
    desc.height = TileCount(height);
    desc.mipLevels = 1;
    desc.format = Format::R16_UINT;
    desc.bindFlags = BindShaderResource | BindUnorderedAccess;
    if (m_Device && desc.width > 0 && desc.height > 0)
        m_LightList = m_Device->CreateTexture3D(desc, MaxLightsPerTile + 1);
    if (!m_LightList)
    {
        FATAL_ERROR("Failed To Create 3D Texture Buffer");
        return false;
    }
    m_LightListView = m_Device->DefaultView(m_LightList);
    m_ListWidth = desc.width;
    m_ListHeight = desc.height;
    return true;
}

void LightManager::Resize(int width, int height)
{
    ReleaseLightList();
    CreateLightListBuffer(width, height);
}
}
