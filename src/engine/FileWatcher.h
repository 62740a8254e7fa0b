// FileWatcher: watches data files and calls their reload callbacks on the main thread. Not built yet: its update does nothing.
#pragma once

#include "engine/System.h"

class FileWatcher : public System
{
public:
    // The one FileWatcher.
    static FileWatcher& Get();

    void Update(float dt) override {}
    Meta::Data* GetMeta() const override;
};
