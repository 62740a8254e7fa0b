// The vertex input format of a vertex stage, built from the stage's inputs as
// reflection reports them: each input becomes one element with its semantic
// name and index, slot 0, appended after the previous one, per-vertex data.
// The component count comes from the input's mask: mask 1 gives one component,
// a mask below 4 two, below 8 three, below 16 four; the component type picks
// float, signed or unsigned 32-bit. Names starting "SV_"/"gl_" get no exception.
#pragma once

#include <string>
#include <vector>

namespace Graphics
{
// The 32-bit component type of an input.
enum class InputComponentType
{
    Float,
    Signed,
    Unsigned,
};

// One element of the vertex input format.
struct InputElement
{
    // The input's name (the semantic).
    std::string Semantic;
    // The semantic's index.
    unsigned SemanticIndex = 0;
    // The component type.
    InputComponentType Type = InputComponentType::Float;
    // One to four components.
    unsigned Components = 4;
    // The byte offset in the vertex, appended after the element before.
    unsigned Offset = 0;
};

// The component count that a reflection mask gives.
unsigned ComponentsFromMask(unsigned mask);

// Appends an input to `layout` by the mask rules, after the elements already there.
void AddInputElement(std::vector<InputElement>& layout, const std::string& semantic, unsigned semanticIndex,
                     unsigned mask, InputComponentType type);
}
