#include "ui/WindowKeys.h"

#include <QShortcut>
#include <QWidget>

namespace velmora {

QShortcut &addKeys(QWidget &owner, const QKeySequence &keys)
{
    auto *const shortcut = new QShortcut(keys, &owner);
    shortcut->setAutoRepeat(false);
    return *shortcut;
}

void closeOnEscape(QWidget &window)
{
    QObject::connect(&addKeys(window, Qt::Key_Escape), &QShortcut::activated, &window,
                     &QWidget::close);
}

} // namespace velmora
