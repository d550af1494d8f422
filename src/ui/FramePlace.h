// Where a window's frame stands on the screen: to be stored, and to come back to.
#pragma once

#include <QWidget>

#include <optional>
#include <utility>

namespace velmora {

/// A window's place is the upper left corner of its frame, under every window manager: the place
/// that corner() gives is the one where moveTo() brings the window back. How large a frame is shows
/// only once the window manager has made it; the place is put right at that moment, also when the
/// title bar would be out of reach.
class FramePlace : public QObject
{
    Q_OBJECT

public:
    /// Belongs to the window.
    explicit FramePlace(QWidget &window);

    /// corner: in pixels of the screen.
    void moveTo(QPoint corner);

    /// Where the window stands; for one that fills the screen, where it stood before.
    [[nodiscard]] QPoint corner() const;

Q_SIGNALS:
    /// The window has its frame, and is about to be put into its place. Whoever wants it smaller
    /// there resizes it now. frame: with the window in it, in that place.
    void framed(const QRect &frame);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void settle();
    [[nodiscard]] QPoint reachable(const QRect &frame, int titleHeight) const;

    QWidget &window_;
    std::optional<QPoint> wanted_; // until the window has its frame
};

} // namespace velmora
