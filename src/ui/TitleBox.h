// The boxes shown while the program starts and closes: its title and version.
//
//   TitleBox
//     Frame1
//       lblProductName
//       lblVersion
#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class TitleBox;
}

namespace velmora {

/// Any key, or a click on its frame, dismisses the box.
class TitleBox : public QWidget
{
    Q_OBJECT

public:
    Q_DISABLE_COPY_MOVE(TitleBox)
    ~TitleBox() override;

    /// Shows the box in the middle of the screen.
    void present();

Q_SIGNALS:
    void dismissed();

protected:
    TitleBox(const QString &name, Qt::WindowFlags kind);

    /// A line below the version.
    void say(const QString &text);

    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void dismiss();

    std::unique_ptr<Ui::TitleBox> ui_;
};

/// The start-up box. The keyboard focus is left to the window that appears meanwhile.
class frmSplash final : public TitleBox
{
    Q_OBJECT

public:
    frmSplash()
        : TitleBox(QStringLiteral("frmSplash"), Qt::SplashScreen)
    {
        setAttribute(Qt::WA_ShowWithoutActivating);
    }

    /// Keeps the box, while it is shown, above this window, which is shown too and keeps the
    /// keyboard focus.
    void standAbove(QWidget &window);
};

/// The closing box, shown while the last pass runs. It has the keyboard focus, and says what it is
/// waiting for and how to end that.
class frmQuitte final : public TitleBox
{
    Q_OBJECT

public:
    frmQuitte()
        : TitleBox(QStringLiteral("frmQuitte"), Qt::Window | Qt::FramelessWindowHint)
    {
        say(tr("The last pass over the cameras is ending.\n"
               "Any key or a click gives it up."));
    }

    void present();
};

} // namespace velmora
