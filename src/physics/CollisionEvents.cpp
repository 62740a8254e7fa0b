#include "physics/CollisionEvents.h"

#include "utilities/Meta/Registration.h"

META_REGISTER(Collision)
{
    DERIVE(Event);
    DESCRIPTION("Sent to both objects of a resolved contact.");
    MEMBER(m_Id, "Id of the other object.");
    MEMBER(m_Normal, "Unit normal pointing away from this object, towards the other.");
}

META_REGISTER(GhostCollision)
{
    DERIVE(Event);
    DESCRIPTION("Sent to both objects of an overlap with a ghost body; nothing was resolved.");
    MEMBER(m_Id, "Id of the other object.");
    MEMBER(m_Normal, "Unit normal pointing away from this object, towards the other.");
}

META_REGISTER(DiffGroupCollision)
{
    DERIVE(Event);
    DESCRIPTION("Sent to both objects of an overlap whose group lists do not allow a contact; nothing was resolved.");
    MEMBER(m_Id, "Id of the other object.");
    MEMBER(m_Normal, "Unit normal pointing away from this object, towards the other.");
}

Meta::Data* Collision::GetMeta() const
{
    return Meta::Get<Collision>();
}

Meta::Data* GhostCollision::GetMeta() const
{
    return Meta::Get<GhostCollision>();
}

Meta::Data* DiffGroupCollision::GetMeta() const
{
    return Meta::Get<DiffGroupCollision>();
}
