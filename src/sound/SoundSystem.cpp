#include "sound/SoundSystem.h"

#include "utilities/Meta/Registration.h"

META_REGISTER(SoundSystem)
{
    DERIVE(System);
}

SoundSystem& SoundSystem::Get()
{
    static SoundSystem* system = new SoundSystem();
    return *system;
}

Meta::Data* SoundSystem::GetMeta() const
{
    return Meta::Get<SoundSystem>();
}
