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
    TitleBox(const TitleBox &) = delete;
    TitleBox &operator=(const TitleBox &) = delete;
    TitleBox(TitleBox &&) = delete;
    TitleBox &operator=(TitleBox &&) = delete;
    ~TitleBox() override;

    /// Shows the box in the middle of the screen.
    void present();

Q_SIGNALS:
    void dismissed();

protected:
    explicit TitleBox(const QString &name);

    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void dismiss();

    std::unique_ptr<Ui::TitleBox> ui_;
};

/// The start-up box.
class frmSplash final : public TitleBox
{
    Q_OBJECT

public:
    frmSplash()
        : TitleBox(QStringLiteral("frmSplash"))
    {
    }
};

/// The closing box, shown while the last pass runs.
class frmQuitte final : public TitleBox
{
    Q_OBJECT

public:
    frmQuitte()
        : TitleBox(QStringLiteral("frmQuitte"))
    {
    }
};

} // namespace velmora
