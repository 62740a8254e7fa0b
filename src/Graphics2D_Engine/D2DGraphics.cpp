#include "Graphics2D_Engine/D2DGraphics.h"

#include "utilities/Meta/Registration.h"

META_REGISTER_NS(Graphics, D2DGraphics)
{
    DERIVE(System);
}

Graphics::D2DGraphics& Graphics::D2DGraphics::Get()
{
    static D2DGraphics* system = new D2DGraphics();
    return *system;
}

Meta::Data* Graphics::D2DGraphics::GetMeta() const
{
    return Meta::Get<Graphics::D2DGraphics>();
}
