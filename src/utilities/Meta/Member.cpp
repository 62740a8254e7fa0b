#include "utilities/Meta/Member.h"

#include "engine/Log.h"

namespace Meta
{
void Member::ReportCustomAccessor()
{
    ERROR_REPORT("Members having a getter has been depricated.  Go bug rian and don't close this error dialog box if "
                 "he is there");
}
}
