// vorn_model_convert: converts a model that an artist's tool wrote (glTF 2.0,
// OBJ, FBX, COLLADA) into the engine's kbm model file, and its animations into
// the model or a kba animation set. See CommandLine.h for the options and
// docs/ModelTools.md for the conventions. A file that cannot be converted is
// named on standard error with the reason, and the exit code is 1; a wrong
// command line prints the usage and exits with 2.
#include "Graphics_Engine/Model/ModelFile.h"
#include "model_convert/AssimpImport.h"
#include "model_convert/CommandLine.h"
#include "model_convert/SceneConverter.h"

#include <cstdio>
#include <exception>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace
{
bool WriteFile(const std::string& path, const std::vector<std::uint8_t>& bytes)
{
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    out.close();
    return static_cast<bool>(out);
}

int Fail(const std::string& file, const std::string& reason)
{
    std::cerr << "vorn_model_convert: cannot convert \"" << file << "\": " << reason << "\n";
    return 1;
}

int Convert(const ModelTools::CommandLine& line)
{
    Assimp::Importer importer;
    std::string error;
    const aiScene* scene = ModelTools::ImportScene(importer, line.Input, error);
    if (!scene)
        return Fail(line.Input, error);

    Graphics::ModelFile model;
    std::vector<std::string> notes;
    if (!ModelTools::ConvertScene(*scene, line.Convert, model, notes, error))
        return Fail(line.Input, error);
    for (const std::string& note : notes)
        std::cerr << "vorn_model_convert: note: \"" << line.Input << "\": " << note << "\n";

    if (line.AnimationsOnly)
    {
        if (model.Animations.empty())
            return Fail(line.Input, "the file holds no animations of bones");
        if (!WriteFile(line.Output, Graphics::WriteKba(model.Animations)))
            return Fail(line.Input, "\"" + line.Output + "\" could not be written");
        if (!line.Quiet)
            std::cout << line.Input << " -> " << line.Output << ": " << model.Animations.size() << " animations\n";
        return 0;
    }
    if (!WriteFile(line.Output, Graphics::WriteKbm(model)))
        return Fail(line.Input, "\"" + line.Output + "\" could not be written");
    if (!line.AnimationSet.empty() && !WriteFile(line.AnimationSet, Graphics::WriteKba(model.Animations)))
        return Fail(line.Input, "\"" + line.AnimationSet + "\" could not be written");
    if (!line.Quiet)
        std::cout << line.Input << " -> " << line.Output << ": "
                  << (model.Type == Graphics::ModelType::Skinned ? "skinned, " : "static, ") << model.Vertices.size()
                  << " vertices, " << model.Indices.size() << " indices, " << model.Bones.size() << " bones, "
                  << model.Animations.size() << " animations\n";
    return 0;
}
}

int main(int argc, char** argv)
{
    ModelTools::CommandLine line;
    std::string error;
    if (!ModelTools::ParseCommandLine(std::vector<std::string>(argv + 1, argv + argc), line, error))
    {
        std::cerr << "vorn_model_convert: " << error << "\n" << ModelTools::Usage();
        return 2;
    }
    if (line.Help)
    {
        std::cout << ModelTools::Usage();
        return 0;
    }
    try
    {
        return Convert(line);
    }
    catch (const std::exception& exception)
    {
        return Fail(line.Input, exception.what());
    }
}
