#include "engine/SpaceManager.h"

#include "engine/Log.h"
#include "engine/Space.h"
#include "engine/System.h"
#include "utilities/Meta/Registration.h"

META_REGISTER_NS(Engine, SpaceManager)
{
    DERIVE(System);
    DESCRIPTION("Owns the three spaces and updates them in order.");
    METHOD(PrintAllGameObjects);
    HELP("The one space manager.");
    METHOD(Get);
    HELP("The space of an index (Space.Level, Space.HUD, Space.Menu); nil for any other.");
    METHOD(GetSpace);
}

namespace Engine
{
SpaceManager::SpaceManager()
{
    for (unsigned i = 0; i < kSpaceCount; ++i)
        m_Spaces.push_back(new Space(i));
}

SpaceManager::~SpaceManager()
{
    for (Space* space : m_Spaces)
        delete space;
}

SpaceManager& SpaceManager::Get()
{
    static SpaceManager* manager = new SpaceManager();
    return *manager;
}

Meta::Data* SpaceManager::GetMeta() const
{
    return Meta::Get<SpaceManager>();
}

void SpaceManager::Initialize()
{
    for (Space* space : m_Spaces)
        for (System* system : space->m_Systems)
            system->Initialize();
}

void SpaceManager::Update(float dt)
{
    for (Space* space : m_Spaces)
        space->Update(dt);
}

void SpaceManager::PrintAllGameObjects() const
{
    for (const Space* space : m_Spaces)
        for (const auto& [id, object] : space->m_Objects)
            LOG("", std::string(space->GetName()) + " " + std::to_string(id) + " " + object->m_Name);
}
}
