// SoundSystem: the sound banks and the mixer. Not built yet: its update does nothing.
#pragma once

#include "engine/System.h"

class SoundSystem : public System
{
public:
    // The one SoundSystem.
    static SoundSystem& Get();

    void Update(float dt) override {}
    Meta::Data* GetMeta() const override;
};
