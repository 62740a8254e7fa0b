// Platform::AudioOutput: the sound output of OpenAL Soft, one per process.
//
// Open gives one of three outputs. The default device plays to the sound card.
// The loopback device mixes 48000 Hz stereo 32-bit float only when asked
// (Render), which tests and benchmarks read. When no device opens (or the
// VORN_AUDIO_SILENT environment variable is set) the output is silent: a
// loopback device whose RenderElapsed mixes the wall-clock time gone by into a
// scratch buffer, so sounds advance and end on time while nothing is heard.
// Should even that fail, there is no mixer at all (HasMixer false) and the
// caller keeps time itself.
//
// OpenAL keeps one current context per process: only one output is open at once.
#pragma once

#include <vector>

namespace Platform
{
class AudioOutput
{
public:
    // How the output was opened.
    enum class Mode
    {
        Closed,
        Device,
        Loopback,
        Silent,
        NoMixer,
    };

    AudioOutput() = default;
    // Closes the output.
    ~AudioOutput();
    AudioOutput(const AudioOutput&) = delete;
    AudioOutput& operator=(const AudioOutput&) = delete;

    // Opens the loopback device (`loopback`) or the default device, falling back to silence.
    Mode Open(bool loopback);
    // Closes the device and its context.
    void Close();
    // How the output is open.
    Mode GetMode() const { return m_Mode; }
    // True when voices can be made (a context is current).
    bool HasMixer() const { return m_Context != nullptr; }
    // Frames a second of the mix.
    int GetSampleRate() const { return m_SampleRate; }
    // Loopback: mixes `frames` stereo float frames into `samples`; false when there is no mixer.
    bool Render(float* samples, int frames);
    // Silent output: mixes `seconds` of time into the scratch buffer (at most a few seconds).
    void RenderElapsed(double seconds);
    // Places the listener: position, velocity, and the forward and up directions, in the engine's
    // left-handed world (x right, y up, z forward).
    void SetListener(const float position[3], const float velocity[3], const float forward[3], const float up[3]);
    // True when the environment asks for a silent output (VORN_AUDIO_SILENT set and not "0").
    static bool SilenceRequested();

    // Sample rate of the loopback and silent outputs.
    static constexpr int kLoopbackRate = 48000;

private:
    bool OpenLoopback();

    Mode m_Mode = Mode::Closed;
    int m_SampleRate = kLoopbackRate;
    void* m_Device = nullptr;
    void* m_Context = nullptr;
    void* m_RenderFunction = nullptr;
    std::vector<float> m_Scratch;
    double m_ElapsedLeft = 0.0;
};
}
