// EditorSystem: the in-game editor's windows and undo. Not built yet: its update does nothing.
#pragma once

#include "engine/System.h"

class EditorSystem : public System
{
public:
    // The one EditorSystem.
    static EditorSystem& Get();

    void Update(float dt) override {}
    Meta::Data* GetMeta() const override;
};
