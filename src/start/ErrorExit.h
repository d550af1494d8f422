// How an error that has reached the top level ends the program, whatever else goes wrong.
#pragma once

#include <functional>

namespace velmora {

class ErrorExit
{
public:
    /// Starts the way out. Without the memory for that, and at a second error on the way, the
    /// program exits at once. False at a second error.
    [[nodiscard]] bool begin(const std::function<void()> &leave);

private:
    bool began_ = false;
};

} // namespace velmora
