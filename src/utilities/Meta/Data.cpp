#include "utilities/Meta/Data.h"

#include "engine/Log.h"

#include <unordered_map>

namespace Meta
{
namespace
{
struct NameTable
{
    std::unordered_map<std::string, Data*> byName;
    std::vector<Data*> inOrder;
    unsigned nextId = 0;
};

// Made on first use: registrations run during static initialisation, in any order.
NameTable& Table()
{
    static NameTable* table = new NameTable();
    return *table;
}

std::string_view WithoutConst(std::string_view name)
{
    constexpr std::string_view prefix = "const ";
    if (name.substr(0, prefix.size()) == prefix)
        name.remove_prefix(prefix.size());
    return name;
}
}

void Data::Set(const std::string& name, unsigned size, ClassInfo* info, bool isPrimitive, bool isEnum)
{
    NameTable& table = Table();
    m_Name = name;
    m_Size = size;
    m_Info = info;
    m_IsPrimitive = isPrimitive;
    m_IsEnum = isEnum;
    m_Id = table.nextId++;
    table.byName.emplace(name, this);
    table.inOrder.push_back(this);
}

void Data::AddParent(Data* parent)
{
    if (parent == this)
        FATAL_ERROR("Why are you parenting yourself?");
    m_Parent = parent;
}

bool Data::IsDerivedFrom(const Data* other) const
{
    for (const Data* type = m_Parent; type; type = type->m_Parent)
        if (type == other)
            return true;
    return false;
}

void* Data::New() const
{
    return m_Info ? m_Info->New() : nullptr;
}

Data* FindData(std::string_view name)
{
    NameTable& table = Table();
    auto found = table.byName.find(std::string(WithoutConst(name)));
    return found == table.byName.end() ? nullptr : found->second;
}

const std::vector<Data*>& AllTypes()
{
    return Table().inOrder;
}
}
