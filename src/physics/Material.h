// Material: what a physics body is made of, held by value in each body.
// Friction combines with the other body's as the root of the sum of squares;
// a contact bounces with the smaller Bounciness of the two; Density times the
// volume of the Transform's scale is the body's mass (0 makes it immovable).
// Scripts make and read it as `Material`; writing a body's Material replaces
// all three values at once.
#pragma once

class Material
{
public:
    // Combined with the other body's friction as sqrt(a^2 + b^2).
    float Friction = 0.0f;
    // Restitution; a contact uses the smaller of the two bodies' values.
    float Bounciness = 1.0f;
    // Mass per unit of scale volume.
    float Density = 1.0f;

    // True when all three values are equal.
    bool operator==(const Material& other) const = default;
};
