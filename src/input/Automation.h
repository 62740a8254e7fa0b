// Automation: drives the game with simulated input for automated runs. Not built yet: its update does nothing.
#pragma once

#include "engine/System.h"

class Automation : public System
{
public:
    // The one Automation.
    static Automation& Get();

    void Update(float dt) override {}
    Meta::Data* GetMeta() const override;
};
