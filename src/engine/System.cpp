#include "engine/System.h"

#include "utilities/Meta/Data.h"

META_REGISTER(System)
{
}
