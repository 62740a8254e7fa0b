__ShaderDesc
{
    Type Vertex
    EntryPoint main
}

// The full-screen quad (or a light volume) placed by m_WorldViewPerspective; the quad drawn with
// the identity covers the target, texture coordinate (0, 0) at the top left.

#include "PlacedVertex.glsl"
