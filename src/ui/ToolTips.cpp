#include "ui/ToolTips.h"

#include <QTextDocument>
#include <QWidget>

namespace velmora {

void setPlainToolTip(QWidget &widget, const QString &text)
{
    widget.setToolTip(Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text);
}

} // namespace velmora
