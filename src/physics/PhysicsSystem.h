// PhysicsSystem: a space's bodies, contacts and their resolution. Not built yet: its update does nothing.
#pragma once

#include "engine/System.h"

class PhysicsSystem : public System
{
public:
    void Update(float dt) override {}
    Meta::Data* GetMeta() const override;
};
