// WinMain: the program's start-up and shutdown, in their fixed order. Systems,
// spaces and space systems come into being in exactly this order, and the rest
// of the engine relies on it. `main` hands it the whole command line.
#pragma once

// Runs the game from start-up to shutdown; returns the process exit code.
int WinMain(const char* commandLine);
