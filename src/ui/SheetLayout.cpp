#include "ui/SheetLayout.h"

#include <algorithm>
#include <cmath>

namespace velmora {
namespace {

constexpr int kCellWidth = 3600; // twips
constexpr int kCellHeight = 2700;
constexpr int kZoomWidth = 10815;
constexpr int kZoomHeight = 8130;
constexpr int kColumns = 3;
constexpr int kBlockCells = 9;
constexpr int kSheetWidth = kColumns * kCellWidth;
constexpr int kSheetHeight = 4 * kCellHeight;

int rounded(double value)
{
    return static_cast<int>(std::lround(value));
}

} // namespace

SheetLayout::SheetLayout(QSize room)
    : pixelsPerTwip_(std::min(static_cast<double>(room.width()) / kSheetWidth,
                              static_cast<double>(room.height()) / kSheetHeight))
    , origin_(rounded((room.width() - kSheetWidth * pixelsPerTwip_) / 2),
              rounded((room.height() - kSheetHeight * pixelsPerTwip_) / 2))
{
}

double SheetLayout::scale() const
{
    return pixelsPerTwip_ * kSheetWidth / kUsual.width();
}

// Edges are rounded, not sizes, so that neighbours touch.
QRect SheetLayout::scaled(int left, int top, int width, int height) const
{
    const QPoint from(rounded(left * pixelsPerTwip_), rounded(top * pixelsPerTwip_));
    const QPoint to(rounded((left + width) * pixelsPerTwip_),
                    rounded((top + height) * pixelsPerTwip_));
    return QRect(from, QSize(to.x() - from.x(), to.y() - from.y())).translated(origin_);
}

QRect SheetLayout::cell(int index) const
{
    const bool alone = index >= kBlockCells;
    const int column = alone ? kColumns - 1 : index % kColumns;
    const int row = index / kColumns;
    return scaled(column * kCellWidth, row * kCellHeight, kCellWidth, kCellHeight);
}

QRect SheetLayout::zoom() const
{
    return scaled(0, 0, kZoomWidth, kZoomHeight);
}

QRect SheetLayout::controls() const
{
    return scaled(0, kColumns * kCellHeight, (kColumns - 1) * kCellWidth, kCellHeight);
}

} // namespace velmora
