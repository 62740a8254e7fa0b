// The object blocks of the text format: reading a "{ ... }" block of member
// lines into a registered object, and writing components and nested objects.

#include "engine/Component.h"
#include "engine/Log.h"
#include "utilities/Meta/Data.h"
#include "utilities/Meta/Member.h"
#include "utilities/Meta/Property.h"
#include "utilities/Serialization/Serializer.h"

#include <limits>
#include <vector>

namespace Util
{
namespace
{
// Reads the value of the member or property `name` of `object`, or skips it when
// the type has none (reported unless the tolerant-read flag is set).
void ReadNamedValue(Serializer& serializer, const Meta::Data* type, void* object, const std::string& name)
{
    if (Meta::Member* member = type ? type->FindMember(name) : nullptr)
        return member->Deserialize(object, serializer);
    if (Meta::Property* property = type ? type->FindProperty(name) : nullptr)
        return property->Deserialize(object, serializer);
    if (!IsTolerantRead())
        FATAL_ERROR_IN("Util::Serializer::ReadObject", (type ? type->GetName() : std::string()) +
                                                           " does not have a member named " + name + "\nFile:  " +
                                                           serializer.m_FileName);
    // Ignore can't keep an unknown value: there is no reader for it.
    serializer.SkipValue();
}

// What a write saves: members first, then properties, concrete class first.
struct Collected
{
    // Adds the members and properties of `type` itself (not its bases) that differ
    // between `object` and `other`; all of them when `other` is null.
    void Add(const Meta::Data* type, const void* object, const void* other)
    {
        for (const auto& [name, member] : type->m_Members.Items())
            if (!other || !member->Compare(object, other))
                members.push_back(member.get());
        for (const auto& [name, property] : type->m_Properties.Items())
            if (!other || !property->Compare(object, other))
                properties.push_back(property.get());
    }

    std::vector<const Meta::Member*> members;
    std::vector<const Meta::Property*> properties;
};

// Writes "{", the collected lines one level deeper, and "}" without a line end.
void WriteBlock(Serializer& serializer, const Collected& collected, const void* object)
{
    serializer.WriteIndent();
    serializer.m_Stream << "{\n";
    ++serializer.m_Depth;
    for (const Meta::Member* member : collected.members)
        member->Serialize(object, serializer);
    for (const Meta::Property* property : collected.properties)
        property->Serialize(object, serializer);
    --serializer.m_Depth;
    serializer.WriteIndent();
    serializer.m_Stream << '}';
}
}

bool Serializer::ReadObject(const Meta::Data* type, void* object)
{
    if (!EnterNesting())
        return true;
    const bool read = ReadBlock(type, object);
    LeaveNesting();
    return read;
}

bool Serializer::ReadBlock(const Meta::Data* type, void* object)
{
    if (!ReadUntil('{'))
        return false;
    std::string token;
    bool haveToken = false;
    while ((haveToken = static_cast<bool>(m_Stream >> token)) && token.find('}') == std::string::npos)
    {
        if (token.find("//") != std::string::npos)
        {
            m_Stream.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
            continue;
        }
        ReadNamedValue(*this, type, object, token);
        // A value cut short by the end of the input ends the block quietly.
        if (m_Stream.fail() && !m_Stream.eof())
        {
            FATAL_ERROR("Failed to read member.  Make sure to define all members for the member.\nMember: " + token +
                        "\nFile:  " + m_FileName);
            return true;
        }
    }
    // "}}" closes this block and leaves the second brace to the block around it.
    if (haveToken && token != "}")
        PutBack(token.size() - 1);
    return true;
}

void Serializer::Write(const std::string& name, const Component* component, const Component* other, bool force,
                       bool isNew)
{
    Collected collected;
    const Meta::Data* root = Meta::Get<Component>();
    for (const Meta::Data* type = component->GetMeta(); type != root; type = type->m_Parent)
    {
        if (!type)
        {
            FATAL_ERROR("The component " + name +
                        " does not derive from the Component class.\nGo add 'DERIVE(Component)' to the Meta "
                        "Registeration.");
            break;
        }
        collected.Add(type, component, other);
    }
    if (!force && !isNew && collected.members.empty() && collected.properties.empty())
        return;
    WriteIndent();
    m_Stream << name << " \n";
    WriteBlock(*this, collected, component);
    m_Stream << '\n';
}

void Serializer::WriteObjectBlock(const Meta::Data* type, const void* object)
{
    Collected collected;
    for (; type; type = type->m_Parent)
        collected.Add(type, object, nullptr);
    m_Stream << '\n';
    WriteBlock(*this, collected, object);
}
}
