#include "model_convert/CommandLine.h"

namespace ModelTools
{
std::string Usage()
{
    return "usage: vorn_model_convert [options] INPUT OUTPUT.kbm\n"
           "       vorn_model_convert --animations-only INPUT OUTPUT.kba\n"
           "Converts a model (glTF 2.0 .gltf/.glb, OBJ, FBX, COLLADA .dae) into the engine's kbm format.\n"
           "  --kba FILE          also write the animations to FILE as a kba animation set\n"
           "  --animations-only   write only the animations, as a kba animation set, to the output\n"
           "  --no-animations     leave the animations out of the kbm file\n"
           "  --static            ignore bones: write a static model in its rest pose\n"
           "  --quiet             print nothing when the conversion succeeds\n"
           "  --help              print this text\n";
}

bool ParseCommandLine(const std::vector<std::string>& arguments, CommandLine& line, std::string& error)
{
    line = CommandLine{};
    std::vector<std::string> files;
    for (std::size_t i = 0; i < arguments.size(); ++i)
    {
        const std::string& argument = arguments[i];
        if (argument == "--help" || argument == "-h")
            line.Help = true;
        else if (argument == "--animations-only")
            line.AnimationsOnly = true;
        else if (argument == "--no-animations")
            line.Convert.Animations = false;
        else if (argument == "--static")
            line.Convert.Static = true;
        else if (argument == "--quiet")
            line.Quiet = true;
        else if (argument == "--kba")
        {
            if (i + 1 == arguments.size())
            {
                error = "--kba needs a file name";
                return false;
            }
            line.AnimationSet = arguments[++i];
        }
        else if (argument.size() > 1 && argument[0] == '-')
        {
            error = "unknown option \"" + argument + "\"";
            return false;
        }
        else
            files.push_back(argument);
    }
    if (line.Help)
        return true;
    if (files.size() != 2)
    {
        error = "expected an input and an output file, got " + std::to_string(files.size()) + " file names";
        return false;
    }
    if (line.AnimationsOnly && (line.Convert.Static || !line.Convert.Animations || !line.AnimationSet.empty()))
    {
        error = "--animations-only writes one kba file and takes no --kba, --static or --no-animations";
        return false;
    }
    line.Input = files[0];
    line.Output = files[1];
    return true;
}
}
