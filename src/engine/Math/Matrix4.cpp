#include "engine/Math/Matrix4.h"

#include <cmath>

namespace Math
{
Matrix4::Matrix4()
{
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            m[r][c] = r == c ? 1.0f : 0.0f;
}

Matrix4::Matrix4(float m00, float m01, float m02, float m03, float m10, float m11, float m12, float m13, float m20,
                 float m21, float m22, float m23, float m30, float m31, float m32, float m33)
    : m{{m00, m01, m02, m03}, {m10, m11, m12, m13}, {m20, m21, m22, m23}, {m30, m31, m32, m33}}
{
}

Matrix4 Matrix4::Translation(float x, float y, float z)
{
    Matrix4 result;
    result.m[3][0] = x;
    result.m[3][1] = y;
    result.m[3][2] = z;
    return result;
}

Matrix4 Matrix4::operator*(const Matrix4& other) const
{
    Matrix4 result;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
        {
            float sum = 0.0f;
            for (int k = 0; k < 4; ++k)
                sum += m[r][k] * other.m[k][c];
            result.m[r][c] = sum;
        }
    return result;
}

bool Matrix4::NearlyEquals(const Matrix4& other, float tolerance) const
{
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            if (!(std::fabs(m[r][c] - other.m[r][c]) <= tolerance))
                return false;
    return true;
}

Matrix4 Matrix4::Transposed() const
{
    Matrix4 result;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            result.m[r][c] = m[c][r];
    return result;
}

namespace
{
// The 2 by 2 minors of the lower and upper halves, shared by the determinant and the inverse.
struct Minors
{
    float s0, s1, s2, s3, s4, s5, c0, c1, c2, c3, c4, c5;
    explicit Minors(const float (&a)[4][4])
    {
        s0 = a[0][0] * a[1][1] - a[1][0] * a[0][1];
        s1 = a[0][0] * a[1][2] - a[1][0] * a[0][2];
        s2 = a[0][0] * a[1][3] - a[1][0] * a[0][3];
        s3 = a[0][1] * a[1][2] - a[1][1] * a[0][2];
        s4 = a[0][1] * a[1][3] - a[1][1] * a[0][3];
        s5 = a[0][2] * a[1][3] - a[1][2] * a[0][3];
        c5 = a[2][2] * a[3][3] - a[3][2] * a[2][3];
        c4 = a[2][1] * a[3][3] - a[3][1] * a[2][3];
        c3 = a[2][1] * a[3][2] - a[3][1] * a[2][2];
        c2 = a[2][0] * a[3][3] - a[3][0] * a[2][3];
        c1 = a[2][0] * a[3][2] - a[3][0] * a[2][2];
        c0 = a[2][0] * a[3][1] - a[3][0] * a[2][1];
    }
    float Determinant() const { return s0 * c5 - s1 * c4 + s2 * c3 + s3 * c2 - s4 * c1 + s5 * c0; }
};
}

float Matrix4::Determinant() const
{
    return Minors(m).Determinant();
}

Matrix4 Matrix4::Inverse() const
{
    const Minors n(m);
    const float det = n.Determinant();
    if (det == 0.0f || !std::isfinite(det))
        return Matrix4();
    const float k = 1.0f / det;
    const auto& a = m;
    Matrix4 b;
    b.m[0][0] = (a[1][1] * n.c5 - a[1][2] * n.c4 + a[1][3] * n.c3) * k;
    b.m[0][1] = (-a[0][1] * n.c5 + a[0][2] * n.c4 - a[0][3] * n.c3) * k;
    b.m[0][2] = (a[3][1] * n.s5 - a[3][2] * n.s4 + a[3][3] * n.s3) * k;
    b.m[0][3] = (-a[2][1] * n.s5 + a[2][2] * n.s4 - a[2][3] * n.s3) * k;
    b.m[1][0] = (-a[1][0] * n.c5 + a[1][2] * n.c2 - a[1][3] * n.c1) * k;
    b.m[1][1] = (a[0][0] * n.c5 - a[0][2] * n.c2 + a[0][3] * n.c1) * k;
    b.m[1][2] = (-a[3][0] * n.s5 + a[3][2] * n.s2 - a[3][3] * n.s1) * k;
    b.m[1][3] = (a[2][0] * n.s5 - a[2][2] * n.s2 + a[2][3] * n.s1) * k;
    b.m[2][0] = (a[1][0] * n.c4 - a[1][1] * n.c2 + a[1][3] * n.c0) * k;
    b.m[2][1] = (-a[0][0] * n.c4 + a[0][1] * n.c2 - a[0][3] * n.c0) * k;
    b.m[2][2] = (a[3][0] * n.s4 - a[3][1] * n.s2 + a[3][3] * n.s0) * k;
    b.m[2][3] = (-a[2][0] * n.s4 + a[2][1] * n.s2 - a[2][3] * n.s0) * k;
    b.m[3][0] = (-a[1][0] * n.c3 + a[1][1] * n.c1 - a[1][2] * n.c0) * k;
    b.m[3][1] = (a[0][0] * n.c3 - a[0][1] * n.c1 + a[0][2] * n.c0) * k;
    b.m[3][2] = (-a[3][0] * n.s3 + a[3][1] * n.s1 - a[3][2] * n.s0) * k;
    b.m[3][3] = (a[2][0] * n.s3 - a[2][1] * n.s1 + a[2][2] * n.s0) * k;
    return b;
}

void Matrix4::TransformRow(const float in[4], float out[4]) const
{
    for (int c = 0; c < 4; ++c)
        out[c] = in[0] * m[0][c] + in[1] * m[1][c] + in[2] * m[2][c] + in[3] * m[3][c];
}

void Matrix4::Std140Layout(float out[16]) const
{
    for (int c = 0; c < 4; ++c)
        for (int r = 0; r < 4; ++r)
            out[c * 4 + r] = m[r][c];
}
}
