#include "Graphics_Engine/InputLayout.h"

namespace Graphics
{
unsigned ComponentsFromMask(unsigned mask)
{
    if (mask == 1)
        return 1;
    if (mask < 4)
        return 2;
    if (mask < 8)
        return 3;
    return 4;
}

void AddInputElement(std::vector<InputElement>& layout, const std::string& semantic, unsigned semanticIndex,
                     unsigned mask, InputComponentType type)
{
    InputElement element;
    element.Semantic = semantic;
    element.SemanticIndex = semanticIndex;
    element.Type = type;
    element.Components = ComponentsFromMask(mask);
    if (!layout.empty())
        element.Offset = layout.back().Offset + layout.back().Components * 4;
    layout.push_back(element);
}
}
