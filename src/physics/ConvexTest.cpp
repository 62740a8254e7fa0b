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

// A point of the Minkowski difference with the two shape points it came from.
struct SupportPoint
{
    // The point of the difference, pa - pb.
    Math::Vector3D p;
    // The point on shape A.
    Math::Point3D pa;
    // The point on shape B.
    Math::Point3D pb;
};

bool IsFinite(const Math::Vector3D& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

bool NearlyZero(const Math::Vector3D& v)
{
    return std::fabs(v.x) <= kTolerance && std::fabs(v.y) <= kTolerance && std::fabs(v.z) <= kTolerance;
}

bool NearlyEqual(const Math::Vector3D& a, const Math::Vector3D& b)
{
    return NearlyZero(a - b);
}

Math::Vector3D Unit(Math::Vector3D v)
{
    v.Normalize();
    return v;
}

SupportPoint Support(Collider& a, Collider& b, const Math::Vector3D& direction)
{
    SupportPoint point;
    point.pa = a.GetSupport(direction);
    point.pb = b.GetSupport(direction * -1.0f);
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
bool UpdateSimplex(Simplex& simplex, Math::Vector3D& direction)
{
    SupportPoint* s = simplex.points;
    const Math::Vector3D a = s[0].p;
    const Math::Vector3D ao = Unit(a * -1.0f);
    if (simplex.count == 2)
    {
        const Math::Vector3D ab = Unit(s[1].p - a);
        if (ab.DotProduct(ao) <= kEpsilon)
        {
            simplex.DropBack();
            direction = ao;
            return false;
        }
        direction = ab.CrossProduct(ao).CrossProduct(ab);
        if (NearlyZero(direction))
            direction = ab.CrossProduct(Math::Vector3D(1.0f, 0.0f, 0.0f));
        return false;
    }
    if (simplex.count == 3)
    {
        const Math::Vector3D ab = Unit(s[1].p - a);
        const Math::Vector3D ac = Unit(s[2].p - a);
        const Math::Vector3D n = ab.CrossProduct(ac);
        const Math::Vector3D u = ac.CrossProduct(ab).CrossProduct(ab);
        const Math::Vector3D w = ab.CrossProduct(ac).CrossProduct(ac);
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
    const Math::Vector3D ab = Unit(s[1].p - a);
    const Math::Vector3D ac = Unit(s[2].p - a);
    const Math::Vector3D ad = Unit(s[3].p - a);
    const Math::Vector3D n1 = ab.CrossProduct(ac);
    if (n1.DotProduct(ao) > kEpsilon)
    {
        simplex.DropBack();
        direction = n1;
        return false;
    }
    const Math::Vector3D n2 = ac.CrossProduct(ad);
    if (n2.DotProduct(ao) > kEpsilon)
    {
        s[1] = s[2];
        s[2] = s[3];
        simplex.DropBack();
        direction = n2;
        return false;
    }
    const Math::Vector3D n3 = ad.CrossProduct(ab);
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
    Math::Vector3D normal;
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
    bool Run(Math::Vector3D& normal, float& penetration)
    {
        for (int round = 0; round < ConvexTest::kEpaIterationLimit; ++round)
        {
            if (m_FaceCount == 0)
                return Best(normal, penetration);
            ++m_Stats.epaIterations;
            const Face& nearest = m_Faces[Nearest()];
            const Math::Vector3D faceNormal = nearest.normal;
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
        const Math::Vector3D& p0 = m_Vertices[i0].p;
        const Math::Vector3D normal = Unit((m_Vertices[i1].p - p0).CrossProduct(m_Vertices[i2].p - p0));
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

    void Remember(const Math::Vector3D& normal, float dist)
    {
        if (m_HasBest && dist >= m_BestDistance)
            return;
        m_HasBest = true;
        m_BestNormal = normal;
        m_BestDistance = dist;
    }

    // The answer when the loop stops early: the face with the smallest support distance seen.
    bool Best(Math::Vector3D& normal, float& penetration)
    {
        m_Stats.epaStoppedEarly = true;
        normal = m_HasBest ? m_BestNormal : Math::Vector3D(1.0f, 0.0f, 0.0f);
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
    Math::Vector3D m_BestNormal;
    float m_BestDistance = 0.0f;
};
}

namespace ConvexTest
{
bool Collide(Collider& a, Collider& b, Math::Vector3D& normal, float& penetration, Stats* stats)
{
    Stats local;
    Stats& out = stats ? *stats : local;
    out = Stats();
    Simplex simplex;
    simplex.PushFront(Support(a, b, Math::Vector3D(0.0f, 1.0f, 0.0f)));
    Math::Vector3D direction(0.0f, -1.0f, 0.0f);
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
            if (!polytope.Run(normal, penetration))
                return false;
            if (NearlyZero(normal) || !IsFinite(normal))
                normal = Math::Vector3D(1.0f, 0.0f, 0.0f);
            normal.Normalize();
            return true;
        }
    }
    out.gjkLimitReached = true;
    return false;
}
}
