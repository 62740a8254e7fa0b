// Light: a light on an object, drawn by the renderer's light pass. It needs a
// Transform on the same object: the light stands at the Transform's position
// (plus its offset) plus the light's own Offset. LightType picks the kind:
// Point (Range, Attenuation), Direction (Direction), Spot (all of them and
// SpotPrams: inner angle, outer angle in radians, falloff exponent); None
// switches it off. At Initialize it finds its Transform and adds itself to its
// space's GraphicsSpace, which copies its values into the light's record each
// frame, so scripts may change any of them, the type included, at any time;
// it leaves the space when it ends.
#pragma once

#include "engine/Component.h"
#include "engine/Math/Color.h"
#include "engine/Math/Vector3D.h"

class Transform;

// The kind of a light; script-visible as LightType.None and so on.
enum class LightType : unsigned
{
    None = 0,
    Point = 1,
    Direction = 2,
    Spot = 3,
};

class Light : public Component
{
public:
    Light() = default;

    // Finds the owner's Transform and adds the light to its space's GraphicsSpace.
    void Initialize() override;
    // Removes the light from its space's GraphicsSpace.
    void Uninitialize() override;
    Component* Clone() const override { return new Light(*this); }
    Meta::Data* GetMeta() const override;

    // Ambient term.
    Math::Color Ambient{0.0f, 0.0f, 0.0f, 1.0f};
    // Diffuse term.
    Math::Color Diffuse{0.0f, 0.0f, 0.0f, 1.0f};
    // Specular term.
    Math::Color Specular{0.0f, 0.0f, 0.0f, 1.0f};
    // Radius of effect.
    float Range = 1.0f;
    // Direction of Direction and Spot lights.
    Math::Vector3D Direction{0.0f, 0.0f, 0.0f};
    // Inner angle, outer angle (radians), falloff exponent of a Spot light.
    Math::Vector3D SpotPrams{0.0f, 0.0f, 0.0f};
    // Constant, linear and quadratic attenuation.
    Math::Vector3D Attenuation{0.0f, 0.0f, 0.0f};
    // Added to the Transform's position.
    Math::Vector3D Offset{0.0f, 0.0f, 0.0f};
    // The kind of light; None switches it off.
    ::LightType LightType = ::LightType::None;
    // The owner's Transform, found at Initialize.
    Transform* m_Transform = nullptr;

private:
    Light(const Light& other)
        : Component(), Ambient(other.Ambient), Diffuse(other.Diffuse), Specular(other.Specular), Range(other.Range),
          Direction(other.Direction), SpotPrams(other.SpotPrams), Attenuation(other.Attenuation), Offset(other.Offset),
          LightType(other.LightType)
    {
    }
    bool m_Added = false;
};
