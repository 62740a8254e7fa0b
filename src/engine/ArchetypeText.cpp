// The text of archetype files and room objects: a list of component blocks,
// read into an object (with "~Name { }" removals) and written from one.
#include "engine/ArchetypeManager.h"

#include "engine/Component.h"
#include "engine/Log.h"
#include "utilities/Meta/Data.h"
#include "utilities/Serialization/Serializer.h"
#include "utilities/lua/LuaSystem.h"
#include "utilities/lua/components/LuaComponent.h"

#include <algorithm>
#include <limits>
#include <memory>

namespace Engine
{
namespace
{
// A new, default-made component of the type named `name`: a native component by its type, a script
// component from its script's prototype; null when the name is neither.
Component* MakeDefaultComponent(const std::string& name)
{
    const Meta::Data* type = Meta::FindData(name);
    const Meta::Data* base = Meta::Get<Component>();
    if (type && type != base && type != Meta::Get<LuaComponent>() && type->IsDerivedFrom(base))
        // Components derive from Component alone, so the instance and its base share an address.
        return static_cast<Component*>(type->New());
    return LuaSystem::MakeScriptComponent(name);
}

// True if `object` has a component whose type id is `type`.
bool HasType(const GameObject* object, unsigned type)
{
    return std::any_of(object->m_Components.begin(), object->m_Components.end(),
                       [type](const Component* component) { return component->GetType() == type; });
}

// The first component of `object` whose type id is `type`, or null.
const Component* FindType(const GameObject* object, unsigned type)
{
    for (const Component* component : object->m_Components)
        if (component->GetType() == type)
            return component;
    return nullptr;
}
}

void ArchetypeManager::AddComponentsFromStream(GameObject* object, Util::Serializer& serializer)
{
    std::string token;
    while (serializer.m_Stream.good())
    {
        token.clear();
        serializer.m_Stream >> token;
        const std::size_t comment = token.find("//");
        if (comment == 0)
        {
            serializer.m_Stream.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
            continue;
        }
        if (serializer.m_Stream.fail() || token.empty())
            break;
        const std::size_t brace = token.substr(0, comment).find('}');
        if (brace != std::string::npos)
        {
            // The brace closes the caller's block: it is left on the stream for the caller.
            serializer.PutBack(token.size() - brace);
            break;
        }
        if (comment != std::string::npos)
        {
            // The rest of the line is a comment.
            token.resize(comment);
            serializer.m_Stream.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
        }

        if (token[0] == '~')
        {
            // "~Name{" is read as "~Name {".
            const std::size_t open = token.find('{');
            const std::string name = token.substr(1, open == std::string::npos ? std::string::npos : open - 1);
            if (Component* component = object->GetComponent(name))
                object->RemoveComponent(component);
            if (open == std::string::npos)
                serializer.ReadUntil('{');
            serializer.ReadUntil('}');
            continue;
        }

        Component* component = object->GetComponent(token);
        if (!component)
        {
            component = MakeDefaultComponent(token);
            if (!component)
            {
                if (!Util::IsTolerantRead())
                    FATAL_ERROR("This component does not exist: " + token + "\nFile:  " + serializer.m_FileName);
                serializer.SkipValue();
                continue;
            }
            object->AppendComponent(component);
        }
        serializer.ReadObject(component->GetMeta(), component);
    }
}

void ArchetypeManager::WriteObject(Util::Serializer& serializer, const GameObject* object, const GameObject* reference)
{
    for (const Component* component : object->m_Components)
    {
        const Component* counterpart = reference ? FindType(reference, component->GetType()) : nullptr;
        std::unique_ptr<Component> temporary;
        if (!counterpart)
        {
            temporary.reset(MakeDefaultComponent(component->GetName()));
            counterpart = temporary.get();
        }
        component->Write(serializer, component->GetName(), counterpart, reference == nullptr, temporary != nullptr);
    }
    if (!reference)
        return;
    for (const Component* component : reference->m_Components)
    {
        if (HasType(object, component->GetType()))
            continue;
        serializer.WriteIndent();
        serializer.m_Stream << '~' << component->GetName() << '\n';
        serializer.WriteIndent();
        serializer.m_Stream << "{\n";
        serializer.WriteIndent();
        serializer.m_Stream << "}\n";
    }
}
}
