// The place of a window's frame on the screen: to be stored, and restored.
#pragma once

#include <QWidget>

#include <optional>
#include <utility>

namespace velmora {

/// A window's place is the upper left corner of its frame, under every window manager: the place
/// that corner() gives is where moveTo() puts the window again. The size of a frame is known only
/// once the window manager has made it; the place is corrected at that moment, also when the title
/// bar would be out of reach.
class FramePlace : public QObject
{
    Q_OBJECT

public:
    /// Belongs to the window.
    explicit FramePlace(QWidget &window);

    /// corner: in pixels of the screen.
    void moveTo(QPoint corner);

    /// The window's place; for a maximised or full-screen window, its place before that.
    [[nodiscard]] QPoint corner() const;

Q_SIGNALS:
    /// The window has its frame, and is about to be moved to its place. To make it smaller there,
    /// resize it now. frame: that of the window in its new place.
    void framed(const QRect &frame);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void settle();
    [[nodiscard]] QPoint reachable(const QRect &frame, int titleHeight) const;

    QWidget &window_;
    std::optional<QPoint> wanted_; // set until the window has its frame
};

} // namespace velmora
