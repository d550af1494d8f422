// The peers of a pass: curl's process, and a loop that only fetches and writes. Both fetch the same
// pictures as the program does, from the same server and all at once, into files of a folder.
#pragma once

#include "Cameras.h"

namespace velmora::bench {

struct PeerPass
{
    double ms = 0;
    double processorMs = 0;
};

/// curl in a process of its own, its start included.
[[nodiscard]] PeerPass curlPass(const Cameras &cameras, const QString &folder);

/// The least that any program must do: connect, ask, receive and write in one loop around poll().
[[nodiscard]] PeerPass plainPass(const Cameras &cameras, const QString &folder);

} // namespace velmora::bench
