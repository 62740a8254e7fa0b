// Math::Matrix4: a 4 by 4 float matrix held row-major, m[row][column], for
// transforms that multiply row vectors from the left (p * M), so that A * B
// applies A first. The graphics side writes it into uniform blocks with
// Std140Layout, which stores the columns one after another: GLSL's default
// column-major mat4 then reads back this same matrix.
#pragma once

namespace Math
{
class Matrix4
{
public:
    // The identity matrix.
    Matrix4();
    // The matrix of the sixteen values given row by row.
    Matrix4(float m00, float m01, float m02, float m03, float m10, float m11, float m12, float m13, float m20,
            float m21, float m22, float m23, float m30, float m31, float m32, float m33);

    // The identity matrix.
    static Matrix4 Identity() { return Matrix4(); }
    // A translation by (x, y, z) for row vectors: the offsets stand in the last row.
    static Matrix4 Translation(float x, float y, float z);

    // This matrix times another (this applied first to a row vector).
    Matrix4 operator*(const Matrix4& other) const;
    // True when every entry equals the other's within `tolerance`.
    bool NearlyEquals(const Matrix4& other, float tolerance = 1e-5f) const;
    // The transposed matrix.
    Matrix4 Transposed() const;
    // The inverse; a matrix that has none (determinant 0) gives the identity.
    Matrix4 Inverse() const;
    // The determinant.
    float Determinant() const;
    // The row vector (x, y, z, w) times this matrix, written into out[4].
    void TransformRow(const float in[4], float out[4]) const;
    // Writes the sixteen floats as a std140 uniform block's mat4 wants them: column after column,
    // that is, the transposed matrix row by row.
    void Std140Layout(float out[16]) const;

    // The entries, m[row][column].
    float m[4][4];
};
}
