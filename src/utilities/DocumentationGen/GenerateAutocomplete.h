// The "gen-autocomplete" mode of the game: writes a Lua table of every
// registered class and its methods and values, for a text editor's completion:
//
//   return {
//   Transform = {
//   type = "class",
//   childs = {
//   GetParent = {
//   type = "method"
//   },
//   Position = {
//   type = "value"
//   },
//   },
//   },
//   ...
//   owner = { type = "value", valuetype="GameObject"},
//   }
//
// Methods go by their script names ("operator+" is "__add"); operators without
// one are left out, as are types whose name holds a blank ("const X"), the
// built-in value types, and the hook through which scripts add properties.
// An enumeration lists its named values. A name that is no plain Lua name is
// written as ["name"], so the file always loads.
#pragma once

#include <string>

namespace DocGen
{
// Where the file goes, under the data directory.
inline constexpr const char* kAutocompleteFile = "LuaScripts/vorn_autocomplete.lua";
// The whole text of the file.
std::string AutocompleteText();
}

// Writes the file at `path` (making its folder); false (reported) when it cannot be written.
bool GenerateAutocomplete(const std::string& path);
