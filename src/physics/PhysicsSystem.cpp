#include "physics/PhysicsSystem.h"

#include "utilities/Meta/Registration.h"

META_REGISTER(PhysicsSystem)
{
    DERIVE(System);
}

Meta::Data* PhysicsSystem::GetMeta() const
{
    return Meta::Get<PhysicsSystem>();
}
