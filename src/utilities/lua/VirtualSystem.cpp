#include "utilities/lua/VirtualSystem.h"

#include "utilities/Meta/Registration.h"

META_REGISTER(VirtualSystem)
{
    DERIVE(System);
}

Meta::Data* VirtualSystem::GetMeta() const
{
    return Meta::Get<VirtualSystem>();
}
