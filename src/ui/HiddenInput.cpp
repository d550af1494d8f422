#include "ui/HiddenInput.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>

namespace velmora {
namespace {

bool isInput(const QWidget &widget, QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::Drop:
        return true;
    case QEvent::Timer: // of a button: the end of a press by its access key, or a repeated one
        return qobject_cast<const QAbstractButton *>(&widget) != nullptr;
    default:
        return false;
    }
}

} // namespace

HiddenInput::HiddenInput(QObject *parent)
    : QObject(parent)
{
    qApp->installEventFilter(this);
}

bool HiddenInput::eventFilter(QObject *watched, QEvent *event)
{
    const auto *const widget = qobject_cast<QWidget *>(watched);
    return widget != nullptr && !widget->window()->isVisible() && isInput(*widget, event->type());
}

} // namespace velmora
