// The three events the physics sends to both objects of an overlapping pair,
// at the end of its update, once every pair is resolved:
//
//   Collision           a real contact: the group lists allow it, neither body
//                       is a ghost, and it was resolved
//   GhostCollision      the lists allow it and at least one body is a ghost;
//                       nothing was resolved
//   DiffGroupCollision  neither body lists the other's group; nothing was resolved
//
// Each carries the id of the other object (an id, not a pointer, so that a
// handler survives the other's deletion) and the normal pointing away from the
// receiver towards the other. Scripts read them as Id and Normal:
//
//   function CollisionEvent(collision) ... collision.Id ... collision.Normal ... end
#pragma once

#include "engine/Event.h"
#include "engine/Math/Vector3D.h"

#include <cstdint>

// The members every collision event carries.
class CollisionEventBase : public Event
{
public:
    CollisionEventBase() = default;
    CollisionEventBase(uint32_t id, const Math::Vector3D& normal) : m_Id(id), m_Normal(normal) {}

    // Id of the other object.
    uint32_t m_Id = 0;
    // Unit normal pointing away from the receiver, towards the other object.
    Math::Vector3D m_Normal;
};

class Collision : public CollisionEventBase
{
public:
    using CollisionEventBase::CollisionEventBase;
    Meta::Data* GetMeta() const override;
};

class GhostCollision : public CollisionEventBase
{
public:
    using CollisionEventBase::CollisionEventBase;
    Meta::Data* GetMeta() const override;
};

class DiffGroupCollision : public CollisionEventBase
{
public:
    using CollisionEventBase::CollisionEventBase;
    Meta::Data* GetMeta() const override;
};
