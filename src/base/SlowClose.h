// Closes long files that have no name any more, a part of them in each turn of the event loop.
#pragma once

#include "base/UniqueFd.h"

#include <QTimer>

#include <deque>

namespace velmora {

/// To give back a file of 64 MiB in one go takes the system more than a turn may last. Whatever is
/// left when the object goes is closed at once.
class SlowClose
{
public:
    SlowClose();
    Q_DISABLE_COPY_MOVE(SlowClose)
    ~SlowClose() = default;

    /// Takes an open file. One that has a name, and a short one, is closed at once and left as it
    /// is.
    void take(UniqueFd file);

    /// Number of files that are still open.
    [[nodiscard]] int open() const { return static_cast<int>(files_.size()); }

private:
    void shortenFirst();

    std::deque<UniqueFd> files_;
    QTimer turns_;
};

} // namespace velmora
