#include "ui/FrameReach.h"

#include <algorithm>
#include <limits>

namespace velmora {
namespace {

constexpr int kGrip = 100; // pixels of a title bar besides its buttons

struct Reach
{
    QRect frame;
    int titleHeight = 0;

    [[nodiscard]] int grip() const { return std::min(kGrip, frame.width()); }

    [[nodiscard]] bool holds(const QRect &screen) const
    {
        const QRect seen = screen & frame;
        if (seen.width() < grip()) {
            return false;
        }
        return titleHeight > 0 ? frame.top() >= screen.top() &&
                                     frame.top() + titleHeight <= screen.top() + screen.height()
                               : seen.height() >= std::min(kGrip, frame.height());
    }

    [[nodiscard]] QPoint nearestCorner(const QRect &screen) const
    {
        const int head = titleHeight > 0 ? titleHeight : std::min(kGrip, frame.height());
        const int lowest = std::max(screen.top(), screen.top() + screen.height() - head);
        const int leftmost = screen.left() + grip() - frame.width();
        const int rightmost = std::max(leftmost, screen.left() + screen.width() - grip());
        return {std::clamp(frame.left(), leftmost, rightmost),
                std::clamp(frame.top(), screen.top(), lowest)};
    }
};

} // namespace

QPoint cornerInReach(const QRect &frame, int titleHeight, const QList<QRect> &screens)
{
    const Reach reach{frame, titleHeight};
    QPoint nearest = frame.topLeft();
    int shortest = std::numeric_limits<int>::max();
    for (const QRect &screen : screens) {
        if (reach.holds(screen)) {
            return frame.topLeft();
        }
        const QPoint corner = reach.nearestCorner(screen);
        const int way = (corner - frame.topLeft()).manhattanLength();
        if (way < shortest) {
            shortest = way;
            nearest = corner;
        }
    }
    return nearest;
}

} // namespace velmora
