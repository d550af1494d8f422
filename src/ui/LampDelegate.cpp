#include "ui/LampDelegate.h"

#include "health/HealthTable.h"
#include "ui/Lamp.h"

#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QWidget>

namespace velmora {
namespace {

QColor colourOf(HealthTable::State state)
{
    switch (state) {
    case HealthTable::State::Late:
        return Qt::red;
    case HealthTable::State::Failing:
        return {255, 128, 0};
    case HealthTable::State::Unknown:
        return Qt::gray;
    case HealthTable::State::Good:
        break;
    }
    return {0, 200, 0};
}

} // namespace

void LampDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const auto state = static_cast<HealthTable::State>(index.data(HealthTable::kStateRole).toInt());
    const qreal scale = option->widget != nullptr ? option->widget->devicePixelRatioF() : 1;
    QPixmap lamp(option->decorationSize * scale);
    lamp.setDevicePixelRatio(scale);
    lamp.fill(Qt::transparent);
    QPainter painter(&lamp);
    paintLamp(painter, QRectF({}, QSizeF(option->decorationSize)).adjusted(1, 1, -1, -1),
              colourOf(state));
    painter.end();
    option->features |= QStyleOptionViewItem::HasDecoration;
    option->icon = QIcon(lamp);
    option->icon.addPixmap(lamp, QIcon::Selected);
}

} // namespace velmora
