#include "utilities/lua/VirtualSystem.h"

#include "utilities/Meta/Data.h"

META_REGISTER(VirtualSystem)
{
    DERIVE(System);
}

Meta::Data* VirtualSystem::GetMeta() const
{
    return Meta::Get<VirtualSystem>();
}
