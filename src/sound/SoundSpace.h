// SoundSpace: a space's sound events and listener. Not built yet: its update does nothing.
#pragma once

#include "engine/System.h"

class SoundSpace : public System
{
public:
    void Update(float dt) override {}
    Meta::Data* GetMeta() const override;
};
