// Studio: the engine's sound event layer. Sound designers describe events in
// bank files (text, in the engine's data format); the game plays an event by
// its path ("event:/Music/Menu") and controls the running instance.
//
//   Studio::System* system = nullptr;
//   Studio::System::create(&system);
//   system->initialize(32, Studio::INIT_NORMAL, 0, nullptr);
//   Studio::Bank* bank = nullptr;
//   system->loadBankFile("Data/Banks/Effects.bank", Studio::LOAD_BANK_NORMAL, &bank);
//   ... for each description of the bank: createInstance, start ...
//   system->update();      // once a frame: streams music, ends finished instances
//   system->release();     // at shutdown
//
// The calls have the shape of a studio library's C++ interface: every call gives
// a Result, handles are pointers owned by the system, and ResultString turns a
// result into its message. Mixing and 3D go through OpenAL Soft, decoding through
// libsndfile (WAV, FLAC, Ogg Vorbis, Opus); long clips marked to stream are read
// from disk while they play. With no audio device the layer runs silent: every
// call works and instances end when their clips would have ended.
//
// A released instance handle is invalid at once (isValid gives false, every other
// call ERR_INVALID_HANDLE) while the sound plays on to its end; the memory of every
// handle stays until the system is released. All calls are made from one thread.
#pragma once

