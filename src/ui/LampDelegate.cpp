#include "ui/LampDelegate.h"

#include "ui/Lamp.h"

#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QWidget>

namespace velmora {

void LampDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const auto colour = index.data(Qt::DecorationRole).value<QColor>();
    const qreal scale = option->widget != nullptr ? option->widget->devicePixelRatioF() : 1;
    QPixmap lamp(option->decorationSize * scale);
    lamp.setDevicePixelRatio(scale);
    lamp.fill(Qt::transparent);
    QPainter painter(&lamp);
    paintLamp(painter, QRectF({}, QSizeF(option->decorationSize)).adjusted(1, 1, -1, -1), colour);
    painter.end();
    option->icon = QIcon(lamp);
    option->icon.addPixmap(lamp, QIcon::Selected);
}

} // namespace velmora
