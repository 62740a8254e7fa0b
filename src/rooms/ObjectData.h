// ObjectData: the objects placed in a room, kept as prototypes outside any
// space until the room is built. It owns them: a copy clones every object.
//
// Its text form is a block of objects, each its archetype's name and a block
// of what the object changed with respect to that archetype:
//
//   Objects {
//   EmberCrawler
//   {
//     Transform
//     {
//       Position { 3 0 -2 }
//     }
//   }
//   }
#pragma once

#include "utilities/Serialization/TextValue.h"

#include <vector>

class GameObject;

class ObjectData
{
public:
    // No objects.
    ObjectData() = default;
    // Deletes the objects.
    ~ObjectData();
    // Clones every object of `other`.
    ObjectData(const ObjectData& other);
    // Deletes the objects held and clones every object of `other`.
    ObjectData& operator=(const ObjectData& other);

    // The placed objects, in file order; script-visible.
    std::vector<GameObject*>& GetObjectList() { return m_Objects; }
    // The placed objects, in file order.
    const std::vector<GameObject*>& GetObjectList() const { return m_Objects; }
    // Takes ownership of `object` and appends it; null is ignored.
    void Add(GameObject* object);
    // Deletes every object.
    void Clear();

    // The same objects: only a list compares equal with itself.
    bool operator==(const ObjectData& other) const { return m_Objects == other.m_Objects; }

private:
    std::vector<GameObject*> m_Objects;
};

namespace Util
{
// Writes each object's archetype name and its differences from the archetype, in a brace block.
template <>
void WriteValue<ObjectData>(Serializer& serializer, const ObjectData& value);
// Reads a block of objects, replacing those held (the reader lives in Room.cpp).
template <>
void ReadValue<ObjectData>(Serializer& serializer, ObjectData& value);
}
