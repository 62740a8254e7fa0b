#include "utilities/Meta/DataInfo.h"

namespace Meta
{
namespace
{
std::string& PendingDescription()
{
    static std::string pending;
    return pending;
}
}

void AddPendingDescription(const std::string& text)
{
    std::string& pending = PendingDescription();
    if (!pending.empty())
        pending += '\n';
    pending += text;
}

std::string CutMemberName(const std::string& name)
{
    // Cutting at the first "m_" again until none is left: "Team_m_Index" gives "Index".
    std::string cut = name;
    for (std::size_t prefix = cut.find("m_"); prefix != std::string::npos; prefix = cut.find("m_"))
        cut.erase(0, prefix + 2);
    return cut;
}

DataInfo::DataInfo(const std::string& name, Data* type) : m_Type(type), m_Name(CutMemberName(name))
{
    m_Description.swap(PendingDescription());
}
}
