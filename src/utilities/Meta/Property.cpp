#include "utilities/Meta/Property.h"

namespace Meta
{
std::string ReadOnlyProperty::ReadonlyMessage() const
{
    return "This property is readonly! \nProperty: " + m_Name + "\nClass: " + (m_Class ? m_Class->GetName() : "");
}
}
