#include "ui/TitleBox.h"

#include "ui/ToFront.h"
#include "ui_TitleBox.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QWindow>

namespace velmora {

TitleBox::TitleBox(const QString &name, Qt::WindowFlags kind)
    : QWidget(nullptr, kind)
    , ui_(std::make_unique<Ui::TitleBox>())
{
    ui_->setupUi(this);
    setObjectName(name);
    setWindowTitle(QCoreApplication::applicationName());
    ui_->lblProductName->setText(QCoreApplication::applicationName());
    ui_->lblVersion->setText(QStringLiteral("Version ") + QCoreApplication::applicationVersion());
    ui_->hint->hide();
    ui_->Frame1->installEventFilter(this);
}

TitleBox::~TitleBox() = default;

void TitleBox::present()
{
    adjustSize();
    move(screen()->availableGeometry().center() - rect().center());
    show();
}

void TitleBox::say(const QString &text)
{
    ui_->hint->setText(text);
    ui_->hint->show();
}

// Window managers ask which window another belongs to when it is shown, and keep it above that one.
void frmSplash::standAbove(QWidget &window)
{
    if (!isVisible()) {
        return;
    }
    hide();
    windowHandle()->setTransientParent(window.windowHandle());
    show();
}

void frmQuitte::present()
{
    TitleBox::present();
    bringToFront(*this);
}

// A key held down when the box appeared was meant for another window.
void TitleBox::keyPressEvent(QKeyEvent *event)
{
    if (!event->isAutoRepeat()) {
        dismiss();
    }
}

bool TitleBox::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress) {
        dismiss();
    }
    return QWidget::eventFilter(watched, event);
}

void TitleBox::dismiss()
{
    close();
    Q_EMIT dismissed();
}

} // namespace velmora
