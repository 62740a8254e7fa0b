// VirtualSystem: a space system written in Lua: its script's "Initialize" runs
// once and its "Update" every frame. Not built yet: it keeps its script path
// and does nothing.
#pragma once

#include "engine/System.h"

#include <string>

class VirtualSystem : public System
{
public:
    // A system running the script at `path` (already joined to the data directory).
    explicit VirtualSystem(std::string path) : m_Path(std::move(path)) {}

    void Update(float dt) override {}
    Meta::Data* GetMeta() const override;

    // Full path of the script.
    std::string m_Path;
};
