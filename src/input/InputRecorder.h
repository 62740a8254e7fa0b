// InputRecorder: records the window's input to a replay file and plays it back.
// The window tells it of every input message and steps it once a frame. Not
// built yet: it never records or plays back, so every message passes through
// and the options "record" and "playback" are not offered.
#pragma once

#include "platform/WindowMessage.h"

class InputRecorder
{
public:
    // The one input recorder.
    static InputRecorder& Get();

    // True while a replay plays back; the window then swallows real input.
    bool IsPlayback() const { return false; }
    // True in a mode that doesn't record.
    bool IsNotRecording() const { return true; }
    // Plays back one frame of the replay.
    void Step() {}
    // Ends the recorded frame.
    void AdvanceFrame() {}
    // An input message reached the window.
    void NoteMessage(const Platform::WindowMessage&) {}
};
