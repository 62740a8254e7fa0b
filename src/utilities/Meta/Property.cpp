#include "utilities/Meta/Property.h"

namespace Meta
{
std::string Property::ReadonlyMessage() const
{
    return "This property is readonly! \nProperty: " + m_Name + "\nClass: " + (m_Class ? m_Class->GetName() : "");
}
}
