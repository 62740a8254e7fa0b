#include "Graphics_Engine/Components/SkinnedMesh.h"

#include "Graphics_Engine/Components/CloneGraphicsComponent.h"
#include "utilities/Meta/Registration.h"

META_REGISTER_NS(Graphics, SkinnedMesh)
{
    DERIVE(Graphics::Mesh);
    DESCRIPTION("A mesh moved by its model's bones (a placeholder drawn as a Mesh).");
}

namespace Graphics
{
Component* SkinnedMesh::Clone() const
{
    return CloneGraphicsComponent(*this);
}

Meta::Data* SkinnedMesh::GetMeta() const
{
    return Meta::Get<SkinnedMesh>();
}
}
