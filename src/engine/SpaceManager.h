// Engine::SpaceManager: the engine system that owns the three spaces ("Level",
// "HUD", "Menu"), made in its constructor, and updates them in index order.
#pragma once

#include "engine/Space.h"
#include "engine/System.h"

#include <vector>

namespace Engine
{
class SpaceManager : public System
{
public:
    // The one space manager; makes the spaces on first use.
    static SpaceManager& Get();
    SpaceManager();
    ~SpaceManager() override;

    // Updates each space in index order.
    void Update(float dt) override;
    // Initializes the systems of each space, space by space in index order, each in update order.
    void Initialize() override;
    Meta::Data* GetMeta() const override;

    // The space with this index (0, 1, 2); null for any other.
    Space* GetSpace(unsigned index) const { return index < m_Spaces.size() ? m_Spaces[index] : nullptr; }
    // Logs every object of every space.
    void PrintAllGameObjects() const;

    // The three spaces, by index; owned.
    std::vector<Space*> m_Spaces;
};
}
