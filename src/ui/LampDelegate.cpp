#include "ui/LampDelegate.h"

#include "ui/Lamp.h"

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

QIcon lampIcon(QSize size, qreal scale, HealthTable::State state)
{
    QPixmap lamp(size * scale);
    lamp.setDevicePixelRatio(scale);
    lamp.fill(Qt::transparent);
    QPainter painter(&lamp);
    paintLamp(painter, QRectF({}, QSizeF(size)).adjusted(1, 1, -1, -1), colourOf(state));
    painter.end();
    QIcon icon(lamp);
    icon.addPixmap(lamp, QIcon::Selected);
    return icon;
}

} // namespace

const QIcon &LampDelegate::icon(QSize size, qreal scale, HealthTable::State state) const
{
    const Icons::Made made{size, scale};
    if (icons_.made != made) {
        icons_ = {made, {}};
    }
    QIcon &icon = icons_.icons.at(static_cast<std::size_t>(state));
    if (icon.isNull()) {
        icon = lampIcon(size, scale, state);
    }
    return icon;
}

void LampDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const auto state = static_cast<HealthTable::State>(index.data(HealthTable::kStateRole).toInt());
    const qreal scale = option->widget != nullptr ? option->widget->devicePixelRatioF() : 1;
    option->features |= QStyleOptionViewItem::HasDecoration;
    option->icon = icon(option->decorationSize, scale, state);
}

} // namespace velmora
