// The placed objects' ownership and their writer; the reader, whose messages
// belong to the room file, is in Room.cpp.
#include "rooms/ObjectData.h"

#include "engine/ArchetypeManager.h"
#include "engine/GameObject.h"
#include "utilities/Serialization/Serializer.h"

ObjectData::~ObjectData()
{
    Clear();
}

ObjectData::ObjectData(const ObjectData& other)
{
    for (const GameObject* object : other.m_Objects)
        m_Objects.push_back(object->Clone());
}

ObjectData& ObjectData::operator=(const ObjectData& other)
{
    if (this == &other)
        return *this;
    Clear();
    for (const GameObject* object : other.m_Objects)
        m_Objects.push_back(object->Clone());
    return *this;
}

void ObjectData::Add(GameObject* object)
{
    if (object)
        m_Objects.push_back(object);
}

void ObjectData::Clear()
{
    for (GameObject* object : m_Objects)
        delete object;
    m_Objects.clear();
}

namespace Util
{
template <>
void WriteValue<ObjectData>(Serializer& serializer, const ObjectData& value)
{
    std::iostream& out = serializer.m_Stream;
    Engine::ArchetypeManager& archetypes = Engine::ArchetypeManager::Get();
    out << "{\n";
    for (const GameObject* object : value.GetObjectList())
    {
        const GameObject* archetype = archetypes.GetArchetype(object->GetArchetype());
        // A file names objects by archetype: one made from none could not be read back.
        if (!archetype)
            continue;
        serializer.WriteIndent();
        out << archetypes.GetArchetypeName(object->GetArchetype()) << '\n';
        serializer.WriteIndent();
        out << "{\n";
        ++serializer.m_Depth;
        Engine::ArchetypeManager::WriteObject(serializer, object, archetype);
        --serializer.m_Depth;
        serializer.WriteIndent();
        out << "}\n";
    }
    serializer.WriteIndent();
    out << '}';
}
}
