#include "utilities/Serialization/TextValue.h"

#include "engine/Log.h"
#include "engine/Math/Color.h"
#include "engine/Math/Point2D.h"
#include "engine/Math/Point3D.h"
#include "engine/Math/Point4D.h"
#include "engine/Math/Quaternion.h"
#include "engine/Math/Vector2D.h"
#include "engine/Math/Vector3D.h"
#include "engine/Math/Vector4D.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace Util
{
namespace
{
// What a colour channel read from a file is multiplied by.
constexpr float kChannelScale = 0.003921569f;

// Writes "{ a b c }".
void WriteFloats(Serializer& serializer, std::initializer_list<float> values)
{
    serializer.m_Stream << '{';
    for (float value : values)
        serializer.m_Stream << ' ' << value;
    serializer.m_Stream << " }";
}

// Reads "{ a b c }" into the given floats.
void ReadFloats(Serializer& serializer, std::initializer_list<float*> values)
{
    serializer.ReadUntil('{');
    for (float* value : values)
        serializer.m_Stream >> *value;
    serializer.ReadUntil('}');
}

// A channel as a file has it: times 255, floored.
float ChannelToFile(float channel)
{
    return std::floor(channel * 255.0f);
}

// A channel read from a file: floored, scaled to [0, 1] and clamped.
float ChannelFromFile(float number)
{
    return std::clamp(std::floor(number) * kChannelScale, 0.0f, 1.0f);
}
}

void WriteValue(Serializer& serializer, int value) { serializer.m_Stream << value; }
void WriteValue(Serializer& serializer, unsigned value) { serializer.m_Stream << value; }
void WriteValue(Serializer& serializer, short value) { serializer.m_Stream << value; }
void WriteValue(Serializer& serializer, unsigned short value) { serializer.m_Stream << value; }
void WriteValue(Serializer& serializer, float value) { serializer.m_Stream << value; }
void WriteValue(Serializer& serializer, double value) { serializer.m_Stream << value; }
void WriteValue(Serializer& serializer, bool value) { serializer.m_Stream << value; }
void WriteValue(Serializer& serializer, char value) { serializer.m_Stream << value; }
void WriteValue(Serializer& serializer, unsigned char value) { serializer.m_Stream << value; }
void WriteValue(Serializer& serializer, const std::string& value) { serializer.m_Stream << '"' << value << '"'; }

void WriteValue(Serializer& serializer, const Math::Vector2D& value) { WriteFloats(serializer, {value.x, value.y}); }
void WriteValue(Serializer& serializer, const Math::Point2D& value) { WriteFloats(serializer, {value.x, value.y}); }
void WriteValue(Serializer& serializer, const Math::Vector3D& value)
{
    WriteFloats(serializer, {value.x, value.y, value.z});
}
void WriteValue(Serializer& serializer, const Math::Point3D& value)
{
    WriteFloats(serializer, {value.x, value.y, value.z});
}
void WriteValue(Serializer& serializer, const Math::Vector4D& value)
{
    WriteFloats(serializer, {value.x, value.y, value.z, value.w});
}
void WriteValue(Serializer& serializer, const Math::Point4D& value)
{
    WriteFloats(serializer, {value.x, value.y, value.z, value.w});
}
void WriteValue(Serializer& serializer, const Math::Quaternion& value)
{
    WriteFloats(serializer, {value.x, value.y, value.z, value.w});
}
void WriteValue(Serializer& serializer, const Math::Color& value)
{
    WriteFloats(serializer, {ChannelToFile(value.r), ChannelToFile(value.g), ChannelToFile(value.b),
                             ChannelToFile(value.a)});
}

void ReadValue(Serializer& serializer, int& value) { serializer.m_Stream >> value; }
void ReadValue(Serializer& serializer, unsigned& value) { serializer.m_Stream >> value; }
void ReadValue(Serializer& serializer, short& value) { serializer.m_Stream >> value; }
void ReadValue(Serializer& serializer, unsigned short& value) { serializer.m_Stream >> value; }
void ReadValue(Serializer& serializer, float& value) { serializer.m_Stream >> value; }
void ReadValue(Serializer& serializer, double& value) { serializer.m_Stream >> value; }
void ReadValue(Serializer& serializer, bool& value) { serializer.m_Stream >> value; }
void ReadValue(Serializer& serializer, char& value) { serializer.m_Stream >> value; }
void ReadValue(Serializer& serializer, unsigned char& value) { serializer.m_Stream >> value; }
void ReadValue(Serializer& serializer, std::string& value) { serializer.ReadStringHelper(value); }

void ReadValue(Serializer& serializer, Math::Vector2D& value) { ReadFloats(serializer, {&value.x, &value.y}); }
void ReadValue(Serializer& serializer, Math::Point2D& value) { ReadFloats(serializer, {&value.x, &value.y}); }
void ReadValue(Serializer& serializer, Math::Vector3D& value)
{
    ReadFloats(serializer, {&value.x, &value.y, &value.z});
}
void ReadValue(Serializer& serializer, Math::Point3D& value)
{
    ReadFloats(serializer, {&value.x, &value.y, &value.z});
}
void ReadValue(Serializer& serializer, Math::Vector4D& value)
{
    ReadFloats(serializer, {&value.x, &value.y, &value.z, &value.w});
}
void ReadValue(Serializer& serializer, Math::Point4D& value)
{
    ReadFloats(serializer, {&value.x, &value.y, &value.z, &value.w});
}
void ReadValue(Serializer& serializer, Math::Quaternion& value)
{
    ReadFloats(serializer, {&value.x, &value.y, &value.z, &value.w});
}
void ReadValue(Serializer& serializer, Math::Color& value)
{
    float numbers[4] = {};
    ReadFloats(serializer, {&numbers[0], &numbers[1], &numbers[2], &numbers[3]});
    value = Math::Color(ChannelFromFile(numbers[0]), ChannelFromFile(numbers[1]), ChannelFromFile(numbers[2]),
                        ChannelFromFile(numbers[3]));
}

void WriteEnum(Serializer& serializer, const std::string& typeName, int value)
{
    serializer.m_Stream << Meta::EnumMeta::GetEnumName(typeName, value);
}

int ReadEnum(Serializer& serializer, const std::string& typeName)
{
    std::string name;
    if (!(serializer.m_Stream >> name))
        return 0;
    // Enums may stand in lists: the comma is left for the list reader.
    if (!name.empty() && name.back() == ',')
    {
        name.pop_back();
        serializer.PutBack(1);
    }
    return Meta::EnumMeta::GetEnum(typeName, name);
}

bool BeginContainer(Serializer& serializer)
{
    if (!serializer.ReadUntil('{'))
        return false;
    int next = serializer.m_Stream.get();
    while (IsBlank(next))
        next = serializer.m_Stream.get();
    if (next == '}' || next == std::char_traits<char>::eof())
        return false;
    serializer.PutBack(1);
    return true;
}

bool NextElement(Serializer& serializer, ContainerKind kind)
{
    // Looking for the end first lets it end the container without failing the read.
    std::iostream& in = serializer.m_Stream;
    while (!in.eof() && in.peek() != std::char_traits<char>::eof())
    {
        const int c = in.get();
        if (c == '}')
            return false;
        if (c == ',')
            return true;
        if (IsBlank(c))
            continue;
        if (kind == ContainerKind::List)
            FATAL_ERROR_IN("Util::ReadStreamContainerHelper", "Missing seperator in list! \nFile:  " + serializer.m_FileName);
        else
            FATAL_ERROR_IN("Util::ReadTreeHelper", "Missing seperator in container! \nFile:  " + serializer.m_FileName);
    }
    return false;
}
}
