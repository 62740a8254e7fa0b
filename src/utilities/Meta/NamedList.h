// Meta::NamedList: records of one kind (members, properties, methods) by name,
// kept in the order they were added. A name given twice keeps the first record.
// Look-ups take a string_view and build no string: the index hashes names
// transparently, so a look-up from a script or a file allocates nothing.
#pragma once

#include "utilities/Meta/NameHash.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Meta
{
template <class T>
class NamedList
{
public:
    // Adds a record under its name; false (and the record dropped) if the name is taken.
    bool Add(const std::string& name, std::shared_ptr<T> record)
    {
        if (!m_Index.emplace(name, m_Items.size()).second)
            return false;
        m_Items.emplace_back(name, std::move(record));
        return true;
    }
    // The record with this name, or null.
    T* Find(std::string_view name) const
    {
        auto found = m_Index.find(name);
        return found == m_Index.end() ? nullptr : m_Items[found->second].second.get();
    }
    // The records in the order they were added.
    const std::vector<std::pair<std::string, std::shared_ptr<T>>>& Items() const { return m_Items; }
    // Number of records.
    std::size_t Size() const { return m_Items.size(); }

private:
    std::vector<std::pair<std::string, std::shared_ptr<T>>> m_Items;
    NameMap<std::size_t> m_Index;
};
}
