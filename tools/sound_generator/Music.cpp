#include "sound_generator/Music.h"

#include "sound_generator/Instruments.h"

#include <cmath>
#include <cstdint>

namespace SoundTools
{
namespace
{
// A stereo buffer of one loop's length; everything added past its end wraps
// around to its start.
class LoopMix
{
public:
    LoopMix(double beatsPerMinute, int bars)
        : m_FramesPerBeat(static_cast<double>(kSampleRate) * 60.0 / beatsPerMinute),
          m_Frames(FramesPerBar(beatsPerMinute) * static_cast<std::size_t>(bars)), m_Left(m_Frames), m_Right(m_Frames)
    {
    }

    // Seconds in `beats` beats.
    double Seconds(double beats) const { return beats * m_FramesPerBeat / kSampleRate; }
    // Beats in the loop.
    double Beats() const { return static_cast<double>(m_Frames) / m_FramesPerBeat; }

    // Adds `voice` starting at `beat`, at `gain`, panned by `pan` (-1 left, 1 right).
    void Add(double beat, const std::vector<float>& voice, double gain, double pan = 0.0)
    {
        const double angle = (pan + 1.0) * 0.25 * 3.14159265358979;
        const float left = static_cast<float>(gain * std::cos(angle) * 1.41421356);
        const float right = static_cast<float>(gain * std::sin(angle) * 1.41421356);
        std::size_t at = static_cast<std::size_t>(std::llround(beat * m_FramesPerBeat)) % m_Frames;
        for (float s : voice)
        {
            m_Left[at] += s * left;
            m_Right[at] += s * right;
            if (++at == m_Frames)
                at = 0;
        }
    }

    // Adds `voice` to one side only (0 left, 1 right).
    void AddSide(double beat, const std::vector<float>& voice, double gain, int side)
    {
        std::vector<float>& target = side == 0 ? m_Left : m_Right;
        std::size_t at = static_cast<std::size_t>(std::llround(beat * m_FramesPerBeat)) % m_Frames;
        for (float s : voice)
        {
            target[at] += s * static_cast<float>(gain);
            if (++at == m_Frames)
                at = 0;
        }
    }

    // Mixes `other` in with a ping-pong echo: `repeats` echoes every `delayBeats`,
    // each `feedback` times the one before, alternating sides.
    void AddWithEcho(const LoopMix& other, double delayBeats, double feedback, int repeats)
    {
        const std::size_t delay = static_cast<std::size_t>(std::llround(delayBeats * m_FramesPerBeat));
        for (std::size_t i = 0; i < m_Frames; ++i)
        {
            m_Left[i] += other.m_Left[i];
            m_Right[i] += other.m_Right[i];
        }
        double gain = 1.0;
        for (int r = 1; r <= repeats; ++r)
        {
            gain *= feedback;
            const std::size_t shift = (delay * static_cast<std::size_t>(r)) % m_Frames;
            const bool swap = r % 2 == 1;
            for (std::size_t i = 0; i < m_Frames; ++i)
            {
                const std::size_t from = (i + m_Frames - shift) % m_Frames;
                const float l = other.m_Left[from], rr = other.m_Right[from];
                m_Left[i] += static_cast<float>(gain) * (swap ? rr : l);
                m_Right[i] += static_cast<float>(gain) * (swap ? l : rr);
            }
        }
    }

