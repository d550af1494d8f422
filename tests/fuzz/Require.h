// Conditions that must hold for every input of a fuzz program.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace velmora::fuzz {

/// Ends the program, which libFuzzer reports as a finding, when the condition does not hold.
inline void require(bool holds, const char *what)
{
    if (!holds) {
        std::fprintf(stderr, "This does not hold: %s\n", what);
        std::abort();
    }
}

} // namespace velmora::fuzz
