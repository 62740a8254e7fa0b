#include "engine/FileWatcher.h"

#include "utilities/Meta/Registration.h"

META_REGISTER(FileWatcher)
{
    DERIVE(System);
}

FileWatcher& FileWatcher::Get()
{
    static FileWatcher* system = new FileWatcher();
    return *system;
}

Meta::Data* FileWatcher::GetMeta() const
{
    return Meta::Get<FileWatcher>();
}
