// The records the visible lists hold for the pipeline's stages: a component to
// draw with its world matrix (row-major, row vectors), and for the forward
// pass also its squared distance to the camera and its program.
#pragma once

#include "engine/Math/Matrix4.h"

namespace Graphics
{
class BaseGraphicsComponent;
class ShaderProgram;

// One object of the deferred pass.
struct DrawRecord
{
    // Position, scale and rotation of the object, as one matrix.
    Math::Matrix4 World;
    BaseGraphicsComponent* Component = nullptr;
};

// One object of the forward pass, kept in a list sorted farthest first.
struct ForwardRecord
{
    Math::Matrix4 World;
    // Squared distance from the camera to the object's position.
    float DistanceSquared = 0.0f;
    BaseGraphicsComponent* Component = nullptr;
    // The component's resolved program.
    ShaderProgram* Shader = nullptr;
};
}
