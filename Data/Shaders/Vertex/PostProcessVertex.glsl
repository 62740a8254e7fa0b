__ShaderDesc
{
    Type Vertex
    EntryPoint main
}

// The full-screen quad of the post-effects' passes, placed by m_WorldViewPerspective (the identity).

#include "PlacedVertex.glsl"
