#include "utilities/lua/components/ScriptComponentType.h"

#include "engine/EventManager.h"

#include <memory>

const ScriptVariable* ScriptComponentType::Find(unsigned hash) const
{
    const auto found = variables.find(hash);
    return found == variables.end() ? nullptr : &found->second;
}

const ScriptVariable* ScriptComponentType::Find(std::string_view name) const
{
    return Find(Engine::HashName(name));
}

ScriptComponentType& ScriptComponentTypeOf(const std::string& scriptName)
{
    // Records stay where they are for the life of the program: components point at them.
    static auto* types = new std::unordered_map<std::string, std::unique_ptr<ScriptComponentType>>();
    std::unique_ptr<ScriptComponentType>& type = (*types)[scriptName];
    if (!type)
        type = std::make_unique<ScriptComponentType>();
    return *type;
}
