#include "physics/ConvexTest.h"

#include <cmath>
#include <utility>

#include "physics/Collider.h"

namespace
{
// The comparison constant of the simplex rules.
constexpr float kEpsilon = 0.001f;
// Per-component tolerance for zero vectors, equal edges and the polytope's stop.
constexpr float kTolerance = 0.0001f;
// Room of the polytope: enough for every round the limit allows (each adds one vertex; a convex polytope of
// V vertices has 2V - 4 faces) with a margin for the non-convex bits that rounding leaves.
constexpr int kMaxVertices = 4 + ConvexTest::kEpaIterationLimit;
constexpr int kMaxFaces = 4 * kMaxVertices;
constexpr int kMaxEdges = 3 * kMaxFaces;

// A plain three-float vector for the test's own arithmetic: the same operations, in the same order, as
// Vec's, without its virtual table, so that the fixed arrays below cost nothing to set up.
struct Vec
{
    float x, y, z;

    Vec operator-(const Vec& o) const { return {x - o.x, y - o.y, z - o.z}; }
    Vec operator*(float s) const { return {x * s, y * s, z * s}; }
    float DotProduct(const Vec& o) const { return x * o.x + y * o.y + z * o.z; }
    Vec CrossProduct(const Vec& o) const { return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x}; }
    Math::Vector3D ToMath() const { return Math::Vector3D(x, y, z); }
};

// A point of the Minkowski difference with the two shape points it came from.
struct SupportPoint
{
    // The point of the difference, pa - pb.
    Vec p;
    // The point on shape A.
    Vec pa;
    // The point on shape B.
    Vec pb;
};

