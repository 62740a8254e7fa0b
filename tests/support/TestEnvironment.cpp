// The environment every test program runs in, set before any test starts unless
// the caller set it already: no window on screen (SDL's offscreen driver, which
// still gives an OpenGL context), no sound device, error dialogs answered
// Abort, and the application data folder inside the build folder. CTest can
// pass only one environment variable through the test discovery, so the
// programs set the rest themselves; a test run by hand gets the same.
#include <cstdlib>

namespace
{
struct TestEnvironment
{
    TestEnvironment()
    {
        setenv("SDL_VIDEODRIVER", "offscreen", 0);
        setenv("SDL_AUDIODRIVER", "dummy", 0);
        setenv("VORN_DIALOG_ANSWER", "abort", 0);
        setenv("VORN_APPDATA_DIR", VORN_TEST_APPDATA_DIR, 0);
    }
};

const TestEnvironment g_TestEnvironment;
}
