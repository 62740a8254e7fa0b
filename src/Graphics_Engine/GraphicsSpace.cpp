#include "Graphics_Engine/GraphicsSpace.h"

#include "utilities/Meta/Registration.h"

META_REGISTER_NS(Graphics, GraphicsSpace)
{
    DERIVE(System);
}

Meta::Data* Graphics::GraphicsSpace::GetMeta() const
{
    return Meta::Get<Graphics::GraphicsSpace>();
}
