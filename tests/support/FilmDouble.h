// A slideshow without a window or a timer of its own: it records what the browser asks of it.
#pragma once

#include "browser/Projector.h"

#include <QStringList>

namespace velmora::test {

class FilmDouble final : public Projector
{
public:
    [[nodiscard]] bool isOpen() const override { return open; }

    [[nodiscard]] bool isPlaying() const override { return open && readsPause; }

    [[nodiscard]] bool isRunning() const override { return running; }

    void stopTimer() override
    {
        calls.append(QStringLiteral("stop"));
        running = false;
    }

    void startTimer() override
    {
        calls.append(QStringLiteral("start"));
        running = !held;
    }

    void setHeld(bool isHeld) override
    {
        held = isHeld;
        if (held && running) {
            stopTimer();
        }
    }

    void begin() override
    {
        calls.append(QStringLiteral("begin"));
        open = true;
        running = readsPause;
    }

    void moveTo(int index) override { calls.append(QStringLiteral("move to %1").arg(index)); }

    void close() override
    {
        calls.append(QStringLiteral("close"));
        open = false;
        running = false;
        Q_EMIT closed();
    }

    /// Opened by hand, and playing.
    void play()
    {
        open = true;
        readsPause = true;
        running = true;
    }

    /// Opened by hand, and paused.
    void pause()
    {
        open = true;
        readsPause = false;
        running = false;
    }

    bool open = false;
    bool readsPause = true; // its play button's caption: true while it plays
    bool running = false;
    bool held = false;
    QStringList calls;
};

} // namespace velmora::test