    // The interleaved stereo result.
    Audio Interleaved() const
    {
        Audio audio;
        audio.Channels = 2;
        audio.Samples.resize(m_Frames * 2);
        for (std::size_t i = 0; i < m_Frames; ++i)
        {
            audio.Samples[2 * i] = m_Left[i];
            audio.Samples[2 * i + 1] = m_Right[i];
        }
        return audio;
    }

private:
    double m_FramesPerBeat;
    std::size_t m_Frames;
    std::vector<float> m_Left;
    std::vector<float> m_Right;
};

struct Note
{
    // Start in beats from the phrase's start.
    double Beat;
    // Held for this many beats.
    double Length;
    // MIDI note number.
    double Pitch;
};

struct Chord
{
    // The bass note (MIDI).
    double Root;
    // The pad's notes (MIDI).
    std::vector<double> Tones;
};

// Seeds for the drum voices: one per hit, counted up through the song.
struct SeedCounter
{
    std::uint32_t Next = 1;
    std::uint32_t operator()() { return Next++ * 2654435761u; }
};

// ---- PlayLoop and PlayLoopIntense: A minor, Am F C G, two bars each ----

constexpr double kPlayTempo = 128.0;
constexpr int kPlayBars = 16;

const std::vector<Chord>& PlayChords()
{
    static const std::vector<Chord> chords = {
        {45.0, {57.0, 60.0, 64.0, 69.0}}, // Am
        {41.0, {53.0, 57.0, 60.0, 65.0}}, // F
        {48.0, {55.0, 60.0, 64.0, 67.0}}, // C
        {43.0, {55.0, 59.0, 62.0, 67.0}}, // G
    };
    return chords;
}

// Eight bars of the play melody, over the four chords.
const std::vector<Note>& PlayMelody()
{
    static const std::vector<Note> melody = {
        {0, 1, 76},    {1, 0.5, 74},  {1.5, 0.5, 72}, {2, 1, 69},    {3, 1, 72},    {4, 1.5, 76},  {5.5, 0.5, 74},
        {6, 1, 72},    {7, 1, 71},    {8, 1, 69},     {9, 1, 72},    {10, 1.5, 77}, {11.5, 0.5, 76}, {12, 2, 72},
        {14, 1, 69},   {15, 1, 72},   {16, 1, 79},    {17, 1, 76},   {18, 1, 72},   {19, 1, 76},   {20, 1.5, 79},
        {21.5, 0.5, 81}, {22, 1, 79}, {23, 1, 76},    {24, 1.5, 74}, {25.5, 0.5, 71}, {26, 1, 67}, {27, 1, 71},
        {28, 2, 74},   {30, 1, 71},   {31, 1, 76},
    };
    return melody;
}

Audio MakePlay(bool intense)
{
    LoopMix mix(kPlayTempo, kPlayBars);
    LoopMix lead(kPlayTempo, kPlayBars);
    SeedCounter seed;
    const std::vector<Chord>& chords = PlayChords();
    const int totalBeats = kPlayBars * 4;

    for (int bar = 0; bar < kPlayBars; ++bar)
    {
        const Chord& chord = chords[(bar / 2) % chords.size()];
        const double barBeat = bar * 4.0;
        // Pads: one note per chord, held two bars, a detuned pair per side.
        if (bar % 2 == 0)
        {
            const double cutoff = intense ? 2600.0 : 1600.0;
            for (std::size_t t = 0; t < chord.Tones.size(); ++t)
            {
                const double held = mix.Seconds(7.8);
                const double phase = 0.17 * static_cast<double>(t);
                mix.AddSide(barBeat, Pad(chord.Tones[t], held, 9.0, phase, cutoff), intense ? 0.11 : 0.1, 0);
                mix.AddSide(barBeat, Pad(chord.Tones[t], held, 13.0, phase + 0.4, cutoff), intense ? 0.11 : 0.1, 1);
            }
        }
        // Bass: eighths with an octave jump, or driving sixteenths.
        const int steps = intense ? 16 : 8;
        for (int s = 0; s < steps; ++s)
        {
            const double step = 4.0 / steps;
            const bool up = intense ? (s % 4 == 2) : (s % 4 == 3);
            mix.Add(barBeat + s * step, Bass(chord.Root + (up ? 12.0 : 0.0), mix.Seconds(step * 0.8), intense ? 0.7 : 0.4),
                    intense ? 0.34 : 0.36);
        }
        // Drums.
        const std::vector<double> kicks = intense ? std::vector<double>{0, 1, 2, 2.75, 3, 3.5} : std::vector<double>{0, 1.5, 2};
        for (double k : kicks)
            mix.Add(barBeat + k, Kick(45.0, 0.14), intense ? 0.75 : 0.7);
        for (double s : {1.0, 3.0})
            mix.Add(barBeat + s, Snare(seed(), 0.09), intense ? 0.45 : 0.4, 0.1);
        if (intense && bar % 4 == 3)
            for (double s : {3.25, 3.5, 3.75})
                mix.Add(barBeat + s, Snare(seed(), 0.05), 0.25, -0.1);
        const int hats = intense ? 16 : 8;
        for (int h = 0; h < hats; ++h)
        {
            const double accent = (h % (hats / 4) == hats / 8) ? 1.0 : 0.55;
            const bool open = !intense && h % 4 == 3;
            mix.Add(barBeat + h * 4.0 / hats, HiHat(seed(), open ? 0.12 : 0.03), 0.18 * accent, 0.35);
        }
        if (intense && bar % 8 == 0)
            mix.Add(barBeat, Crash(seed()), 0.3, -0.3);
        // Arpeggio of the chord's tones an octave up, in sixteenths.
        if (intense)
            for (int a = 0; a < 16; ++a)
            {
                static const int pattern[8] = {0, 1, 2, 3, 2, 1, 2, 3};
                const double pitch = chord.Tones[static_cast<std::size_t>(pattern[a % 8])] + 12.0;
                mix.Add(barBeat + a * 0.25, Pluck(pitch, mix.Seconds(0.2)), 0.09, a % 2 == 0 ? -0.5 : 0.5);
            }
    }
    // The melody: the first eight bars as written, the next an octave up.
    for (int half = 0; half < 2; ++half)
        for (const Note& note : PlayMelody())
        {
            const double pitch = note.Pitch + (half == 1 ? 12.0 : 0.0);
            const double beat = half * totalBeats / 2.0 + note.Beat;
            lead.Add(beat, Lead(pitch, mix.Seconds(note.Length * 0.9), intense ? 0.8 : 0.5), 0.22, -0.15);
            if (intense)
                lead.Add(beat, Lead(pitch - 12.0, mix.Seconds(note.Length * 0.9), 0.6), 0.14, 0.15);
        }
    mix.AddWithEcho(lead, 0.75, 0.35, 3);

    Audio audio = mix.Interleaved();
    if (intense)
    {
        NormalisePeak(audio, 1.0f);
        Saturate(audio, 1.3f);
        NormalisePeak(audio, 0.85f);
    }
    else
        NormalisePeak(audio, 0.75f);
    return audio;
}
}

std::size_t FramesPerBar(double beatsPerMinute)
{
    return static_cast<std::size_t>(std::llround(4.0 * 60.0 * kSampleRate / beatsPerMinute));
}

Audio MakeMenuLoop()
{
    constexpr double tempo = 80.0;
    constexpr int bars = 8;
    LoopMix mix(tempo, bars);
    LoopMix lead(tempo, bars);
    SeedCounter seed;
    // Dmaj7, Bm7, Gmaj7, A: two bars each.
    const std::vector<Chord> chords = {
        {38.0, {50.0, 54.0, 57.0, 61.0}},
        {35.0, {50.0, 54.0, 57.0, 59.0}},
        {43.0, {55.0, 59.0, 62.0, 66.0}},
        {45.0, {52.0, 57.0, 61.0, 64.0}},
    };
    for (int bar = 0; bar < bars; ++bar)
    {
        const Chord& chord = chords[bar / 2];
        const double barBeat = bar * 4.0;
        if (bar % 2 == 0)
        {
            for (std::size_t t = 0; t < chord.Tones.size(); ++t)
            {
                const double held = mix.Seconds(7.5);
                const double phase = 0.23 * static_cast<double>(t);
                mix.AddSide(barBeat, Pad(chord.Tones[t], held, 7.0, phase, 1100.0), 0.12, 0);
                mix.AddSide(barBeat, Pad(chord.Tones[t], held, 11.0, phase + 0.5, 1100.0), 0.12, 1);
            }
        }
        // A soft bass: the root on one, a fifth on three.
        mix.Add(barBeat, Bass(chord.Root, mix.Seconds(1.8), 0.0), 0.35);
        mix.Add(barBeat + 2.0, Bass(chord.Root + 7.0, mix.Seconds(1.8), 0.0), 0.28);
        // A soft kick on one and on the "and" of three, a quiet shaker in eighths.
        mix.Add(barBeat, Kick(42.0, 0.2), 0.45);
        mix.Add(barBeat + 2.5, Kick(42.0, 0.2), 0.3);
        for (int h = 0; h < 8; ++h)
            mix.Add(barBeat + h * 0.5, HiHat(seed(), 0.045), h % 2 == 1 ? 0.09 : 0.05, 0.4);
        mix.Add(barBeat + 3.0, Snare(seed(), 0.05), 0.12, -0.2);
    }
    const std::vector<Note> melody = {
        {0, 2, 78},  {2, 1, 76},  {3, 1, 74},  {4, 3, 69},  {7, 1, 71},  {8, 2, 74},  {10, 1, 73}, {11, 1, 71},
        {12, 4, 66}, {16, 1, 67}, {17, 1, 71}, {18, 2, 74}, {20, 2, 78}, {22, 2, 76}, {24, 2, 76}, {26, 2, 73},
        {28, 4, 69},
    };
    for (const Note& note : melody)
        lead.Add(note.Beat, SoftLead(note.Pitch, mix.Seconds(note.Length * 0.95)), 0.25, 0.1);
    mix.AddWithEcho(lead, 1.5, 0.4, 4);
    Audio audio = mix.Interleaved();
    NormalisePeak(audio, 0.5f);
    return audio;
}

Audio MakePlayLoop()
{
    return MakePlay(false);
}

Audio MakePlayLoopIntense()
{
    return MakePlay(true);
}
}
