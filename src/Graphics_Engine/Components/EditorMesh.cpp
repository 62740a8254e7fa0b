#include "Graphics_Engine/Components/EditorMesh.h"

#include "Graphics_Engine/Components/CloneGraphicsComponent.h"
#include "utilities/Meta/Registration.h"

META_REGISTER_NS(Graphics, EditorMesh)
{
    DERIVE(Graphics::Mesh);
    DESCRIPTION("A mesh that marks an object in the editor (a placeholder drawn as a Mesh).");
}

namespace Graphics
{
Component* EditorMesh::Clone() const
{
    return CloneGraphicsComponent(*this);
}

Meta::Data* EditorMesh::GetMeta() const
{
    return Meta::Get<EditorMesh>();
}
}