bool IsFinite(const Vec& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

bool NearlyZero(const Vec& v)
{
    return std::fabs(v.x) <= kTolerance && std::fabs(v.y) <= kTolerance && std::fabs(v.z) <= kTolerance;
}

bool NearlyEqual(const Vec& a, const Vec& b)
{
    return NearlyZero(a - b);
}

// The vector scaled to length 1, as Vec::Normalize does it: a zero vector stays zero.
Vec Unit(Vec v)
{
    const float lengthSquare = v.x * v.x + v.y * v.y + v.z * v.z;
    if (lengthSquare == 0.0f)
        return v;
    const float length = std::sqrt(lengthSquare);
    if (std::isinf(length))
        return {NAN, NAN, NAN};
    return {v.x / length, v.y / length, v.z / length};
}

SupportPoint Support(Collider& a, Collider& b, const Vec& direction)
{
    SupportPoint point;
    const Math::Vector3D d = direction.ToMath();
    const Math::Point3D pa = a.GetSupport(d);
    const Math::Point3D pb = b.GetSupport(d * -1.0f);
    point.pa = {pa.x, pa.y, pa.z};
    point.pb = {pb.x, pb.y, pb.z};
    point.p = point.pa - point.pb;
    return point;
}

// The simplex, newest point first; dropping a point removes it from the back.
struct Simplex
{
    SupportPoint points[4];
    int count = 0;

    void PushFront(const SupportPoint& point)
    {
        for (int i = count; i > 0; --i)
            points[i] = points[i - 1];
        points[0] = point;
        ++count;
    }
    void DropBack() { --count; }
};

// One step of the simplex rules: shrinks the simplex to the part nearest the origin and sets the next
// search direction; true when the simplex holds the origin.
bool UpdateSimplex(Simplex& simplex, Vec& direction)
{
    SupportPoint* s = simplex.points;
    const Vec a = s[0].p;
    const Vec ao = Unit(a * -1.0f);
    if (simplex.count == 2)
    {
        const Vec ab = Unit(s[1].p - a);
        if (ab.DotProduct(ao) <= kEpsilon)
        {
            simplex.DropBack();
            direction = ao;
            return false;
        }
        direction = ab.CrossProduct(ao).CrossProduct(ab);
        if (NearlyZero(direction))
            direction = ab.CrossProduct(Vec{1.0f, 0.0f, 0.0f});
        return false;
    }
    if (simplex.count == 3)
    {
        const Vec ab = Unit(s[1].p - a);
        const Vec ac = Unit(s[2].p - a);
        const Vec n = ab.CrossProduct(ac);
        const Vec u = ac.CrossProduct(ab).CrossProduct(ab);
        const Vec w = ab.CrossProduct(ac).CrossProduct(ac);
        if (u.DotProduct(ao) > kEpsilon)
        {
            simplex.DropBack();
            direction = u;
        }
        else if (w.DotProduct(ao) > kEpsilon)
        {
            s[1] = s[2];
            simplex.DropBack();
            direction = w;
        }
        else if (n.DotProduct(ao) > 0.0f)
        {
            direction = n;
        }
        else
        {
            std::swap(s[1], s[2]);
            direction = n * -1.0f;
        }
        return false;
    }
    // Four points.
    const Vec ab = Unit(s[1].p - a);
    const Vec ac = Unit(s[2].p - a);
    const Vec ad = Unit(s[3].p - a);
    const Vec n1 = ab.CrossProduct(ac);
    if (n1.DotProduct(ao) > kEpsilon)
    {
        simplex.DropBack();
        direction = n1;
        return false;
    }
    const Vec n2 = ac.CrossProduct(ad);
    if (n2.DotProduct(ao) > kEpsilon)
    {
        s[1] = s[2];
        s[2] = s[3];
        simplex.DropBack();
        direction = n2;
        return false;
    }
    const Vec n3 = ad.CrossProduct(ab);
    if (n3.DotProduct(ao) <= kEpsilon)
        return true;
    const SupportPoint b = s[1];
    s[1] = s[3];
    s[2] = b;
    simplex.DropBack();
    direction = n3;
    return false;
}

// A face of the polytope: three vertex indices, its unit normal and |normal . v0|.
struct Face
{
    int v[3];
    Vec normal;
    float distance;
};

struct Edge
{
    int from;
    int to;
};

// The expanding polytope method over the tetrahedron that GJK left.
class Polytope
{
public:
    Polytope(Collider& a, Collider& b, const Simplex& simplex, ConvexTest::Stats& stats)
        : m_A(a), m_B(b), m_Stats(stats)
    {
        for (int i = 0; i < 4; ++i)
            m_Vertices[i] = simplex.points[i];
        m_VertexCount = 4;
        AddFace(0, 1, 2);
        AddFace(0, 2, 3);
        AddFace(0, 3, 1);
        AddFace(1, 3, 2);
    }

    // Expands until the nearest face is final or a bound is met; false only for a non-finite support point.
    bool Run(Vec& normal, float& penetration)
    {
        for (int round = 0; round < ConvexTest::kEpaIterationLimit; ++round)
        {
            if (m_FaceCount == 0)
                return Best(normal, penetration);
            ++m_Stats.epaIterations;
            const Face& nearest = m_Faces[Nearest()];
            const Vec faceNormal = nearest.normal;
            const SupportPoint q = Support(m_A, m_B, faceNormal);
            if (!IsFinite(q.p))
            {
                m_Stats.nonFinite = true;
                return false;
            }
            const float dist = q.p.DotProduct(faceNormal);
            Remember(faceNormal, dist);
            if (std::fabs(dist) - nearest.distance < kTolerance)
            {
                normal = faceNormal;
                penetration = dist;
                return true;
            }
            if (m_VertexCount == kMaxVertices || !Expand(q))
                return Best(normal, penetration);
        }
        return Best(normal, penetration);
    }

private:
    void AddFace(int i0, int i1, int i2)
    {
        if (m_FaceCount == kMaxFaces)
        {
            m_Full = true;
            return;
        }
        const Vec& p0 = m_Vertices[i0].p;
        const Vec normal = Unit((m_Vertices[i1].p - p0).CrossProduct(m_Vertices[i2].p - p0));
        if (NearlyZero(normal) || !IsFinite(normal))
            return;
        m_Faces[m_FaceCount++] = Face{{i0, i1, i2}, normal, std::fabs(normal.DotProduct(p0))};
    }

    // The face with the smallest distance, the first on ties.
    int Nearest() const
    {
        int chosen = 0;
        float smallest = 3.4028235e38f;
        for (int i = 0; i < m_FaceCount; ++i)
            if (m_Faces[i].distance < smallest)
            {
                smallest = m_Faces[i].distance;
                chosen = i;
            }
        return chosen;
    }

    // Adds the edge unless its reverse is listed, in which case the reverse goes.
    void AddEdge(int from, int to)
    {
        for (int i = 0; i < m_EdgeCount; ++i)
        {
            const Edge& edge = m_Edges[i];
            if (NearlyEqual(m_Vertices[edge.from].p, m_Vertices[to].p) &&
                NearlyEqual(m_Vertices[edge.to].p, m_Vertices[from].p))
            {
                for (int j = i + 1; j < m_EdgeCount; ++j)
                    m_Edges[j - 1] = m_Edges[j];
                --m_EdgeCount;
                return;
            }
        }
        if (m_EdgeCount == kMaxEdges)
        {
            m_Full = true;
            return;
        }
        m_Edges[m_EdgeCount++] = Edge{from, to};
    }

    // Removes every face that q sees and closes the hole with faces through q; false when the round changed
    // nothing or the polytope ran out of room.
    bool Expand(const SupportPoint& q)
    {
        const int qi = m_VertexCount++;
        m_Vertices[qi] = q;
        m_EdgeCount = 0;
        int kept = 0;
        for (int i = 0; i < m_FaceCount; ++i)
        {
            const Face& face = m_Faces[i];
            if ((q.p - m_Vertices[face.v[0]].p).DotProduct(face.normal) > 0.0f)
            {
                AddEdge(face.v[0], face.v[1]);
                AddEdge(face.v[1], face.v[2]);
                AddEdge(face.v[2], face.v[0]);
            }
            else
            {
                m_Faces[kept++] = face;
            }
        }
        const bool removed = kept != m_FaceCount;
        m_FaceCount = kept;
        for (int i = 0; i < m_EdgeCount; ++i)
            AddFace(qi, m_Edges[i].from, m_Edges[i].to);
        return removed && !m_Full;
    }

    void Remember(const Vec& normal, float dist)
    {
        if (m_HasBest && dist >= m_BestDistance)
            return;
        m_HasBest = true;
        m_BestNormal = normal;
        m_BestDistance = dist;
    }

    // The answer when the loop stops early: the face with the smallest support distance seen.
    bool Best(Vec& normal, float& penetration)
    {
        m_Stats.epaStoppedEarly = true;
        normal = m_HasBest ? m_BestNormal : Vec{1.0f, 0.0f, 0.0f};
        penetration = m_HasBest ? m_BestDistance : 0.0f;
        return true;
    }

    Collider& m_A;
    Collider& m_B;
    ConvexTest::Stats& m_Stats;
    SupportPoint m_Vertices[kMaxVertices];
    int m_VertexCount = 0;
    Face m_Faces[kMaxFaces];
    int m_FaceCount = 0;
    Edge m_Edges[kMaxEdges];
    int m_EdgeCount = 0;
    bool m_Full = false;
    bool m_HasBest = false;
    Vec m_BestNormal{0.0f, 0.0f, 0.0f};
    float m_BestDistance = 0.0f;
};
}

