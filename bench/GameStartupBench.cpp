// Start-up to the first frame: the Game program run headless for one frame with
// the project's whole Data/ (archetypes, scripts, states), beside the same run
// with the smallest data directory the game runs on (one empty state), in one
// run. The ratio line gives what the game's data adds to the start; later
// features must keep it low.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace
{
// Runs the game for one frame on `dataDirectory`; stops the benchmark when the run fails.
void RunOneFrame(benchmark::State& state, const std::string& dataDirectory)
{
    const std::filesystem::path appData = std::filesystem::temp_directory_path() / "vorn_bench_startup";
    const std::string command = "cd \"" + std::filesystem::path(VORN_GAME_PATH).parent_path().string() +
                                "\" && SDL_VIDEODRIVER=offscreen SDL_AUDIODRIVER=dummy VORN_DIALOG_ANSWER=abort "
                                "VORN_APPDATA_DIR=\"" +
                                appData.string() + "\" \"" VORN_GAME_PATH "\" --frames=01 --datadir=\"" + dataDirectory +
                                "\" > /dev/null 2>&1";
    for (auto _ : state)
        if (std::system(command.c_str()) != 0)
        {
            state.SkipWithError("the game did not end cleanly");
            break;
        }
    std::filesystem::remove_all(appData);
}

void GameStartup(benchmark::State& state)
{
    RunOneFrame(state, VORN_DATA_DIR);
}
BENCHMARK(GameStartup)->Unit(benchmark::kMillisecond)->Iterations(20);

void GameStartup_Reference(benchmark::State& state)
{
    RunOneFrame(state, VORN_MINIMAL_DATA_DIR);
}
BENCHMARK(GameStartup_Reference)->Unit(benchmark::kMillisecond)->Iterations(20);
}
