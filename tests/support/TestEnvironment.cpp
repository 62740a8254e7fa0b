// The environment every test program runs in, set before any test starts unless
// the caller set it already: no window on screen (SDL's offscreen driver, which
// still gives an OpenGL context), no sound device (SDL's dummy driver, and
// OpenAL Soft's null output, which plays in time and is heard nowhere; the sound
// tests mix through OpenAL Soft's loopback device instead), error dialogs answered
// Abort, the application data folder inside the build folder, and Mesa's
// software rasterizer drawing on the calling thread: its worker threads
// outlive the GL context, and LeakSanitizer's stop-the-world pass at exit now
// and then crashed on them (it also keeps the tests from competing for the
// cores with each other's rasterizer threads); for the same reason Mesa keeps no
// shader cache, whose writer is another thread. CTest can
// pass only one environment variable through the test discovery, so the
// programs set the rest themselves; a test run by hand gets the same.
//
// That one variable is ASAN_OPTIONS, and the game started by the end-to-end
// tests inherits it: LeakSanitizer stops tracking blocks of dynamically loaded
// thread-local storage (intercept_tls_get_addr=0), because for some runs of
// the game its record of them held a bogus block (seen as "DTLS ... at 0x17de")
// and its exit pass crashed reading it ("Tracer caught signal 11"). A test run
// by hand passes the same to the programs it starts.
#include <cstdlib>

namespace
{
struct TestEnvironment
{
    TestEnvironment()
    {
        setenv("SDL_VIDEODRIVER", "offscreen", 0);
        setenv("SDL_AUDIODRIVER", "dummy", 0);
        setenv("ALSOFT_DRIVERS", "null", 0);
        setenv("VORN_DIALOG_ANSWER", "abort", 0);
        setenv("VORN_APPDATA_DIR", VORN_TEST_APPDATA_DIR, 0);
        setenv("LP_NUM_THREADS", "0", 0);
        setenv("MESA_SHADER_CACHE_DISABLE", "true", 0);
        setenv("ASAN_OPTIONS", "detect_leaks=1:intercept_tls_get_addr=0", 0);
    }
};

const TestEnvironment g_TestEnvironment;
}
