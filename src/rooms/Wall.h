// Wall: an empty marker component on the objects that are a room's walls, so
// that game code can tell a wall from other scenery by its components.
#pragma once

#include "engine/Component.h"

class Wall : public Component
{
public:
    Component* Clone() const override { return new Wall(*this); }
    Meta::Data* GetMeta() const override;
};
