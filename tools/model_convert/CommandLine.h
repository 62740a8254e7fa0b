// The converter's command line:
//
//   vorn_model_convert [options] INPUT OUTPUT.kbm
//   vorn_model_convert --animations-only INPUT OUTPUT.kba
//
// INPUT is anything the Open Asset Import Library reads: glTF 2.0 (.gltf,
// .glb), OBJ, FBX, COLLADA (.dae) and more.
#pragma once

#include "model_convert/SceneConverter.h"

#include <string>
#include <vector>

namespace ModelTools
{
struct CommandLine
{
    std::string Input;
    // The kbm file, or with AnimationsOnly the kba file.
    std::string Output;
    // A kba file to write the animations to as well; empty for none.
    std::string AnimationSet;
    // Write only the animations, as a kba set, to Output.
    bool AnimationsOnly = false;
    // Print nothing when all goes well.
    bool Quiet = false;
    // Print the usage and stop.
    bool Help = false;
    ConvertOptions Convert;
};

// The usage text, ending with a newline.
std::string Usage();

// Reads the arguments after the program's name; false with a reason in `error`
// for an unknown option or a wrong number of files.
bool ParseCommandLine(const std::vector<std::string>& arguments, CommandLine& line, std::string& error);
}
