#include "engine/GenericEvents.h"
#include "utilities/Meta/Registration.h"

META_REGISTER_NS(GenericEvent, LogicUpdate)
{
    DERIVE(Event);
    DESCRIPTION("Sent to each space once a frame, before its systems run.");
    MEMBER(Dt, "Frame time in seconds.");
    MEMBER(Elapsed, "Seconds run so far.");
}

META_REGISTER_NS(GenericEvent, Pause)
{
    DERIVE(Event);
    DESCRIPTION("Sent by a space whose pause state changes.");
    MEMBER(m_Paused, "The new pause state.");
}

META_REGISTER_NS(GenericEvent, Hide)
{
    DERIVE(Event);
    DESCRIPTION("Sent by a space whose hide state changes.");
    MEMBER(m_Hidden, "The new hide state.");
}

META_REGISTER_NS(GenericEvent, EndOfFrame)
{
    DERIVE(Event);
    DESCRIPTION("Sent on the global table when a frame ends.");
}
