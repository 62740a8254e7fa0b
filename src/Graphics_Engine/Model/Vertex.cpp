// Scripts read a vertex's parts as the engine's math types; a vertex is never
// written from a script.
#include "Graphics_Engine/Model/Vertex.h"

#include "engine/Math/Point3D.h"
#include "engine/Math/Vector2D.h"
#include "engine/Math/Vector3D.h"
#include "engine/Math/Vector4D.h"
#include "utilities/Meta/Registration.h"

namespace
{
using Graphics::Vertex;

Math::Point3D PositionOf(Vertex* vertex)
{
    return {vertex->position[0], vertex->position[1], vertex->position[2]};
}

Math::Vector3D NormalOf(Vertex* vertex)
{
    return {vertex->normal[0], vertex->normal[1], vertex->normal[2]};
}

Math::Vector3D TangentOf(Vertex* vertex)
{
    return {vertex->tangent[0], vertex->tangent[1], vertex->tangent[2]};
}

Math::Vector2D UvOf(Vertex* vertex)
{
    return {vertex->uv[0], vertex->uv[1]};
}

Math::Vector4D BoneIndicesOf(Vertex* vertex)
{
    const std::uint32_t* bones = vertex->skin.boneIndices;
    return {float(bones[0]), float(bones[1]), float(bones[2]), float(bones[3])};
}

Math::Vector4D BoneWeightsOf(Vertex* vertex)
{
    const float* weights = vertex->skin.weights;
    return {weights[0], weights[1], weights[2], 1.0f - weights[0] - weights[1] - weights[2]};
}
}

META_REGISTER_NS(Graphics, Vertex)
{
    DESCRIPTION("One vertex of a model, read-only.");
    PROPERTY_GET_FUNC(Position, &PositionOf, "The position in model space.");
    PROPERTY_GET_FUNC(Normal, &NormalOf, "The normal.");
    PROPERTY_GET_FUNC(Tangent, &TangentOf, "The direction in which the texture's u grows.");
    PROPERTY_GET_FUNC(UV, &UvOf, "The texture coordinates u and v.");
    PROPERTY_GET_FUNC(BoneIndices, &BoneIndicesOf, "The four bones that move the vertex (skinned models).");
    PROPERTY_GET_FUNC(BoneWeights, &BoneWeightsOf, "How much each of the four bones moves it; they add up to 1.");
}
