// Runs the built Game binary headless, as a user or CI would: no window, no
// sound device, dialogs answered by `answer`, application data in a folder of
// the test's own, and everything it prints collected.
#pragma once

#include "support/ShellCommand.h"

#include <filesystem>
#include <string>

// What a headless run of the game left: its exit code (-1 when it did not exit) and its output.
struct HeadlessGameRun
{
    int exitCode = -1;
    std::string output;
};

// Starts the game from its build folder with `arguments`; `environment` ("NAME=value ...") goes
// before the command.
inline HeadlessGameRun RunHeadlessGame(const std::string& arguments, const std::filesystem::path& appData,
                                       const std::string& environment = "", const std::string& answer = "abort")
{
    const std::string command = "cd \"" + std::filesystem::path(VORN_GAME_PATH).parent_path().string() + "\" && " +
                                environment + " SDL_VIDEODRIVER=offscreen SDL_AUDIODRIVER=dummy VORN_DIALOG_ANSWER=" +
                                answer + " VORN_APPDATA_DIR=\"" + appData.string() + "\" \"" VORN_GAME_PATH "\" " +
                                arguments + " 2>&1";
    HeadlessGameRun run;
    run.output = RunShellCommand(command, run.exitCode);
    return run;
}
