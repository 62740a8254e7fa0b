// Platform::AudioVoice: one OpenAL source, a sound heard at once. A voice plays
// either one whole buffer (SetBuffer, looped by the mixer without a gap when
// SetLooping) or a queue of buffers that a stream keeps filling.
//
// It is placed either centred on the listener (SetCentred: a stereo clip's
// channels go straight to the speakers) or in the world (SetSpatial and
// SetPosition, heard full between the listener and `minDistance`, fading to
// `maxDistance`). Every call needs the output's context to be current.
#pragma once

namespace Platform
{
class AudioVoice
{
public:
    // What the voice is doing.
    enum class State
    {
        Playing,
        Paused,
        Stopped,
    };

    AudioVoice() = default;
    // Frees the source.
    ~AudioVoice();
    AudioVoice(const AudioVoice&) = delete;
    AudioVoice& operator=(const AudioVoice&) = delete;

    // Makes the source; false when the mixer has no more.
    bool Create();
    // Stops and frees the source.
    void Destroy();
    // Stops, rewinds and detaches every buffer, ready for the next sound.
    void Reset();
    // Plays one whole buffer.
    void SetBuffer(unsigned buffer);
    // Appends a buffer to the queue of a streamed sound.
    void QueueBuffer(unsigned buffer);
    // Takes played buffers off the queue into `buffers` (at most `capacity`); gives how many.
    int UnqueuePlayed(unsigned* buffers, int capacity);
    // Starts or resumes.
    void Play();
    // Pauses where it is.
    void Pause();
    // Stops.
    void Stop();
    // What the voice is doing.
    State GetState() const;
    // Loudness factor (may pass 1).
    void SetGain(float gain);
    // Playback speed factor, which also shifts the pitch.
    void SetPitch(float pitch);
    // Whether a whole buffer repeats.
    void SetLooping(bool looping);
    // Heard at the listener; a stereo clip keeps its channels.
    void SetCentred(bool stereo);
    // Heard from a place in the world, full up to `minDistance` and fading to `maxDistance`.
    void SetSpatial(float minDistance, float maxDistance);
    // The place and velocity of a spatial voice, in the engine's left-handed world (x right, y up, z forward).
    void SetPosition(const float position[3], const float velocity[3]);

private:
    unsigned m_Source = 0;
    bool m_Made = false;
};
}
