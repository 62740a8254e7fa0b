#include "Graphics_Engine/Components/WallMesh.h"

#include "Graphics_Engine/Components/CloneGraphicsComponent.h"
#include "utilities/Meta/Registration.h"

META_REGISTER_NS(Graphics, WallMesh)
{
    DERIVE(Graphics::Mesh);
    DESCRIPTION("The walls and floor of a room (a placeholder drawn as a Mesh).");
}

namespace Graphics
{
Component* WallMesh::Clone() const
{
    return CloneGraphicsComponent(*this);
}

Meta::Data* WallMesh::GetMeta() const
{
    return Meta::Get<WallMesh>();
}
}
