#include "RandomShapes.h"

#include "physics/ColliderArc.h"
#include "physics/ColliderAxisCube.h"
#include "physics/ColliderCube.h"
#include "physics/ColliderPlane.h"
#include "physics/ColliderSphere.h"

#include <cmath>

namespace RandomShapes
{
namespace
{
float Uniform(std::mt19937& random, float low, float high)
{
    return std::uniform_real_distribution<float>(low, high)(random);
}
}

const char* Name(int kind)
{
    static const char* const kNames[] = {"ColliderAxisCube", "ColliderCube", "ColliderSphere", "ColliderArc",
                                         "ColliderPlane"};
    return kind >= 0 && kind < KindCount ? kNames[kind] : "?";
}

Math::Quaternion RandomRotation(std::mt19937& random)
{
    std::normal_distribution<float> normal;
    Math::Quaternion q(normal(random), normal(random), normal(random), normal(random));
    q.Normalize();
    return q;
}

void Make(Holder& holder, int kind, const Math::Point3D& position, std::mt19937& random)
{
    holder.transform.m_Position = position;
    holder.transform.m_Rotation = RandomRotation(random);
    holder.transform.m_Scale =
        Math::Vector3D(Uniform(random, 0.5f, 2.0f), Uniform(random, 0.5f, 2.0f), Uniform(random, 0.5f, 2.0f));
    switch (kind)
    {
    case AxisCube:
    {
        auto cube = std::make_unique<ColliderAxisCube>();
        cube->SetDimensions(Math::Vector3D(Uniform(random, 0.3f, 1.5f), Uniform(random, 0.3f, 1.5f),
                                           Uniform(random, 0.3f, 1.5f)));
        holder.collider = std::move(cube);
        break;
    }
    case Cube:
    {
        auto cube = std::make_unique<ColliderCube>();
        cube->SetDimensions(Math::Vector3D(Uniform(random, 0.3f, 1.5f), Uniform(random, 0.3f, 1.5f),
                                           Uniform(random, 0.3f, 1.5f)));
        holder.collider = std::move(cube);
        break;
    }
    case Sphere:
    {
        auto sphere = std::make_unique<ColliderSphere>();
        sphere->Radius = Uniform(random, 0.2f, 0.8f);
        holder.collider = std::move(sphere);
        break;
    }
    case Arc:
    {
        auto arc = std::make_unique<ColliderArc>();
        const float outer = Uniform(random, 0.5f, 2.0f);
        const float inner = Uniform(random, 0.0f, 1.0f) < 0.4f ? 0.0f : Uniform(random, 0.1f, 0.9f) * outer;
        arc->BuildArc(Uniform(random, 20.0f, 180.0f), outer, inner, Uniform(random, 0.2f, 1.5f));
        holder.collider = std::move(arc);
        break;
    }
    default:
    {
        auto plane = std::make_unique<ColliderPlane>();
        plane->SetNormal(RandomRotation(random).RotateVector(Math::Vector3D(0.0f, 1.0f, 0.0f)));
        holder.collider = std::move(plane);
        break;
    }
    }
    holder.collider->transform = &holder.transform;
    holder.collider->UpdateBounds();
}
}
