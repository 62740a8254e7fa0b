// Graphics::GraphicsSpace: a space's part of the renderer (its objects to draw). Not built yet: its update does nothing.
#pragma once

#include "engine/System.h"

namespace Graphics
{
class GraphicsSpace : public System
{
public:
    void Update(float dt) override {}
    Meta::Data* GetMeta() const override;
};
}
