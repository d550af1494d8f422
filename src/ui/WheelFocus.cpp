#include "ui/WheelFocus.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>

namespace velmora {
namespace {

class WheelWatch final : public QObject
{
public:
    explicit WheelWatch(QWidget &box)
        : QObject(&box)
        , box_(box)
    {
        box_.installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Wheel && !box_.hasFocus()) {
            event->ignore();
            return true;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QWidget &box_;
};

} // namespace

void turnOnlyWithFocus(QWidget &box)
{
    box.setFocusPolicy(Qt::StrongFocus);
    new WheelWatch(box);
}

void turnBoxesOnlyWithFocus(const QWidget &window)
{
    for (QComboBox *const box : window.findChildren<QComboBox *>()) {
        turnOnlyWithFocus(*box);
    }
    for (QAbstractSpinBox *const box : window.findChildren<QAbstractSpinBox *>()) {
        turnOnlyWithFocus(*box);
    }
}

} // namespace velmora
