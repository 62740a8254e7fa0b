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
//
// A handler must never outlive what it calls. RegisterOption is for handlers
// that call only free functions or objects that live until the process ends; an
// object whose handler calls the object itself holds an OwnedOption member,
// which removes the handler again when the object goes:
//
//   OwnedOption m_FpsOption{"fps", [this](const char* value) { SetTargetFromOption(value); }};
#pragma once

#include <cstdint>
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
    // As RegisterOption, returning the entry's id (never 0), or 0 when nothing was added.
    static std::uint64_t AddOption(const char* name, Handler handler);
    // Removes the entry with `id` from the published registry, if it stands there.
    static void RemoveOption(std::uint64_t id);
    // Walks a whole command line and calls the handlers of the options it names.
    static void ParseCommandLine(const char* line);
    // The published registry, or null.
    static Options* Current() { return s_Current; }

    // Removes every option.
    void Clear() { m_Options.clear(); }
    // Number of options.
    std::size_t Count() const { return m_Options.size(); }

private:
    // One option: its handler and the id that removes it.
    struct Entry
    {
        Handler handler;
        std::uint64_t id = 0;
    };

    static Options* s_Current;
    static std::uint64_t s_NextId;
    std::map<std::string, Entry> m_Options;
};

// An option added by an object, removed again when the object (and so this member) is destroyed.
// If the name was already taken, nothing is added and nothing of the other handler's is removed.
class OwnedOption
{
public:
    // Adds the option to the published registry, if there is one.
    OwnedOption(const char* name, Options::Handler handler);
    // Removes the option, if it was added and its registry still stands.
    ~OwnedOption();
    OwnedOption(const OwnedOption&) = delete;
    OwnedOption& operator=(const OwnedOption&) = delete;

    // True if the option was added (the name was free and a registry existed).
    bool IsRegistered() const { return m_Id != 0; }

private:
    std::uint64_t m_Id = 0;
};

// Joins program arguments into one command line, quoting values that hold spaces.
std::string JoinCommandLine(int argc, const char* const* argv);
}
