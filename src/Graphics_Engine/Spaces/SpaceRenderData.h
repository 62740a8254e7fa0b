// Graphics::SpaceRenderData: what the renderer needs of one space, shared
// between the space's GraphicsSpace (which fills it) and the visible lists
// (which read it each frame): the space's quad tree, whether the space is
// drawn, and its live particle systems.
#pragma once

#include "Graphics_Engine/QuadTree/QuadTree.h"

#include <vector>

namespace Graphics
{
class GraphicsSpace;
class ParticleSystem;

struct SpaceRenderData
{
    // The space system that owns this record.
    GraphicsSpace* Owner = nullptr;
    // The space's live particle systems (filled once particles exist).
    std::vector<ParticleSystem*> ParticleSystems;
    // The space's culling structure.
    QuadTree Tree;
    // False hides every object of the space.
    bool Visible = true;
};
}
