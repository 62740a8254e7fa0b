#include "input/InputRecorder.h"

InputRecorder& InputRecorder::Get()
{
    static InputRecorder recorder;
    return recorder;
}
