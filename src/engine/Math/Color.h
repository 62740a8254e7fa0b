// Math::Color: a colour as four floats r, g, b and a (alpha), all 0 by
// default, usually in [0, 1] but not clamped. Colours add and subtract
// component-wise and scale by a float. Comparisons are component-wise: ==
// within kEqualTolerance, < and <= only when they hold in every component.
#pragma once

namespace Math
{
class Color
{
public:
    // Transparent black, (0, 0, 0, 0).
    Color() = default;
    // The colour (r_, g_, b_, a_).
    Color(float r_, float g_, float b_, float a_) : r(r_), g(g_), b(b_), a(a_) {}
    // Virtual so that the type can be reflected as a value type.
    virtual ~Color() = default;
    // Copies another colour.
    Color(const Color&) = default;
    // Copies another colour's components into this one.
    Color& operator=(const Color&) = default;

    // True if any component is NaN.
    bool IsNAN() const;
    // At the first NaN component, breaks into an attached debugger; otherwise nothing.
    void BreakOnNAN() const;
    // Sets every component to 0.
    void Zero();
    // Writes "Color(%f,%f,%f%f)" to standard output, with no newline; the last
    // two numbers are not separated by a comma.
    void Print() const;

    // True when every component differs by at most kEqualTolerance.
    bool operator==(const Color& other) const;
    // The component-wise difference.
    Color operator-(const Color& other) const;
    // Each component multiplied by a scalar.
    Color operator*(float scalar) const;
    // Each component divided by a scalar.
    Color operator/(float scalar) const;
    // The component-wise sum.
    Color operator+(const Color& other) const;
    // True when every component is less than the other's.
    bool operator<(const Color& other) const;
    // True when every component is less than or equal to the other's.
    bool operator<=(const Color& other) const;

    // Red.
    float r = 0.0f;
    // Green.
    float g = 0.0f;
    // Blue.
    float b = 0.0f;
    // Alpha (opacity).
    float a = 0.0f;
};
}
