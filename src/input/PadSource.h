// PadSource: where the gamepads' readings come from and where their motor
// speeds go; the input layer's only door to real pads. A platform source reads
// pads 0 to 3 in the order they were plugged in; tests give a fake one. With no
// source installed every pad reads as missing.
#pragma once

#include "input/PadState.h"

namespace Input
{
class PadSource
{
public:
    virtual ~PadSource() = default;
    // Notices pads plugged in and out and takes their new state; called once a frame before the pads are read.
    virtual void Refresh() {}
    // Fills `state` with the controls of pad `pad` (0 to 3); false when that pad is missing.
    virtual bool ReadState(int pad, PadState& state) = 0;
    // Sets the motor speeds of pad `pad` (0 to 3).
    virtual void SetMotors(int pad, const PadMotors& motors) = 0;
};
}
