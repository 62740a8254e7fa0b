// A data folder of the test's own with archetype files the test writes, a Lua
// system that knows the script components written there, and an archetype
// manager emptied before and after each test.
#pragma once

#include "utilities/lua/components/ScriptComponentTestSupport.h"

#include "Components/Transform/Transform.h"
#include "engine/ArchetypeManager.h"
#include "engine/FileWatcher.h"
#include "support/ReportCapture.h"
#include "utilities/Serialization/Serializer.h"

#include <string>

class ArchetypeFilesTest : public ScriptComponentTest
{
protected:
    void SetUp() override { Engine::ArchetypeManager::Get().Clear(); }
    void TearDown() override
    {
        Engine::ArchetypeManager::Get().Clear();
        Util::SetTolerantRead(false);
    }

    static Engine::ArchetypeManager& Manager() { return Engine::ArchetypeManager::Get(); }
    // Writes Archetypes/<name>; gives its path.
    std::string WriteArchetype(const std::string& name, const std::string& text)
    {
        return m_Temp.Write("Archetypes/" + name, text);
    }
    // The archetype of `name`, or null.
    static GameObject* ArchetypeNamed(const std::string& name)
    {
        return Manager().GetArchetype(Manager().GetArchetypeId(name));
    }
    // The scale of `object`'s Transform.
    static Math::Vector3D ScaleOf(const GameObject* object) { return object->GetComponent<Transform>()->m_Scale; }
    // The names of `object`'s components, in order, joined by spaces.
    static std::string ComponentNames(const GameObject* object)
    {
        std::string names;
        for (const Component* component : object->m_Components)
            names += (names.empty() ? "" : " ") + component->GetName();
        return names;
    }
};
