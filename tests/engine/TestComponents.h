// Components for tests: Probe records what the engine calls on it, and can run
// a test's own code from each of its hooks.
#pragma once

#include "engine/ArchetypeManager.h"
#include "engine/Component.h"
#include "engine/Event.h"
#include "engine/GameObject.h"

#include <functional>
#include <string>
#include <vector>

// Everything probes did, in order, as "name:hook" lines.
std::vector<std::string>& ProbeJournal();

class Probe : public Component
{
public:
    void Initialize() override;
    void LateInitialize() override;
    void Uninitialize() override;
    ~Probe() override;
    Component* Clone() const override;
    Meta::Data* GetMeta() const override;

    // Receives events in tests.
    void OnEvent(Event* event);

    // Label used in the journal.
    std::string m_Label = "probe";
    // Test code run from the hooks, if set.
    std::function<void(Probe&)> m_OnInitialize;
    std::function<void(Probe&)> m_OnLateInitialize;
    std::function<void(Probe&)> m_OnUninitialize;
    std::function<void(Probe&, Event*)> m_OnEvent;
    int m_Events = 0;
};

// A second component type, for tests that need two.
class OtherProbe : public Probe
{
public:
    Component* Clone() const override;
    Meta::Data* GetMeta() const override;
};

// Makes an archetype with the given components (by type name) and returns its id.
ArchetypeId MakeArchetype(const std::string& name, const std::vector<std::string>& components);
