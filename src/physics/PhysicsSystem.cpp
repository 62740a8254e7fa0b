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

void PhysicsSystem::Update(float)
{
    // Bodies are not built yet: the frame only keeps the broad phase fresh.
    m_Tree.Update();
    m_Tree.QueryPairs();
}