namespace Studio
{
// The version of this interface, checked by System::create.
constexpr unsigned kHeaderVersion = 0x10500;

// What a call gives back.
enum Result
{
    OK = 0,
    ERR_HEADER_MISMATCH,
    ERR_INVALID_PARAM,
    ERR_INVALID_HANDLE,
    ERR_UNINITIALIZED,
    ERR_INITIALIZED,
    ERR_FILE_NOTFOUND,
    ERR_FILE_BAD,
    ERR_FORMAT,
    ERR_EVENT_NOTFOUND,
    ERR_OUTPUT_INIT,
    ERR_NOTREADY,
    ERR_TRUNCATED,
    ERR_MEMORY,
    RESULT_COUNT,
};

// The message of a result, from the layer's own table ("No errors." for OK).
const char* ResultString(Result result);

// Flags of System::initialize.
enum InitFlags : unsigned
{
    // Plain playback on the default device (or silent when there is none).
    INIT_NORMAL = 0,
    // Accepted for the live-update connection of a sound designer's tool; nothing listens here.
    INIT_LIVEUPDATE = 1,
    // Mixes into OpenAL Soft's loopback device instead of a sound card; System::renderSamples
    // reads the mix. Used by tests and benchmarks.
    INIT_LOOPBACK = 0x100,
};

// Flags of System::loadBankFile.
enum LoadBankFlags : unsigned
{
    LOAD_BANK_NORMAL = 0,
};

// What an instance is doing.
enum PlaybackState
{
    PLAYBACK_PLAYING = 0,
    PLAYBACK_SUSTAINING = 1,
    PLAYBACK_STOPPED = 2,
    PLAYBACK_STARTING = 3,
    PLAYBACK_STOPPING = 4,
};

// How EventInstance::stop ends an instance.
enum StopMode
{
    // Cut at once.
    STOP_IMMEDIATE = 0,
    // Let the instance end by itself (the layer has no fades: the same as immediate).
    STOP_ALLOWFADEOUT = 1,
};

// A position and velocity in world units, for 3D events and the listener.
struct Attributes3D
{
    float position[3] = {0, 0, 0};
    float velocity[3] = {0, 0, 0};
    float forward[3] = {0, 0, 1};
    float up[3] = {0, 1, 0};
};

class Bank;
class EventDescription;
class EventInstance;
class ParameterInstance;
class SystemImpl;

// The studio system: the device, the loaded banks and every instance.
class System
{
public:
    // Makes a system; ERR_HEADER_MISMATCH when `headerVersion` is not kHeaderVersion.
    static Result create(System** system, unsigned headerVersion = kHeaderVersion);
    // Opens the output with at most `maxChannels` voices heard at once; `studioFlags` are InitFlags.
    // With no device the system runs silent and this still gives OK.
    Result initialize(int maxChannels, unsigned studioFlags, unsigned flags, void* extraDriverData);
    // Reads a bank file and its events; the clips are checked and decoded here (streamed ones
    // only opened). A clip that is missing or undecodable is reported once and its event plays
    // the remaining clips, or nothing.
    Result loadBankFile(const char* path, unsigned flags, Bank** bank);
    // Once a frame: refills streams, ends instances whose clips ran out, frees released ones.
    Result update();
    // Stops everything, frees every handle and the system itself.
    Result release();
    // Finds a loaded event by its full path ("event:/Hit").
    Result getEvent(const char* path, EventDescription** description);
    // Sets the listener of 3D events.
    Result setListenerAttributes(const Attributes3D& attributes);
    // With INIT_LOOPBACK: mixes `frames` stereo frames of 32-bit float into `samples`
    // (2 * frames values), advancing every instance by that much time.
    Result renderSamples(float* samples, int frames);
    // The output's sample rate in frames a second.
    int getSampleRate() const;
    // True when no device could be opened and the system plays nothing.
    bool isSilent() const;

private:
    System();
    ~System();
    System(const System&) = delete;
    System& operator=(const System&) = delete;
    SystemImpl* m_Impl;
};

// A loaded bank: the events of one bank file.
class Bank
{
public:
    // The number of events the bank holds.
    Result getEventCount(int* count) const;
    // Fills `array` with up to `capacity` descriptions; `count` gets how many were written.
    Result getEventList(EventDescription** array, int capacity, int* count) const;

private:
    friend class SystemImpl;
    Bank() = default;
    ~Bank() = default;
    void* m_Data = nullptr;
};

// One event of a bank: how it sounds; instances are made from it.
class EventDescription
{
public:
    // Copies the event's path ("event:/Hit") into `path` of `size` characters, cut to fit
    // (ERR_TRUNCATED then); `retrieved` gets the length with the terminator. Either may be null.
    Result getPath(char* path, int size, int* retrieved) const;
    // Makes a new stopped instance of the event.
    Result createInstance(EventInstance** instance);

private:
    friend class SystemImpl;
    EventDescription() = default;
    ~EventDescription() = default;
    void* m_Data = nullptr;
};

// One playing (or ready) sound made from a description.
class EventInstance
{
public:
    // Starts the instance from its beginning (again, if it was playing).
    Result start();
    // Stops the instance; the layer always cuts at once.
    Result stop(StopMode mode);
    // Marks the instance to be freed once it is stopped; the handle is invalid from then on.
    Result release();
    // Sets the instance's own volume, a factor on the event's volume (1 by default).
    Result setVolume(float volume);
    // The instance's own volume.
    Result getVolume(float* volume) const;
    // Pauses or resumes the instance.
    Result setPaused(bool paused);
    // Whether the instance is paused.
    Result getPaused(bool* paused) const;
    // Whether the instance plays, or has stopped (PLAYBACK_STOPPED once its clip ran out).
    Result getPlaybackState(PlaybackState* state) const;
    // False once the instance was released.
    bool isValid() const;
    // Finds a parameter of the event by name; ERR_EVENT_NOTFOUND when the event has none of that name.
    Result getParameter(const char* name, ParameterInstance** parameter);
    // Places a 3D instance; a 2D one ignores it.
    Result set3DAttributes(const Attributes3D& attributes);

private:
    friend class SystemImpl;
    EventInstance() = default;
    ~EventInstance() = default;
    void* m_Data = nullptr;
};

// One named parameter of an instance: a value in the range its bank gives, driving the
// instance's volume, pitch or choice of clip.
class ParameterInstance
{
public:
    // Sets the value, cut to the parameter's range.
    Result setValue(float value);
    // The value.
    Result getValue(float* value) const;

private:
    friend class SystemImpl;
    ParameterInstance() = default;
    ~ParameterInstance() = default;
    void* m_Data = nullptr;
};
}
