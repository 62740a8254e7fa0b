// Registered types with members of every value form the text format knows, for
// the serializer's tests and its fuzz target.
#pragma once

#include "engine/Component.h"
#include "engine/Math/Color.h"
#include "engine/Math/Point2D.h"
#include "engine/Math/Point3D.h"
#include "engine/Math/Point4D.h"
#include "engine/Math/Quaternion.h"
#include "engine/Math/Vector2D.h"
#include "engine/Math/Vector3D.h"
#include "engine/Math/Vector4D.h"

#include <deque>
#include <list>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

// A blend mode, standing for any registered enumeration.
enum class SampleMode
{
    Opaque = 0,
    Additive = 1,
    Multiply = 2
};

// A plain reflected class, stored by value inside another.
class SampleInner
{
public:
    virtual ~SampleInner() = default;
    bool operator==(const SampleInner& other) const
    {
        return m_Count == other.m_Count && m_Label == other.m_Label && m_Offset == other.m_Offset;
    }
    bool operator<(const SampleInner& other) const { return m_Count < other.m_Count; }

    int m_Count = 1;
    std::string m_Label = "inner";
    Math::Vector2D m_Offset;
};

// A component with a member of every value form, a property with a counting
// setter, a read-only property and a member that isn't saved.
class AllForms : public Component
{
public:
    Component* Clone() const override { return new AllForms(*this); }
    Meta::Data* GetMeta() const override;

    float GetRadius() const { return m_Radius; }
    void SetRadius(float radius)
    {
        m_Radius = radius;
        ++m_RadiusSets;
    }
    float GetArea() const { return m_Radius * m_Radius * 3.14159f; }

    int m_Int = 0;
    unsigned m_Unsigned = 0;
    short m_Short = 0;
    unsigned short m_UShort = 0;
    float m_Float = 0.0f;
    double m_Double = 0.0;
    bool m_Bool = false;
    char m_Char = 'a';
    unsigned char m_UChar = 'b';
    std::string m_Text;
    SampleMode m_Mode = SampleMode::Opaque;
    Math::Vector2D m_Vector2;
    Math::Vector3D m_Vector3;
    Math::Vector4D m_Vector4;
    Math::Point2D m_Point2;
    Math::Point3D m_Point3;
    Math::Point4D m_Point4;
    Math::Quaternion m_Rotation;
    Math::Color m_Tint;
    std::pair<int, std::string> m_PairTest{0, ""};
    std::vector<int> m_Sizes;
    std::list<std::string> m_Names;
    std::deque<float> m_Weights;
    std::vector<SampleMode> m_Modes;
    std::vector<std::vector<int>> m_Grid;
    std::set<int> m_Ids;
    std::multiset<std::string> m_Words;
    std::unordered_set<int> m_Flags;
    std::map<std::string, int> m_Scores;
    std::multimap<int, float> m_Samples;
    std::unordered_map<std::string, Math::Vector3D> m_Places;
    SampleInner m_Inner;
    std::vector<SampleInner> m_Inners;
    int m_Secret = 0;
    float m_Radius = 1.0f;
    int m_RadiusSets = 0;
};

// A component derived from AllForms, to check that base members are found and written after its own.
class MoreForms : public AllForms
{
public:
    Component* Clone() const override { return new MoreForms(*this); }
    Meta::Data* GetMeta() const override;

    int GetExtra() const { return m_Extra; }
    void SetExtra(int extra)
    {
        m_Extra = extra;
        ++m_ExtraSets;
    }

    // Registered both as a member and as a property of the same name.
    int m_Extra = 0;
    int m_ExtraSets = 0;
};

// A class registered without deriving from Component, though it is one in C++.
class Unparented : public Component
{
public:
    Component* Clone() const override { return new Unparented(*this); }
    Meta::Data* GetMeta() const override;

    int m_Value = 0;
};

// Reads `input` into a MoreForms and writes the result back, as the reader's fuzz
// target does: the first byte's low bit sets the tolerant-read flag, the rest is the text.
void ReadAndWriteBack(const std::string& input);
