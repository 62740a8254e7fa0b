// Shapes for the physics tests: each holds its own Transform and a collider
// pointing at it, placed and sized, with its bounds computed, ready to be
// handed to the narrow phase without a space or an object.
#pragma once

#include "Components/Transform/Transform.h"
#include "physics/ColliderArc.h"
#include "physics/ColliderAxisCube.h"
#include "physics/ColliderCube.h"
#include "physics/ColliderPlane.h"
#include "physics/ColliderSphere.h"
#include "physics/Contact.h"

template <class Shape>
struct Placed
{
    explicit Placed(Math::Point3D at = Math::Point3D(), Math::Quaternion rotation = Math::Quaternion(),
                    Math::Vector3D scale = Math::Vector3D(1.0f, 1.0f, 1.0f))
    {
        transform.m_Position = at;
        transform.m_Rotation = rotation;
        transform.m_Scale = scale;
        shape.transform = &transform;
        shape.UpdateBounds();
    }
    Placed(const Placed&) = delete;
    Placed& operator=(const Placed&) = delete;
    Transform transform;
    Shape shape;
};

// A contact record for the pair (a, b).
inline Contact Between(Collider& a, Collider& b)
{
    Contact contact;
    contact.colliderA = &a;
    contact.colliderB = &b;
    return contact;
}
