// The sound layer's cost per frame: 32 playing effects and two streamed music
// tracks, each frame an update and 1/60 s mixed through the loopback device.
//
// The reference is the least work such a frame needs, in plain code: the same
// 32 mono effects and two stereo tracks, already decoded in memory, each added
// into a stereo buffer with a gain per side (no resampling, filtering, distance
// or streaming). The ratio says what the layer costs over that floor.
// SoundMixIdleFrame, the same frame with nothing playing, shows the mixer's fixed cost.
#include "sound/studio/Studio.h"

#include <benchmark/benchmark.h>
#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace
{
constexpr int kRate = 48000;
constexpr int kFrameSamples = kRate / 60;
constexpr int kEffects = 32;

// A data directory in the temporary folder with a bank of one effect and two music tracks.
std::string WriteBenchData()
{
    const std::filesystem::path root =
        std::filesystem::temp_directory_path() / ("vorn_sound_bench_" + std::to_string(getpid()));
    std::filesystem::create_directories(root / "Banks");
    std::filesystem::create_directories(root / "Sounds");
    auto write = [&](const std::string& name, double seconds, int channels, int format) {
        SF_INFO info{};
        info.samplerate = kRate;
        info.channels = channels;
        info.format = format;
        SNDFILE* file = sf_open((root / name).string().c_str(), SFM_WRITE, &info);
        std::vector<float> samples(static_cast<std::size_t>(seconds * kRate) * static_cast<std::size_t>(channels));
        for (std::size_t index = 0; index < samples.size(); ++index)
            samples[index] = 0.3f * static_cast<float>(std::sin(index * 0.05));
        sf_writef_float(file, samples.data(), static_cast<sf_count_t>(samples.size()) / channels);
        sf_close(file);
    };
    write("Sounds/Effect.wav", 2.0, 1, SF_FORMAT_WAV | SF_FORMAT_PCM_16);
    write("Sounds/MusicA.ogg", 8.0, 2, SF_FORMAT_OGG | SF_FORMAT_VORBIS);
    write("Sounds/MusicB.ogg", 8.0, 2, SF_FORMAT_OGG | SF_FORMAT_VORBIS);
    std::ofstream(root / "Banks/Bench.bank") << R"(Event
{
  Path "event:/Effect"
  Clips { "Sounds/Effect.wav" }
  Loop true
  Spatial true
  VolumeVariation 0.1
  PitchVariation 0.1
}
Event
{
  Path "event:/MusicA"
  Clips { "Sounds/MusicA.ogg" }
  Loop true
  Stream true
}
Event
{
  Path "event:/MusicB"
  Clips { "Sounds/MusicB.ogg" }
  Loop true
  Stream true
}
)";
    return root.string();
}

void RunFrames(benchmark::State& state, bool withSounds)
{
    const std::string root = WriteBenchData();
    Studio::System* system = nullptr;
    Studio::System::create(&system);
    system->initialize(64, Studio::INIT_LOOPBACK, 0, nullptr);
    Studio::Bank* bank = nullptr;
    system->loadBankFile((root + "/Banks/Bench.bank").c_str(), Studio::LOAD_BANK_NORMAL, &bank);
    if (withSounds)
    {
        auto start = [system](const char* path, int index) {
            Studio::EventDescription* description = nullptr;
            Studio::EventInstance* instance = nullptr;
            system->getEvent(path, &description);
            if (description && description->createInstance(&instance) == Studio::OK)
            {
                Studio::Attributes3D where;
                where.position[0] = static_cast<float>(index % 8) - 4.0f;
                where.position[2] = static_cast<float>(index / 8) * 3.0f;
                instance->set3DAttributes(where);
                instance->start();
            }
        };
        for (int effect = 0; effect < kEffects; ++effect)
            start("event:/Effect", effect);
        start("event:/MusicA", 0);
        start("event:/MusicB", 0);
    }
    std::vector<float> mix(static_cast<std::size_t>(kFrameSamples) * 2);
    for (auto _ : state)
    {
        system->update();
        system->renderSamples(mix.data(), kFrameSamples);
        benchmark::DoNotOptimize(mix.data());
    }
    system->release();
    std::filesystem::remove_all(root);
}

void SoundMixFrame(benchmark::State& state)
{
    RunFrames(state, true);
}
BENCHMARK(SoundMixFrame)->Unit(benchmark::kMicrosecond);

void SoundMixIdleFrame(benchmark::State& state)
{
    RunFrames(state, false);
}
BENCHMARK(SoundMixIdleFrame)->Unit(benchmark::kMicrosecond);

void SoundMixFrame_Reference(benchmark::State& state)
{
    // Two seconds of each source in memory: 32 mono effects, two stereo tracks.
    const std::size_t length = static_cast<std::size_t>(kRate) * 2;
    std::vector<std::vector<float>> effects(kEffects, std::vector<float>(length));
    std::vector<std::vector<float>> music(2, std::vector<float>(length * 2));
    for (std::size_t index = 0; index < length; ++index)
    {
        for (auto& effect : effects)
            effect[index] = 0.3f * static_cast<float>(std::sin(index * 0.05));
        for (auto& track : music)
            track[index * 2] = track[index * 2 + 1] = 0.3f * static_cast<float>(std::sin(index * 0.05));
    }
    std::vector<float> gains(kEffects * 2);
    for (int effect = 0; effect < kEffects; ++effect)
    {
        gains[effect * 2] = 0.3f + 0.01f * effect;
        gains[effect * 2 + 1] = 0.6f - 0.01f * effect;
    }
    std::vector<float> mix(static_cast<std::size_t>(kFrameSamples) * 2);
    std::size_t position = 0;
    for (auto _ : state)
    {
        std::fill(mix.begin(), mix.end(), 0.0f);
        for (int effect = 0; effect < kEffects; ++effect)
            for (int frame = 0; frame < kFrameSamples; ++frame)
            {
                const float sample = effects[effect][(position + frame) % length];
                mix[frame * 2] += sample * gains[effect * 2];
                mix[frame * 2 + 1] += sample * gains[effect * 2 + 1];
            }
        for (const auto& track : music)
            for (int frame = 0; frame < kFrameSamples; ++frame)
            {
                mix[frame * 2] += track[((position + frame) % length) * 2];
                mix[frame * 2 + 1] += track[((position + frame) % length) * 2 + 1];
            }
        position = (position + kFrameSamples) % length;
        benchmark::DoNotOptimize(mix.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(SoundMixFrame_Reference)->Unit(benchmark::kMicrosecond);
}
