#include "editor/EditorSystem.h"

#include "utilities/Meta/Registration.h"

META_REGISTER(EditorSystem)
{
    DERIVE(System);
}

EditorSystem& EditorSystem::Get()
{
    static EditorSystem* system = new EditorSystem();
    return *system;
}

Meta::Data* EditorSystem::GetMeta() const
{
    return Meta::Get<EditorSystem>();
}
