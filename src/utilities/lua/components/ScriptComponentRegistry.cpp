// Registration of the script component types: every ".lua" file of
// "LuaScripts/Components/" becomes a type with a prototype component, its
// variables and dependencies read from the script's "--[[!" block, and the
// names of its functions noted for completion lists and generated docs.
#include "engine/EventManager.h"
#include "engine/Files.h"
#include "engine/GameObject.h"
#include "engine/Log.h"
#include "utilities/Meta/Data.h"
#include "utilities/Serialization/Serializer.h"
#include "utilities/lua/LuaScript.h"
#include "utilities/lua/LuaSystem.h"
#include "utilities/lua/components/LuaComponent.h"
#include "utilities/lua/components/LuaProperty.h"
#include "utilities/lua/components/ScriptComponentType.h"
#include "utilities/lua/components/ScriptVariableMember.h"

#include <algorithm>
#include <cctype>
#include <fstream>

namespace
{
// Declares variable `name` of type `typeName` in `prototype`, its default read from `reader`; false
// (reported) when the type is unknown or the default doesn't read.
bool RegisterVariable(LuaComponent& prototype, const std::string& typeName, const std::string& name,
                      Util::Serializer& reader, const std::string& path)
{
    const LuaProperty* property = LuaProperty::Find(typeName);
    if (!property)
    {
        FATAL_ERROR_IN("LuaSystem::RegisterScriptVariables",
                       typeName + " is not a data type or is not registered!\nFile: " + path);
        reader.SkipValue();
        return false;
    }
    Meta::Any value;
    property->MakeDefault(value);
    property->Deserialize(reader, value);
    if (reader.m_Stream.fail())
    {
        reader.m_Stream.clear();
        FATAL_ERROR_IN("LuaSystem::RegisterScriptVariables",
                       "Failed to deserialize from file.  Wrong default value given.\nFile: " + path +
                           "\nVariable: " + name + "\n");
    }

    Meta::Data* component = Meta::Get<LuaComponent>();
    if (!component->m_Members.Find(name))
        component->AddMember(new ScriptVariableMember(name, property->m_Type));

    ScriptComponentType& type = *prototype.m_VariableInfo;
    const unsigned hash = Engine::HashName(name);
    if (type.Find(hash))
        return false;  // declared twice: the first declaration stands
    type.variables[hash] = {static_cast<unsigned>(prototype.m_Values.size()), property};
    type.names[hash] = name;
    type.order.push_back(hash);
    prototype.m_Values.push_back(std::move(value));
    return true;
}

// Reads the "--[[!" block of the script at `path` into `prototype`; a script without one has no
// variables.
void ReadVariableBlock(LuaComponent& prototype, const std::string& path)
{
    std::ifstream file(path);
    if (!file)
        return;
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const std::string marker = "--[[!";
    const std::size_t at = text.find(marker);
    if (at == std::string::npos)
        return;
    Util::Serializer reader;
    reader.OpenText(text.substr(at + marker.size()), path);

    std::string token;
    reader.m_Stream >> token;
    while (token != "]]" && reader.m_Stream.good())
    {
        if (token == "Dependency")
        {
            std::string dependency;
            reader.m_Stream >> dependency;
            if (dependency.empty())
                FATAL_ERROR_IN("LuaSystem::RegisterScriptVariables", "No name given for the dependency!\nFile: " + path);
            else
                prototype.m_VariableInfo->dependencies.push_back(dependency);
        }
        else
        {
            std::string name;
            reader.m_Stream >> name;
            RegisterVariable(prototype, token, name, reader, path);
        }
        token.clear();
        reader.m_Stream >> token;
    }
    if (token != "]]")
        FATAL_ERROR_IN("LuaSystem::RegisterScriptVariables", path + " did not contain the end to the variable block.");
}

// Notes the name of each function the script at `path` defines ("function Name(" lines).
void ScanFunctions(ScriptComponentType& type, const std::string& path)
{
    std::ifstream file(path);
    std::string line;
    while (std::getline(file, line))
    {
        std::size_t at = line.find("function ");
        if (at == std::string::npos)
            continue;
        at += 9;
        while (at < line.size() && line[at] == ' ')
            ++at;
        std::size_t end = at;
        while (end < line.size() && (std::isalnum(static_cast<unsigned char>(line[end])) || line[end] == '_' ||
                                     line[end] == '.' || line[end] == ':'))
            ++end;
        if (end > at)
            type.functions.push_back(line.substr(at, end - at));
    }
}
}

void LuaSystem::RegisterScriptComponents()
{
    const std::string folder = Util::GetDataDirectory() + "LuaScripts/Components/";
    std::vector<std::string> listed;
    std::vector<std::string> scripts;
    Util::ListFiles(folder, listed, true);
    Util::FilterByExtension(listed, ".lua", scripts);
    std::sort(scripts.begin(), scripts.end());
    for (const std::string& path : scripts)
    {
        std::string name = Util::GetFileName(path);
        name = name.substr(0, name.rfind('.'));
        auto prototype = std::make_shared<LuaComponent>();
        m_ComponentPrototypes[name] = prototype;
        prototype->m_TypeId = Meta::TakeTypeId();
        prototype->m_ScriptName = name;
        prototype->m_FilePath = path;
        prototype->m_System = this;
        GameObject::RegisterLuaComponentName(name, Meta::Get<LuaComponent>());

        ScriptComponentType& type = ScriptComponentTypeOf(name);
        type = ScriptComponentType();
        prototype->m_VariableInfo = &type;
        ReadVariableBlock(*prototype, path);
        ScanFunctions(type, path);
    }
}

LuaComponent* LuaSystem::FindComponentPrototype(const std::string& name) const
{
    const auto found = m_ComponentPrototypes.find(name);
    return found == m_ComponentPrototypes.end() ? nullptr : found->second.get();
}

LuaComponent* LuaSystem::MakeScriptComponent(const std::string& name)
{
    const std::vector<LuaSystem*>& open = OpenSystems();
    for (auto system = open.rbegin(); system != open.rend(); ++system)
        if (LuaComponent* prototype = (*system)->FindComponentPrototype(name))
            return static_cast<LuaComponent*>(prototype->Clone());
    return nullptr;
}
