#include "physics/Material.h"

#include "utilities/Meta/Registration.h"

META_REGISTER(Material)
{
    CONSTRUCTOR();
    DESCRIPTION("What a physics body is made of: friction, bounciness and density.");
    MEMBER(Friction, "Combined with the other body's friction as the root of the sum of squares.");
    MEMBER(Bounciness, "Restitution; a contact uses the smaller of the two bodies' values.");
    MEMBER(Density, "Mass per unit of scale volume; 0 makes the body immovable.");
}
