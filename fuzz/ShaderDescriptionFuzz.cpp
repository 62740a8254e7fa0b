// Fuzz target of the shader file preprocessor and its sampler block parser:
// arbitrary bytes go to the preprocessor as the text of a shader file. Dialogs
// are answered Ignore, as a developer who clicks through them would; the
// preprocessor must neither crash nor hang, and what it accepts must name a
// stage and an entry point. Build with ./setup.sh fuzz 600 shader.

#include "Graphics_Engine/ShaderPreprocessor.h"
#include "engine/Log.h"
#include "platform/Dialog.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    Platform::SetDialogPolicy(Platform::DialogPolicy::Ignore);
    Engine::Log::Get().m_Echo = false;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Graphics::ShaderDescription description;
    const bool ok =
        Graphics::PreprocessShader(std::string(reinterpret_cast<const char*>(data), size), "Fuzz.glsl", description);
    if (ok && (description.Stage < Graphics::StageVertex || description.Stage > Graphics::StageCompute ||
               description.EntryPoint.empty()))
        std::abort();
    return 0;
}
