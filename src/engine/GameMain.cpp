// The Game executable: hands the command line to the engine's start-up.
#include "engine/Options.h"
#include "engine/WinMain.h"

int main(int argc, char** argv)
{
    const std::string line = Engine::JoinCommandLine(argc, argv);
    return WinMain(line.c_str());
}
