// The slideshow as the browser sees it.
#pragma once

#include <QObject>

namespace velmora {

class Projector : public QObject
{
    Q_OBJECT

public:
    /// True while its window is open.
    [[nodiscard]] virtual bool isOpen() const = 0;

    /// True while it is open and not paused.
    [[nodiscard]] virtual bool isPlaying() const = 0;

    /// True while its timer runs.
    [[nodiscard]] virtual bool isRunning() const = 0;

    virtual void stopTimer() = 0;
    virtual void startTimer() = 0;

    /// While held, its timer stands still, whatever would start it. Releasing it starts nothing.
    virtual void setHeld(bool held) = 0;

    /// Opens it, or restarts it, on the files that the browser lists.
    virtual void begin() = 0;

    /// The image at this position of the list, from 0, is shown next.
    virtual void moveTo(int index) = 0;

    /// Closes its window.
    virtual void close() = 0;

Q_SIGNALS:
    /// Its window was closed, by whatever means.
    void closed();

    /// The browser is to select this entry of its list, from 0.
    void fileChosen(int index);
};

} // namespace velmora
