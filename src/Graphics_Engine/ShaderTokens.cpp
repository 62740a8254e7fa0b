#include "Graphics_Engine/ShaderTokens.h"

namespace Graphics
{
namespace
{
bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r';
}

bool IsMark(const std::string& line, std::size_t i)
{
    if (i + 1 >= line.size())
        return false;
    const char a = line[i];
    const char b = line[i + 1];
    return (a == '/' && (b == '/' || b == '*')) || (a == '*' && b == '/');
}
}

std::vector<std::string> SplitShaderTokens(const std::string& line)
{
    std::vector<std::string> tokens;
    std::string current;
    const auto flush = [&]
    {
        if (!current.empty())
            tokens.push_back(std::move(current));
        current.clear();
    };
    for (std::size_t i = 0; i < line.size(); ++i)
    {
        if (IsBlank(line[i]))
        {
            flush();
        }
        else if (IsMark(line, i))
        {
            flush();
            tokens.push_back(line.substr(i, 2));
            ++i;
        }
        else
        {
            current += line[i];
        }
    }
    flush();
    return tokens;
}

std::vector<std::string> KeepTokensOutsideComments(const std::vector<std::string>& tokens, bool& inComment)
{
    std::vector<std::string> kept;
    for (const std::string& token : tokens)
    {
        if (inComment)
        {
            if (token == "*/")
                inComment = false;
            continue;
        }
        if (token == "//")
            break;
        if (token == "/*")
        {
            inComment = true;
            continue;
        }
        kept.push_back(token);
    }
    return kept;
}
}
