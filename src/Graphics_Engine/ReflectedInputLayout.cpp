#include "Graphics_Engine/ReflectedInputLayout.h"

#include <algorithm>

namespace Graphics
{
namespace
{
std::vector<const ReflectedInput*> VertexInputs(const ProgramReflection& reflection)
{
    std::vector<const ReflectedInput*> inputs;
    for (const ReflectedInput& input : reflection.inputs)
        if (input.location >= 0)
            inputs.push_back(&input);
    std::stable_sort(inputs.begin(), inputs.end(),
                     [](const ReflectedInput* a, const ReflectedInput* b) { return a->location < b->location; });
    return inputs;
}

InputComponentType ComponentType(ScalarKind scalar)
{
    if (scalar == ScalarKind::Int)
        return InputComponentType::Signed;
    if (scalar == ScalarKind::UInt || scalar == ScalarKind::Bool)
        return InputComponentType::Unsigned;
    return InputComponentType::Float;
}

Format FormatOf(const InputElement& element)
{
    static constexpr Format kFloat[] = {Format::R32_FLOAT, Format::R32G32_FLOAT, Format::R32G32B32_FLOAT,
                                        Format::R32G32B32A32_FLOAT};
    static constexpr Format kSigned[] = {Format::R32_SINT, Format::R32G32_SINT, Format::R32G32B32_SINT,
                                         Format::R32G32B32A32_SINT};
    static constexpr Format kUnsigned[] = {Format::R32_UINT, Format::R32G32_UINT, Format::R32G32B32_UINT,
                                           Format::R32G32B32A32_UINT};
    const unsigned index = std::clamp(element.Components, 1u, 4u) - 1;
    if (element.Type == InputComponentType::Signed)
        return kSigned[index];
    if (element.Type == InputComponentType::Unsigned)
        return kUnsigned[index];
    return kFloat[index];
}
}

std::vector<InputElement> InputLayoutOf(const ProgramReflection& reflection)
{
    std::vector<InputElement> layout;
    for (const ReflectedInput* input : VertexInputs(reflection))
    {
        const unsigned components = std::clamp(input->type.rows, 1u, 4u);
        const unsigned mask = (1u << components) - 1;
        AddInputElement(layout, input->name, 0, mask, ComponentType(input->type.scalar));
    }
    return layout;
}

std::vector<InputElementDesc> DeviceInputElements(const ProgramReflection& reflection,
                                                  const std::vector<InputElement>& layout)
{
    std::vector<InputElementDesc> elements;
    const std::vector<const ReflectedInput*> inputs = VertexInputs(reflection);
    for (std::size_t i = 0; i < layout.size() && i < inputs.size(); ++i)
    {
        InputElementDesc element;
        element.location = static_cast<std::uint32_t>(inputs[i]->location);
        element.format = FormatOf(layout[i]);
        element.slot = 0;
        element.offset = layout[i].Offset;
        element.perInstance = false;
        elements.push_back(element);
    }
    return elements;
}
}
