#include "physics/Resolution.h"

#include <algorithm>
#include <cmath>

#include "Components/Transform/Transform.h"
#include "physics/Body.h"
#include "physics/Contact.h"

namespace Resolution
{
void Integrate(PhysicsBody& body, float dt)
{
    Transform* transform = body.transform;
    if (!transform)
        return;
    const Math::Vector3D displacement = body.Velocity * dt + body.Gravity * (0.5f * dt * dt);
    transform->m_Position = transform->m_Position + displacement;
    Math::Vector3D velocity = body.Velocity + body.Gravity * dt;
    if (velocity.LengthSquare() > kSpeedLimit * kSpeedLimit)
    {
        velocity.Normalize();
        velocity = velocity * kSpeedLimit;
    }
    body.Velocity = velocity;
}

void CorrectPositions(const Contact& contact, float massA, float massB)
{
    const float excess = contact.penetration - kSlop;
    if (!(excess > 0.0f))
        return;
    const float total = massA + massB;
    if (!(total > 0.0f))
        return;
    const Math::Vector3D push = contact.normal * (kCorrectionShare * (excess / total));
    // With one mass 0 the factors swap, so that the immovable body stays and the other takes the whole push.
    const bool bothMove = massA != 0.0f && massB != 0.0f;
    const float shareA = bothMove ? massB : massA;
    const float shareB = bothMove ? massA : massB;
    if (Transform* a = contact.bodyA->transform)
        a->m_Position = a->m_Position + push * -shareA;
    if (Transform* b = contact.bodyB->transform)
        b->m_Position = b->m_Position + push * shareB;
}

void ApplyImpulse(const Contact& contact)
{
    PhysicsBody& a = *contact.bodyA;
    PhysicsBody& b = *contact.bodyB;
    const Math::Vector3D& normal = contact.normal;
    const Math::Vector3D relative = b.Velocity - a.Velocity;
    const float normalSpeed = relative.DotProduct(normal);
    if (normalSpeed > 0.0f)
        return;

    const float bounce = std::min(a.Material.Bounciness, b.Material.Bounciness);
    const float inverseA = a.GetInverseMass();
    const float inverseB = b.GetInverseMass();
    const float inverseSum = inverseA + inverseB;
    const float j = inverseSum == 0.0f ? 0.0f : -(bounce + 1.0f) * normalSpeed / inverseSum;
    a.Velocity = a.Velocity - normal * (j * inverseA);
    b.Velocity = b.Velocity + normal * (j * inverseB);

    // Friction works on the sliding part of the same relative velocity, not on the changed velocities.
    Math::Vector3D tangent = relative - normal * relative.DotProduct(normal);
    tangent.Normalize();
    const float jt = inverseSum == 0.0f ? 0.0f : -relative.DotProduct(tangent) / inverseSum;
    if (!(std::abs(jt) > 0.001f))
        return;
    const float mu = std::sqrt(a.Material.Friction * a.Material.Friction + b.Material.Friction * b.Material.Friction);
    const Math::Vector3D friction = mu * j > std::abs(jt) ? tangent * jt : tangent * (-j * mu);
    a.Velocity = a.Velocity - friction * inverseA;
    b.Velocity = b.Velocity + friction * inverseB;
}
}
