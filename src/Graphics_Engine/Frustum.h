// Graphics::Frustum: the six planes of a camera's view volume, taken from its
// view-projection matrix (row vectors, so clip = p * M and each clip
// coordinate is p dotted with a column of M). With column 3 (w) as the
// reference, plane k is (column k - column 3) and plane k + 3 is
// (-column 3 - column k), for k = 0, 1, 2, each normalised by the length of
// its normal. A point is inside when it lies on the negative side of every
// plane; a box is outside when it lies wholly on the positive side of any
// plane, which is decided by testing its corner furthest to the negative side.
#pragma once

#include "engine/Math/Matrix4.h"
#include "engine/Math/Point3D.h"
#include "engine/Math/Vector3D.h"

namespace Graphics
{
// A plane n . p + d = 0; points with n . p + d > 0 lie on its positive (outer) side.
struct Plane
{
    // The plane's normal, unit length unless the matrix was degenerate.
    Math::Vector3D Normal;
    // The plane's offset.
    float D = 0.0f;
};

class Frustum
{
public:
    // A frustum that culls nothing.
    Frustum() = default;
    // The frustum of a view-projection matrix.
    explicit Frustum(const Math::Matrix4& viewProjection);

    // True when the box of this centre and half size lies wholly outside one of the planes.
    bool IsBoxOutside(const Math::Point3D& center, const Math::Vector3D& halfSize) const;

    // The six planes, in the order described above.
    Plane m_Planes[6];
    // False for a default frustum, which culls nothing.
    bool m_Valid = false;
};
}
