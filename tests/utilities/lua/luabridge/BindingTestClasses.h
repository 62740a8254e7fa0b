// Classes registered only for the binding tests: a hierarchy three deep whose
// registrations arrive derived-first, a class with overloads, one with
// dynamic properties, one whose setter declines, and one with read-only and
// static properties.
#pragma once

#include "engine/Math/Vector3D.h"

#include <lua.hpp>

#include <map>
#include <string>

// The root of the three-deep hierarchy.
class BindingRoot
{
public:
    virtual ~BindingRoot() = default;
    // A value of the root.
    float m_RootValue = 1.0f;
    // The name of the class, answered by every level.
    std::string Who() const { return "root"; }
    // Doubles a number.
    float Twice(float value) const { return value * 2.0f; }
};

// The middle of the hierarchy.
class BindingMiddle : public BindingRoot
{
public:
    // A value of the middle.
    int m_MiddleValue = 2;
};

// The leaf of the hierarchy.
class BindingLeaf : public BindingMiddle
{
public:
    BindingLeaf() = default;
    BindingLeaf(float a, float b, float c) : m_Position(a, b, c) {}
    // A value member of a bound class.
    Math::Vector3D m_Position;
    // A float of the leaf.
    float m_LeafValue = 3.0f;
    // Sets the three components of the position.
    void SetPosition(float x, float y, float z) { m_Position = Math::Vector3D(x, y, z); }
    // The leaf's name.
    std::string Who() const { return "leaf"; }
    // A pointer to the leaf itself, for chains.
    BindingLeaf* Self() { return this; }
    // A null pointer to a leaf.
    BindingLeaf* Nobody() { return nullptr; }
    // Length of a vector taken by reference.
    float LengthOf(const Math::Vector3D& vector) const { return vector.Length(); }
};

// A class with an overloaded method and several constructors.
class BindingOverloads
{
public:
    BindingOverloads() = default;
    BindingOverloads(float value) : m_Value(value) {}
    BindingOverloads(const std::string& name) : m_Name(name) {}
    float m_Value = 0.0f;
    std::string m_Name;
    std::string Pick(float) const { return "number"; }
    std::string Pick(const std::string&) const { return "string"; }
    std::string Pick(float, float) const { return "two numbers"; }
    std::string Pick(const Math::Vector3D&) const { return "vector"; }
};

// A class whose scripts may add properties at run time.
class BindingDynamic
{
public:
    // A static float, which a dynamic property of the same name hides.
    float m_Hidden = 5.0f;
    // A float no dynamic property shadows.
    float m_Plain = 6.0f;
    // The dynamic properties set so far.
    std::map<std::string, double> m_Values;
    // Reads a dynamic property: pushes its value, or nil when it has none.
    int GetProperty(lua_State* L, const std::string& name);
    // Writes the value on top of L into a dynamic property.
    int SetProperty(lua_State* L, const std::string& name);
};

// A class derived from the dynamic one, to show that its hook is reached on the way up.
class BindingDynamicChild : public BindingDynamic
{
public:
    // A float of the child.
    float m_Own = 7.0f;
};

// A class with read-only and static properties and a field read through a getter.
class BindingReadOnly
{
public:
    // The fixed answer.
    int GetAnswer() const { return 42; }
    // The health, read and written through accessors.
    float GetHealth() const { return m_Health; }
    void SetHealth(float health) { m_Health = health; }
    float m_Health = 10.0f;
    // The class-wide counter.
    static int s_Counter;
    static int GetCounter() { return s_Counter; }
    static void SetCounter(int value) { s_Counter = value; }
    static int GetLimit() { return 99; }
};

// A named value of the binding tests.
enum class BindingColour
{
    Red = 1,
    Green = 2,
    Blue = 4,
};

// A class whose float lies farther in than the plain float accessors reach.
class BindingFar
{
public:
    // Filler that pushes the float past the first 256 bytes.
    char m_Padding[300] = {};
    // The far float.
    float m_Far = 1.5f;
    // A near float.
    float Near() const { return 0.0f; }
};

// The base of a class bound in a later order.
class BindingEarly
{
public:
    // A float of the base.
    float m_Early = 1.0f;
};

// A class bound in order 1, after every class of order 0.
class BindingLate : public BindingEarly
{
public:
    // A float of its own.
    float m_Late = 2.0f;
};
