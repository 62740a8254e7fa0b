#include "engine/Options.h"

#include <cctype>
#include <cstdio>
#include <cstring>

namespace Engine
{
Options* Options::s_Current = nullptr;
std::uint64_t Options::s_NextId = 0;

namespace
{
std::string Lowered(const char* text, std::size_t length)
{
    std::string out(text, length);
    for (char& c : out)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return out;
}
}

Options::Options()
{
    s_Current = this;
}

Options::~Options()
{
    if (s_Current == this)
        s_Current = nullptr;
}

bool Options::RegisterOption(const char* name, Handler handler)
{
    return AddOption(name, std::move(handler)) != 0;
}

std::uint64_t Options::AddOption(const char* name, Handler handler)
{
    if (!s_Current || !name)
        return 0;
    const std::uint64_t id = ++s_NextId;
    const bool added =
        s_Current->m_Options.emplace(Lowered(name, std::strlen(name)), Entry{std::move(handler), id}).second;
    return added ? id : 0;
}

void Options::RemoveOption(std::uint64_t id)
{
    if (!s_Current || id == 0)
        return;
    std::erase_if(s_Current->m_Options, [id](const auto& option) { return option.second.id == id; });
}

OwnedOption::OwnedOption(const char* name, Options::Handler handler)
    : m_Id(Options::AddOption(name, std::move(handler)))
{
}

OwnedOption::~OwnedOption()
{
    Options::RemoveOption(m_Id);
}

void Options::ParseCommandLine(const char* line)
{
    if (!s_Current || !line)
        return;
    const char* start = line;
    const char* c = line;
    for (;; ++c)
    {
        if (*c != ' ' && *c != '\0' && *c != '=')
            continue;
        const std::size_t length = static_cast<std::size_t>(c - start);
        if (length >= 3 && start[0] == '-' && start[1] == '-')
        {
            const std::string name = Lowered(start + 2, length - 2);
            auto found = s_Current->m_Options.find(name);
            if (found == s_Current->m_Options.end())
            {
                std::printf("Unknown command line arg: \"%s\"\n", name.c_str());
                std::fflush(stdout);
            }
            else
            {
                std::string value;
                if (*c == '=')
                {
                    const char* v = c + 1;
                    if (*v == '"')
                    {
                        // A missing closing quote runs to the end of the line.
                        const char* close = std::strchr(v + 1, '"');
                        value.assign(v + 1, close ? close : v + 1 + std::strlen(v + 1));
                    }
                    else
                    {
                        const char* end = v;
                        while (*end != ' ' && *end != '\0')
                            ++end;
                        value.assign(v, end);
                    }
                }
                // Values of fewer than two characters count as none. The handler is called through a
                // copy, so that one which removes options (its own among them) runs to its end.
                const Handler handler = found->second.handler;
                handler(value.size() < 2 ? nullptr : value.c_str());
            }
        }
        if (*c == '\0')
            break;
        start = c + 1;
    }
}

std::string JoinCommandLine(int argc, const char* const* argv)
{
    std::string line;
    for (int i = 0; i < argc; ++i)
    {
        if (i > 0)
            line += ' ';
        std::string argument = argv[i];
        const std::size_t space = argument.find(' ');
        if (space == std::string::npos)
        {
            line += argument;
            continue;
        }
        // Quote the value (or the whole argument) so that the parser keeps it in one piece.
        const std::size_t equals = argument.find('=');
        if (argument.rfind("--", 0) == 0 && equals != std::string::npos && equals < space)
            line += argument.substr(0, equals + 1) + '"' + argument.substr(equals + 1) + '"';
        else
            line += '"' + argument + '"';
    }
    return line;
}
}

