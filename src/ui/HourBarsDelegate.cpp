#include "ui/HourBarsDelegate.h"

#include "health/HealthTable.h"
#include "ui/HeatColour.h"

#include <QApplication>
#include <QPainter>

#include <algorithm>

namespace velmora {

void HourBarsDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                             const QModelIndex &index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    cell.text.clear();
    QApplication::style()->drawControl(QStyle::CE_ItemViewItem, &cell, painter, option.widget);
    const QVariantList bars = index.data(HealthTable::kBarsRole).toList();
    int most = 1;
    for (const QVariant &bar : bars) {
        most = std::max(most, bar.toInt());
    }
    const QRect room = option.rect.adjusted(3, 2, -3, -2);
    const bool isSelected = option.state & QStyle::State_Selected;
    const QColor colour =
        option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Highlight);
    const auto count = static_cast<int>(bars.size());
    for (int i = 0; i < count; ++i) {
        const int images = bars.at(i).toInt();
        const int tall = images > 0 ? std::max(2, images * room.height() / most) : 0;
        const int left = room.left() + i * room.width() / count;
        const int right = room.left() + (i + 1) * room.width() / count;
        painter->fillRect(left, room.bottom() + 1 - tall, std::max(1, right - left - 1), tall,
                          colour);
    }
    painter->fillRect(room.left(), room.bottom() + 1, room.width(), 1, lineColour(option.palette));
}

} // namespace velmora
