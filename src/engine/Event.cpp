#include "engine/Event.h"

#include "utilities/Meta/Data.h"

META_REGISTER(Event)
{
}
