// Meta::NameMap: a hash map keyed by names that is searched with any string
// form (std::string, std::string_view, a literal) without making a std::string.
// The registry's tables of types, members, properties and methods use it, so a
// look-up by name costs a hash and a compare, never an allocation.
//
//   Meta::NameMap<Data*> byName;
//   byName.find(std::string_view("Vector3D"));
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace Meta
{
// Hashes every string form alike, for heterogeneous look-up.
struct NameHash
{
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const { return std::hash<std::string_view>{}(name); }
};

// A map from names to T, searched without building strings.
template <class T>
using NameMap = std::unordered_map<std::string, T, NameHash, std::equal_to<>>;
}
