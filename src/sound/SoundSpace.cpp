#include "sound/SoundSpace.h"

#include "utilities/Meta/Registration.h"

META_REGISTER(SoundSpace)
{
    DERIVE(System);
}

Meta::Data* SoundSpace::GetMeta() const
{
    return Meta::Get<SoundSpace>();
}
