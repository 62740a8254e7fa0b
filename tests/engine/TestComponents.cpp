#include "engine/TestComponents.h"

#include "engine/ArchetypeManager.h"
#include "utilities/Meta/Registration.h"

META_REGISTER(Probe)
{
    DERIVE(Component);
}

META_REGISTER(OtherProbe)
{
    DERIVE(Probe);
}

std::vector<std::string>& ProbeJournal()
{
    static auto* journal = new std::vector<std::string>();
    return *journal;
}

void Probe::Initialize()
{
    ProbeJournal().push_back(m_Label + ":Initialize");
    if (m_OnInitialize)
        m_OnInitialize(*this);
}

void Probe::LateInitialize()
{
    ProbeJournal().push_back(m_Label + ":LateInitialize");
    if (m_OnLateInitialize)
        m_OnLateInitialize(*this);
}

void Probe::Uninitialize()
{
    ProbeJournal().push_back(m_Label + ":Uninitialize");
    if (m_OnUninitialize)
        m_OnUninitialize(*this);
}

Probe::~Probe()
{
    ProbeJournal().push_back(m_Label + ":Destroyed");
}

void Probe::OnEvent(Event* event)
{
    ++m_Events;
    ProbeJournal().push_back(m_Label + ":Event");
    if (m_OnEvent)
        m_OnEvent(*this, event);
}

Component* Probe::Clone() const
{
    auto* clone = new Probe();
    clone->m_Label = m_Label;
    clone->m_OnInitialize = m_OnInitialize;
    clone->m_OnLateInitialize = m_OnLateInitialize;
    clone->m_OnUninitialize = m_OnUninitialize;
    clone->m_OnEvent = m_OnEvent;
    return clone;
}

Meta::Data* Probe::GetMeta() const
{
    return Meta::Get<Probe>();
}

Component* OtherProbe::Clone() const
{
    auto* clone = new OtherProbe();
    clone->m_Label = m_Label;
    return clone;
}

Meta::Data* OtherProbe::GetMeta() const
{
    return Meta::Get<OtherProbe>();
}

ArchetypeId MakeArchetype(const std::string& name, const std::vector<std::string>& components)
{
    auto* archetype = new GameObject();
    archetype->m_Name = name;
    for (const std::string& component : components)
        archetype->AddComponentUninitialized(component);
    return Engine::ArchetypeManager::Get().Add(archetype);
}
