#include "engine/System.h"

#include "utilities/Meta/Registration.h"

META_REGISTER(System)
{
    DESCRIPTION("Base of engine systems and space systems.");
}
