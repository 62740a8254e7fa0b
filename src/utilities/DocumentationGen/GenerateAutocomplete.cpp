#include "utilities/DocumentationGen/GenerateAutocomplete.h"

#include "engine/Log.h"
#include "utilities/Meta/Data.h"
#include "utilities/Meta/EnumMeta.h"
#include "utilities/Meta/Method.h"
#include "utilities/Meta/Property.h"
#include "utilities/lua/luabridge/Operators.h"

#include <filesystem>
#include <fstream>
#include <set>
#include <system_error>

namespace DocGen
{
namespace
{
bool IsPlainLuaName(const std::string& name)
{
    static const std::set<std::string> keywords = {"and",  "break", "do",  "else", "elseif", "end",
                                                   "false", "for",  "function", "goto", "if", "in",
                                                   "local", "nil",  "not", "or",   "repeat", "return",
                                                   "then",  "true", "until", "while"};
    if (name.empty() || keywords.count(name) || (name[0] >= '0' && name[0] <= '9'))
        return false;
    for (char c : name)
        if (!((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_'))
            return false;
    return true;
}

// The name as a table key: bare when it is a plain Lua name, otherwise ["name"].
std::string Key(const std::string& name)
{
    if (IsPlainLuaName(name))
        return name;
    std::string quoted = "[\"";
    for (char c : name)
    {
        if (c == '"' || c == '\\')
            quoted += '\\';
        if (c == '\n')
        {
            quoted += "\\n";
            continue;
        }
        quoted += c;
    }
    return quoted + "\"]";
}

void Entry(std::string& text, const std::string& name, const char* kind)
{
    text += Key(name) + " = {\n" + "type = \"" + kind + "\"\n" + "},\n";
}

void WriteClass(std::string& text, const Meta::Data& type)
{
    text += Key(type.m_Name) + " = {\n" + "type = \"class\",\n" + "childs = {\n";
    std::set<std::string> methods;
    for (const auto& [name, method] : type.m_Methods.Items())
        methods.insert(luabridge::LuaNameOf(name));
    for (const auto& [name, forms] : type.m_Overloads.Items())
        methods.insert(luabridge::LuaNameOf(name));
    for (const std::string& name : methods)
        if (name.compare(0, 8, "operator") != 0)
            Entry(text, name, "method");
    for (const auto& [name, member] : type.m_Members.Items())
        Entry(text, name, "value");
    for (const auto& [name, property] : type.m_Properties.Items())
        if (name != Meta::kNewPropertyName)
            Entry(text, name, "value");
    if (type.m_IsEnum)
        if (const auto* values = Meta::EnumMeta::GetValues(type.m_Name))
            for (const auto& [name, value] : *values)
                Entry(text, name, "value");
    text += "},\n},\n\n";
}
}

std::string AutocompleteText()
{
    std::string text = "return {\n";
    for (const Meta::Data* type : Meta::AllTypes())
    {
        if (!type || !type->IsRegistered() || type->m_IsPrimitive || type->m_Name.empty() ||
            type->m_Name.find(' ') != std::string::npos)
            continue;
        WriteClass(text, *type);
    }
    text += "owner = { type = \"value\", valuetype=\"GameObject\"},\n";
    text += "}\n";
    return text;
}
}

bool GenerateAutocomplete(const std::string& path)
{
    std::error_code error;
    const std::filesystem::path parent = std::filesystem::path(path).parent_path();
    if (!parent.empty())
        std::filesystem::create_directories(parent, error);
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (!file)
    {
        LOG("ERROR", "Could not write the autocomplete file \"" + path + "\".");
        return false;
    }
    file << DocGen::AutocompleteText();
    file.close();
    if (!file)
    {
        LOG("ERROR", "Could not write the autocomplete file \"" + path + "\".");
        return false;
    }
    LOG("Info", "Autocomplete written to \"" + path + "\".");
    return true;
}
