#include "engine/Event.h"

#include "utilities/Meta/Registration.h"

META_REGISTER(Event)
{
    DESCRIPTION("Base of everything sent through an event table.");
}
