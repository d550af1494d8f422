// Proves that the event loop was not held up, by counting its turns: the count is the same on a
// fast machine and on a loaded one.
#pragma once

#include <QTimer>

#include <functional>
#include <utility>

namespace velmora::test {

/// Counts the turns of the event loop, which does not go idle meanwhile.
class LoopTurns
{
public:
    LoopTurns()
    {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { count(); });
        timer_.start(0);
    }

    /// Turns since the counter was made, or since restart().
    [[nodiscard]] int turns() const { return turns_; }

    void restart() { turns_ = 0; }

    /// Makes a call after that many more turns of the loop.
    void then(int turns, std::function<void()> call)
    {
        dueAt_ = turns_ + turns;
        call_ = std::move(call);
    }

private:
    void count()
    {
        ++turns_;
        if (call_ && turns_ >= dueAt_) {
            std::exchange(call_, nullptr)();
        }
    }

    QTimer timer_;
    int turns_ = 0;
    int dueAt_ = 0;
    std::function<void()> call_;
};

} // namespace velmora::test
