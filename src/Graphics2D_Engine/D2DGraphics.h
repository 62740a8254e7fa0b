// Graphics::D2DGraphics: the 2D layer drawn over the 3D image. Not built yet: its update does nothing.
#pragma once

#include "engine/System.h"

namespace Graphics
{
class D2DGraphics : public System
{
public:
    // The one D2DGraphics.
    static D2DGraphics& Get();

    void Update(float dt) override {}
    Meta::Data* GetMeta() const override;
};
}
