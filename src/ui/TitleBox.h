// The boxes that the program shows when it starts and when it closes: its title and version.
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

/// Any key, and a click on its frame, dismisses the box.
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

/// The start-up box. The keyboard is that of the window which comes up meanwhile.
class frmSplash final : public TitleBox
{
    Q_OBJECT

public:
    frmSplash()
        : TitleBox(QStringLiteral("frmSplash"), Qt::SplashScreen)
    {
        setAttribute(Qt::WA_ShowWithoutActivating);
    }

    /// While the box is shown: from now on it stands above this window, which is shown, and leaves
    /// it the keyboard.
    void standAbove(QWidget &window);
};

/// The closing box, shown while the last pass runs. It has the keyboard, and says what it waits for
/// and what ends that.
class frmQuitte final : public TitleBox
{
    Q_OBJECT

public:
    frmQuitte()
        : TitleBox(QStringLiteral("frmQuitte"), Qt::Window | Qt::FramelessWindowHint)
    {
        say(tr("A last pass over the cameras is being ended.\n"
               "Any key or a click gives it up."));
    }

    void present();
};

} // namespace velmora
