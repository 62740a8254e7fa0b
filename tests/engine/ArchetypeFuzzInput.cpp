#include "engine/ArchetypeFuzzInput.h"

#include "engine/ArchetypeManager.h"
#include "utilities/Serialization/Serializer.h"
#include "utilities/Serialization/TextSamples.h"

#include <memory>

void ReadComponentListAndWriteBack(const std::string& input)
{
    if (input.empty())
        return;
    Util::SetTolerantRead((input[0] & 1) != 0);
    const bool asInstance = (input[0] & 2) != 0;

    GameObject archetype;
    archetype.m_Name = "Sample";
    archetype.AddComponentUninitialized("Transform");
    archetype.AddComponentUninitialized("Hierarchy");
    archetype.AppendComponent(new MoreForms());
    std::unique_ptr<GameObject> object(asInstance ? archetype.Clone() : new GameObject());

    Util::Serializer reader;
    reader.OpenText(input.substr(1), "fuzz.txt");
    Engine::ArchetypeManager::AddComponentsFromStream(object.get(), reader);

    Util::Serializer writer;
    writer.OpenText("");
    Engine::ArchetypeManager::WriteObject(writer, object.get(), asInstance ? &archetype : nullptr);
    Util::SetTolerantRead(false);
}
