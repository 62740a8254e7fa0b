#include "input/Automation.h"

#include "utilities/Meta/Registration.h"

META_REGISTER(Automation)
{
    DERIVE(System);
}

Automation& Automation::Get()
{
    static Automation* system = new Automation();
    return *system;
}

Meta::Data* Automation::GetMeta() const
{
    return Meta::Get<Automation>();
}
