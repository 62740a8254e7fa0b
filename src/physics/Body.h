// PhysicsBody: the mass and motion of one game object; its shape is a
// separate Collider on the same object, and both need the object's Transform.
//
// Each frame the space's PhysicsSystem moves the body by its Velocity and its
// own Gravity (there is no world gravity), then resolves its contacts by
// moving its Transform and changing its Velocity; rotation is never touched.
// The mass is not stored: it is Material.Density times the product of the
// Transform's scale, computed when needed, so script changes count at once.
// Mass 0 is immovable: contacts do not move it, but it still moves by its own
// velocity and gravity.
//
// Group is the body's own group number; the list names the groups it
// collides with. A pair interacts when either lists the other's group; a
// ghost body's overlaps are reported and never resolved.
#pragma once

#include <cstdint>
#include <vector>

#include "engine/Component.h"
#include "engine/Math/Vector3D.h"
#include "physics/Material.h"

class Transform;

class PhysicsBody : public Component
{
public:
    PhysicsBody() = default;

    // Finds the owner's Transform and joins the space's PhysicsSystem.
    void Initialize() override;
    // Leaves the space's PhysicsSystem.
    void Uninitialize() override;
    Component* Clone() const override { return new PhysicsBody(*this); }
    Meta::Data* GetMeta() const override;

    // Appends a group to the list; duplicates are allowed.
    void AddToList(int group);
    // Adds `delta` to the velocity.
    void AddVelocity(const Math::Vector3D& delta);
    // Removes the first entry equal to `group`, if any.
    void RemoveFromList(int group);
    // True when the list holds `group`.
    bool Lists(int group) const;
    // Density times the product of the Transform's scale (0 without a Transform).
    float GetMass() const;
    // 1 / mass for a mass above 0, else exactly 0.
    float GetInverseMass() const;

    // The owner's Transform, found at Initialize; not owned.
    Transform* transform = nullptr;
    // World units per second.
    Math::Vector3D Velocity;
    // Friction, bounciness and density.
    ::Material Material;
    // The body's own group number.
    int32_t Group = 0;
    // The groups this body collides with.
    std::vector<int32_t> m_list;
    // When true, overlaps are reported and never resolved.
    bool Ghost = false;
    // This body's own acceleration.
    Math::Vector3D Gravity;

private:
    PhysicsBody(const PhysicsBody& other)
        : Component(), transform(other.transform), Velocity(other.Velocity), Material(other.Material),
          Group(other.Group), m_list(other.m_list), Ghost(other.Ghost), Gravity(other.Gravity)
    {
    }
    // True while the body is in its system's list.
    bool m_Joined = false;
};
