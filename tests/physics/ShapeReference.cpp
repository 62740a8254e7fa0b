#include "ShapeReference.h"

#include "Components/Transform/Transform.h"
#include "physics/ColliderArc.h"
#include "physics/ColliderAxisCube.h"
#include "physics/ColliderCube.h"
#include "physics/ColliderPlane.h"
#include "physics/ColliderSphere.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ShapeReference
{
namespace
{
Vec operator+(Vec a, Vec b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
Vec operator-(Vec a, Vec b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
Vec operator*(Vec a, double s) { return {a.x * s, a.y * s, a.z * s}; }
double Dot(Vec a, Vec b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
Vec Cross(Vec a, Vec b) { return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x}; }
double Length(Vec a) { return std::sqrt(Dot(a, a)); }
Vec FromMath(const Math::Vector3D& v) { return {v.x, v.y, v.z}; }
Vec FromMath(const Math::Point3D& p) { return {p.x, p.y, p.z}; }

// The unit axes of a Transform's rotation (the identity without one, or when `ignoreRotation`).
void Axes(const Transform* transform, bool ignoreRotation, Vec axes[3])
{
    const Math::Vector3D units[3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    for (int i = 0; i < 3; ++i)
    {
        Vec axis = FromMath(transform && !ignoreRotation ? transform->m_Rotation.RotateVector(units[i]) : units[i]);
        axes[i] = axis * (1.0 / Length(axis));
    }
}

Shape Box(const Collider& collider, const Math::Vector3D& dimensions, bool ignoreRotation)
{
    Shape shape;
    const Transform* t = collider.transform;
    const Math::Vector3D scale = t ? t->m_Scale : Math::Vector3D(1, 1, 1);
    shape.position = t ? FromMath(t->m_Position) : Vec{};
    Axes(t, ignoreRotation, shape.axes);
    const double hx = std::fabs(dimensions.x * scale.x) * 0.5, hz = std::fabs(dimensions.z * scale.z) * 0.5;
    shape.halfHeight = std::fabs(dimensions.y * scale.y) * 0.5;
    shape.polygon = {{hx, 0, hz}, {-hx, 0, hz}, {-hx, 0, -hz}, {hx, 0, -hz}};
    return shape;
}

// The arc's outline in local (x, z), from its vertices' tops, in counter-clockwise order around its centroid.
Shape Arc(const ColliderArc& arc)
{
    Shape shape;
    const Transform* t = arc.transform;
    shape.position = t ? FromMath(t->m_Position) : Vec{};
    Axes(t, false, shape.axes);
    Vec centre;
    for (std::size_t i = 0; i < arc.m_Vertices.size(); i += 2)
    {
        const Math::Vector3D& v = arc.m_Vertices[i];
        shape.polygon.push_back({v.x, 0.0, v.z});
        shape.halfHeight = std::fabs(v.y);
        centre = centre + Vec{v.x, 0.0, v.z};
    }
    if (!shape.polygon.empty())
        centre = centre * (1.0 / static_cast<double>(shape.polygon.size()));
    std::sort(shape.polygon.begin(), shape.polygon.end(), [&](const Vec& a, const Vec& b) {
        return std::atan2(a.z - centre.z, a.x - centre.x) < std::atan2(b.z - centre.z, b.x - centre.x);
    });
    return shape;
}

Vec Corner(const Shape& prism, const Vec& local, double y)
{
    return prism.position + prism.axes[0] * local.x + prism.axes[1] * y + prism.axes[2] * local.z;
}

std::vector<Vec> Vertices(const Shape& prism)
{
    std::vector<Vec> vertices;
    for (const Vec& p : prism.polygon)
    {
        vertices.push_back(Corner(prism, p, prism.halfHeight));
        vertices.push_back(Corner(prism, p, -prism.halfHeight));
    }
    return vertices;
}

// World directions of the polygon's edges (and so of the side faces' tangents).
std::vector<Vec> EdgeDirections(const Shape& prism)
{
    std::vector<Vec> directions{prism.axes[1]};
    const std::size_t n = prism.polygon.size();
    for (std::size_t i = 0; i < n; ++i)
    {
        const Vec a = prism.polygon[i];
        const Vec b = prism.polygon[(i + 1) % n];
        const Vec d = prism.axes[0] * (b.x - a.x) + prism.axes[2] * (b.z - a.z);
        if (Length(d) > 1e-9)
            directions.push_back(d * (1.0 / Length(d)));
    }
    return directions;
}

std::vector<Vec> FaceNormals(const Shape& prism)
{
    std::vector<Vec> normals{prism.axes[1]};
    for (const Vec& edge : EdgeDirections(prism))
    {
        const Vec n = Cross(edge, prism.axes[1]);
        if (Length(n) > 1e-9)
            normals.push_back(n * (1.0 / Length(n)));
    }
    return normals;
}

void Project(const std::vector<Vec>& vertices, const Vec& axis, double& low, double& high)
{
    low = std::numeric_limits<double>::max();
    high = -low;
    for (const Vec& v : vertices)
    {
        low = std::min(low, Dot(v, axis));
        high = std::max(high, Dot(v, axis));
    }
}

double PrismPrism(const Shape& a, const Shape& b)
{
    const std::vector<Vec> va = Vertices(a), vb = Vertices(b);
    std::vector<Vec> axes = FaceNormals(a);
    for (const Vec& n : FaceNormals(b))
        axes.push_back(n);
    for (const Vec& ea : EdgeDirections(a))
        for (const Vec& eb : EdgeDirections(b))
        {
            const Vec n = Cross(ea, eb);
            if (Length(n) > 1e-6)
                axes.push_back(n * (1.0 / Length(n)));
        }
    double least = std::numeric_limits<double>::max();
    for (const Vec& axis : axes)
    {
        double lowA, highA, lowB, highB;
        Project(va, axis, lowA, highA);
        Project(vb, axis, lowB, highB);
        least = std::min(least, std::min(highA - lowB, highB - lowA));
    }
    return least;
}

// Signed distance from a point to a prism: negative inside (the depth to its nearest face).
double SignedDistance(const Shape& prism, const Vec& point)
{
    const Vec d = point - prism.position;
    const double x = Dot(d, prism.axes[0]), y = Dot(d, prism.axes[1]), z = Dot(d, prism.axes[2]);
    const std::size_t n = prism.polygon.size();
    bool inside = n >= 3;
    double nearest = std::numeric_limits<double>::max();
    for (std::size_t i = 0; i < n; ++i)
    {
        const Vec a = prism.polygon[i];
        const Vec b = prism.polygon[(i + 1) % n];
        const double ex = b.x - a.x, ez = b.z - a.z;
        const double px = x - a.x, pz = z - a.z;
        const double lengthSquare = ex * ex + ez * ez;
        const double t = lengthSquare > 0.0 ? std::clamp((px * ex + pz * ez) / lengthSquare, 0.0, 1.0) : 0.0;
        nearest = std::min(nearest, std::hypot(px - t * ex, pz - t * ez));
        // The polygon runs counter-clockwise in (x, z), so the inside lies left of every edge.
        if (ex * pz - ez * px < 0.0)
            inside = false;
    }
    const double inPlane = inside ? -nearest : nearest;
    const double along = std::fabs(y) - prism.halfHeight;
    if (inPlane <= 0.0 && along <= 0.0)
        return std::max(inPlane, along);
    return std::hypot(std::max(inPlane, 0.0), std::max(along, 0.0));
}

// The smallest value of n . x over the shape.
double Lowest(const Shape& shape, const Vec& n)
{
    if (shape.kind == Shape::Sphere)
        return Dot(shape.position, n) - shape.radius;
    double low, high;
    Project(Vertices(shape), n, low, high);
    return low;
}
}

Shape FromCollider(const Collider& collider)
{
    switch (collider.type)
    {
    case Collider::AxisCubeShape:
        return Box(collider, static_cast<const ColliderAxisCube&>(collider).Dimensions, true);
    case Collider::CubeShape:
        return Box(collider, static_cast<const ColliderCube&>(collider).Dimensions, false);
    case Collider::ArcShape:
        return Arc(static_cast<const ColliderArc&>(collider));
    case Collider::SphereShape:
    {
        const auto& sphere = static_cast<const ColliderSphere&>(collider);
        Shape shape;
        shape.kind = Shape::Sphere;
        const Transform* t = sphere.transform;
        shape.position = t ? FromMath(t->m_Position) : Vec{};
        const double largest = t ? std::max({t->m_Scale.x, t->m_Scale.y, t->m_Scale.z}) : 1.0;
        shape.radius = sphere.Radius * largest;
        return shape;
    }
    case Collider::PlaneShape:
    {
        const auto& plane = static_cast<const ColliderPlane&>(collider);
        Shape shape;
        shape.kind = Shape::HalfSpace;
        shape.position = FromMath(plane.PlanePoint());
        shape.normal = FromMath(plane.GetNormal());
        return shape;
    }
    default:
        return Shape();
    }
}

double Overlap(const Shape& a, const Shape& b)
{
    if (a.kind == Shape::HalfSpace)
        return Dot(a.position, a.normal) - Lowest(b, a.normal);
    if (b.kind == Shape::HalfSpace)
        return Overlap(b, a);
    if (a.kind == Shape::Sphere && b.kind == Shape::Sphere)
        return a.radius + b.radius - Length(b.position - a.position);
    if (a.kind == Shape::Sphere)
        return a.radius - SignedDistance(b, a.position);
    if (b.kind == Shape::Sphere)
        return b.radius - SignedDistance(a, b.position);
    return PrismPrism(a, b);
}
}
