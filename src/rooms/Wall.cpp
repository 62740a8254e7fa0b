#include "rooms/Wall.h"

#include "utilities/Meta/Registration.h"

META_REGISTER(Wall)
{
    DERIVE(Component);
    DESCRIPTION("Marks an object as a room's wall; it has no data.");
}

Meta::Data* Wall::GetMeta() const
{
    return Meta::Get<Wall>();
}
