// Draws one full-screen pass: the full-screen quad with a program whose
// m_WorldViewPerspective is the identity, six indices. The light pass, the
// post-effects and the upscale share it.
#pragma once

#include "Graphics_Engine/ResourceHandle.h"

#include <string>
#include <utility>
#include <vector>

namespace Graphics
{
struct FrameContext;
class ShaderProgram;

// Binds `program`, sets the textures given by name, applies and draws the quad; then unbinds what the
// program holds. Nothing without a loaded program or a quad.
void DrawFullScreen(FrameContext& frame, ShaderProgram* program,
                    const std::vector<std::pair<std::string, ResourceHandle>>& textures);
}
