#include "engine/GenericEvents.h"

META_REGISTER_NS(GenericEvent, LogicUpdate)
{
    DERIVE(Event);
}

META_REGISTER_NS(GenericEvent, Pause)
{
    DERIVE(Event);
}

META_REGISTER_NS(GenericEvent, Hide)
{
    DERIVE(Event);
}

META_REGISTER_NS(GenericEvent, EndOfFrame)
{
    DERIVE(Event);
}
