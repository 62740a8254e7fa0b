#include "utilities/Meta/Member.h"

#include "engine/Log.h"

namespace Meta
{
void Member::ReportCustomAccessor()
{
    ERROR_REPORT("Members having a getter has been depricated.  Go bug rian and don't close this error dialog box if "
                 "he is there");
}

void Member::ReportUnsavedRead() const
{
    LOG("WARNING", "This member isn't marked to be serialized but it is being deserialized: " + m_Name);
}
}
