#include "Graphics_Engine/ShaderIncludes.h"

#include "engine/Log.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace Graphics
{
namespace
{
constexpr int kMaxIncludeDepth = 32;

// The requested name of an `#include` line, in `requested`: 1 for a well formed directive, 0 for
// a line that is no include, -1 for an include of a kind that is neither "name" nor <name>.
int IncludeRequest(const std::string& line, std::string& requested)
{
    std::size_t i = line.find_first_not_of(" \t");
    if (i == std::string::npos || line[i] != '#')
        return 0;
    i = line.find_first_not_of(" \t", i + 1);
    if (i == std::string::npos || line.compare(i, 7, "include") != 0)
        return 0;
    i = line.find_first_not_of(" \t\r", i + 7);
    if (i == std::string::npos)
        return -1;
    const char close = line[i] == '"' ? '"' : line[i] == '<' ? '>' : '\0';
    if (close == '\0')
        return -1;
    const std::size_t end = line.find(close, i + 1);
    if (end == std::string::npos || end == i + 1)
        return -1;
    requested = line.substr(i + 1, end - i - 1);
    std::replace(requested.begin(), requested.end(), '\\', '/');
    return 1;
}

bool ReadWhole(const std::string& path, std::string& text)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return false;
    std::ostringstream bytes;
    bytes << file.rdbuf();
    text = bytes.str();
    return static_cast<bool>(file) || file.eof();
}

class Expander
{
public:
    Expander(const std::string& name, const std::string& folder) : m_Name(name), m_Folder(folder) {}

    void Expand(const std::string& source, int sourceNumber, std::vector<std::string>& stack, std::string& out)
    {
        std::size_t position = 0;
        unsigned lineNumber = 0;
        while (position < source.size())
        {
            std::size_t end = source.find('\n', position);
            if (end == std::string::npos)
                end = source.size();
            const std::string line = source.substr(position, end - position);
            position = end + 1;
            ++lineNumber;
            // A "#line N" written by the description preprocessor moves the count along.
            if (line.rfind("#line ", 0) == 0)
                lineNumber = static_cast<unsigned>(std::strtoul(line.c_str() + 6, nullptr, 10)) - 1;
            std::string requested;
            const int kind = IncludeRequest(line, requested);
            if (kind == 0)
            {
                out += line;
                out += '\n';
                continue;
            }
            if (kind < 0)
            {
                m_Result.Ok = false;
                ERROR_REPORT("I have no idea what happened.");
                out += '\n';
                continue;
            }
            Include(requested, lineNumber, sourceNumber, stack, out);
        }
    }

    ExpandedShaderSource m_Result;

private:
    void Include(const std::string& requested, unsigned lineNumber, int sourceNumber,
                 std::vector<std::string>& stack, std::string& out)
    {
        const std::string path = m_Folder + requested;
        if (std::find(stack.begin(), stack.end(), path) != stack.end() ||
            static_cast<int>(stack.size()) >= kMaxIncludeDepth)
        {
            out += '\n';
            return;
        }
        std::string text;
        if (!ReadWhole(path, text))
        {
            m_Result.Ok = false;
            ERROR_REPORT("Error Compiling " + m_Name + "\nErrors: cannot open include file \"" + requested + "\"");
            out += '\n';
            return;
        }
        auto known = std::find(m_Result.Included.begin(), m_Result.Included.end(), path);
        if (known == m_Result.Included.end())
            known = m_Result.Included.insert(m_Result.Included.end(), path);
        const int number = static_cast<int>(known - m_Result.Included.begin()) + 1;
        out += "#line 1 " + std::to_string(number) + "\n";
        stack.push_back(path);
        Expand(text, number, stack, out);
        stack.pop_back();
        out += "#line " + std::to_string(lineNumber + 1) + " " + std::to_string(sourceNumber) + "\n";
    }

    std::string m_Name;
    std::string m_Folder;
};
}

ExpandedShaderSource ExpandShaderIncludes(const std::string& source, const std::string& name,
                                          const std::string& folder)
{
    Expander expander(name, folder);
    std::vector<std::string> stack;
    std::string text;
    expander.Expand(source, 0, stack, text);
    expander.m_Result.Text = std::move(text);
    return std::move(expander.m_Result);
}

std::string WithVersionLine(const std::string& source)
{
    const std::size_t first = source.find_first_not_of(" \t");
    if (first != std::string::npos && source.compare(first, 8, "#version") == 0)
        return source;
    return "#version 450 core\n#line 1\n" + source;
}
}