namespace ConvexTest
{
bool Collide(Collider& a, Collider& b, Math::Vector3D& normalOut, float& penetration, Stats* stats)
{
    Stats local;
    Stats& out = stats ? *stats : local;
    out = Stats();
    Simplex simplex;
    simplex.PushFront(Support(a, b, Vec{0.0f, 1.0f, 0.0f}));
    Vec direction{0.0f, -1.0f, 0.0f};
    for (int round = 0; round < kGjkIterationLimit; ++round)
    {
        ++out.gjkIterations;
        const SupportPoint newest = Support(a, b, direction);
        if (!IsFinite(newest.p) || !IsFinite(direction))
        {
            out.nonFinite = true;
            return false;
        }
        simplex.PushFront(newest);
        if (direction.DotProduct(newest.p) < kEpsilon)
            return false;
        if (UpdateSimplex(simplex, direction))
        {
            Polytope polytope(a, b, simplex, out);
            Vec normal{1.0f, 0.0f, 0.0f};
            if (!polytope.Run(normal, penetration))
                return false;
            if (NearlyZero(normal) || !IsFinite(normal))
                normal = Vec{1.0f, 0.0f, 0.0f};
            normalOut = Unit(normal).ToMath();
            return true;
        }
    }
    out.gjkLimitReached = true;
    return false;
}
}
