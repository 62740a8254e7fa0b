// Engine::Options: the command-line option registry.
//
// Options are "--name" or "--name=value", names matched without regard to case.
// Systems add their options from their constructors, so the command line is
// parsed only once every engine system exists. The registry lives in the
// start-up function's frame; while it exists, RegisterOption reaches it.
//
//   Engine::Options::RegisterOption("fps", [](const char* value) { ... });
//
// A handler receives null when the option has no value, and also when the
// value is a single character ("--x=5"): values need two characters or more.
#pragma once

#include <functional>
#include <map>
#include <string>

namespace Engine
{
class Options
{
public:
    // What an option does with its value (null when it has none).
    using Handler = std::function<void(const char* value)>;

    // Makes the registry and publishes it for RegisterOption.
    Options();
    // Unpublishes the registry.
    ~Options();
    Options(const Options&) = delete;
    Options& operator=(const Options&) = delete;

    // Adds an option under its lowered name; false if the name was taken (the old handler stays)
    // or no registry exists.
    static bool RegisterOption(const char* name, Handler handler);
    // Walks a whole command line and calls the handlers of the options it names.
    static void ParseCommandLine(const char* line);
    // The published registry, or null.
    static Options* Current() { return s_Current; }

    // Removes every option.
    void Clear() { m_Options.clear(); }
    // Number of options.
    std::size_t Count() const { return m_Options.size(); }

private:
    static Options* s_Current;
    std::map<std::string, Handler> m_Options;
};

// Joins program arguments into one command line, quoting values that hold spaces.
std::string JoinCommandLine(int argc, const char* const* argv);
}
