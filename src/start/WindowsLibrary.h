// The library of the program that holds its windows, and whatever else needs the toolkit's
// libraries of windows: without windows, the program loads none of them.
#pragma once

namespace velmora {

/// What the library offers: does what the command line asks for, and returns the exit status. Plain
/// C, so that a program cannot fall out with a library of another version about its classes.
using RunWithWindows = int (*)(int argc, char **argv);

/// The library's function. Throws NoLibrary.
[[nodiscard]] RunWithWindows loadWindows();

} // namespace velmora
