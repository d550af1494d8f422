#include "ui/TitleBox.h"

#include "ui_TitleBox.h"

#include <QCoreApplication>
#include <QEvent>
#include <QScreen>

namespace velmora {

TitleBox::TitleBox(const QString &name)
    : QWidget(nullptr, Qt::SplashScreen)
    , ui_(std::make_unique<Ui::TitleBox>())
{
    ui_->setupUi(this);
    setObjectName(name);
    setWindowTitle(QCoreApplication::applicationName());
    ui_->lblProductName->setText(QCoreApplication::applicationName());
    ui_->lblVersion->setText(QStringLiteral("Version ") + QCoreApplication::applicationVersion());
    ui_->Frame1->installEventFilter(this);
}

TitleBox::~TitleBox() = default;

void TitleBox::present()
{
    adjustSize();
    move(screen()->availableGeometry().center() - rect().center());
    show();
}

void TitleBox::keyPressEvent(QKeyEvent *)
{
    dismiss();
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
