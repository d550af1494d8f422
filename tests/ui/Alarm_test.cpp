// The motion alarm's window, used with the mouse and the keys.
#include "ui/Alarm.h"

#include "BrowserWindowHouse.h"
#include "support/MailDouble.h"

#include <QAbstractButton>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <functional>

namespace velmora::test {
namespace {

const QString kVide = QStringLiteral("iVide");
const QString kButton = QStringLiteral("Command1");
const QString kStatus = QStringLiteral("lStatus");

/// Records what is on the screen when a pair is compared.
class SeenAlarm final : public MotionAlarm
{
public:
    using MotionAlarm::MotionAlarm;

    Comparison VerifColor() override
    {
        onCompare(++passes);
        return MotionAlarm::VerifColor();
    }

    int passes = 0;
    std::function<void(int)> onCompare = [](int) {};
};

/// Counts how often a widget was painted.
class PaintCounter final : public QObject
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }

    int paints = 0;
};

class AlarmWindow : public testing::Test
{
protected:
    AlarmWindow()
    {
        house_.house.settings.write(u"Mail", u"Server", QStringLiteral("mail.example.org"));
        house_.house.settings.write(u"Mail", u"To", QStringLiteral("guard@example.org"));
    }

    ~AlarmWindow() override
    {
        alarm_.stop();
        mailer_.finish();
        house_.settle();
    }

    // The browser on a camera with this many images, the last of them selected, and this window.
    void open(int images)
    {
        house_.openOn(images);
        window_.present();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
        house_.settle();
    }

    template <typename Control>
    Control &find(const QString &name)
    {
        auto *const control = window_.findChild<Control *>(name);
        if (control == nullptr) {
            throw std::runtime_error("no control " + name.toStdString());
        }
        return *control;
    }

    QString shown(const QString &picture)
    {
        return QFileInfo(find<QWidget>(picture).accessibleDescription()).fileName();
    }

    QString status() { return find<QLabel>(kStatus).text(); }

    void click(const QString &control)
    {
        QTest::mouseClick(&find<QWidget>(control), Qt::LeftButton);
    }

    void settleMail() { house_.clock.advance(std::chrono::milliseconds{0}); }

    BrowserWindowHouse house_;
    SeenAlarm alarm_{house_.house.storage, house_.data, house_.clock, house_.house.scope};
    MailDouble mailer_;
    AlarmMail mail_{house_.house.settings, mailer_, house_.clock, house_.house.scope};
    Alarm window_{alarm_, mail_};
};

TEST_F(AlarmWindow, IsTitledAlarmAndHasItsControls)
{
    EXPECT_EQ(window_.windowTitle(), QStringLiteral("Alarm"));
    EXPECT_EQ(window_.objectName(), QStringLiteral("Alarm"));
    for (const QString &name : {QStringLiteral("iRef"), QStringLiteral("iVar"), kVide}) {
        const auto &picture = find<PictureView>(name);
        EXPECT_FALSE(picture.accessibleName().isEmpty());
        EXPECT_FALSE(picture.toolTip().isEmpty());
        EXPECT_EQ(picture.accessibleDescription(), QString());
    }
    EXPECT_EQ(find<QAbstractButton>(kButton).text(), QStringLiteral("Command1"));
    EXPECT_EQ(find<QAbstractButton>(kButton).accessibleName(), QStringLiteral("Send a test mail"));
    EXPECT_TRUE(find<QWidget>(kVide).toolTip().contains(QStringLiteral("Click")));
    EXPECT_EQ(status(), QString());
}

TEST_F(AlarmWindow, AClickOnTheEmptyPictureScans)
{
    open(25);
    QStringList pairs;
    alarm_.onCompare = [&](int) {
        pairs.append(shown(QStringLiteral("iVar")) + u' ' + shown(QStringLiteral("iRef")));
    };
    click(kVide);
    EXPECT_TRUE(pairs.isEmpty()) << "the click itself does not wait";
    house_.settle();
    ASSERT_EQ(pairs.size(), 11);
    EXPECT_EQ(pairs.first(), storedName(24) + u' ' + storedName(23));
    EXPECT_EQ(pairs.last(), storedName(4) + u' ' + storedName(3));
    EXPECT_EQ(find<QWidget>(QStringLiteral("iVar")).accessibleDescription(),
              house_.imagePath({0, 0}, storedName(4)));
    EXPECT_EQ(shown(QStringLiteral("iRef")), storedName(3));
    EXPECT_EQ(shown(kVide), QString());
    EXPECT_EQ(status(), QString());
}

TEST_F(AlarmWindow, SpaceAndEnterScanToo)
{
    open(3);
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        alarm_.passes = 0;
        find<QWidget>(kVide).setFocus();
        QTest::keyClick(window_.windowHandle(), key);
        house_.settle();
        EXPECT_EQ(alarm_.passes, 11) << key;
    }
}

TEST_F(AlarmWindow, OtherKeysAndButtonsDoNotScan)
{
    open(3);
    QTest::keyClick(&find<QWidget>(kVide), Qt::Key_A);
    QTest::mouseClick(&find<QWidget>(kVide), Qt::RightButton);
    QTest::mouseClick(&find<QWidget>(QStringLiteral("iVar")), Qt::LeftButton);
    house_.settle();
    EXPECT_EQ(alarm_.passes, 0);
}

TEST_F(AlarmWindow, BothPicturesAreOnTheScreenWhenTheyAreCompared)
{
    open(25);
    PaintCounter ref;
    PaintCounter var;
    find<QWidget>(QStringLiteral("iRef")).installEventFilter(&ref);
    find<QWidget>(QStringLiteral("iVar")).installEventFilter(&var);
    int before = 0;
    QObject::connect(&alarm_, &MotionAlarm::changed, &window_, [&] { before = ref.paints; });
    alarm_.onCompare = [&](int) {
        EXPECT_GT(ref.paints, before) << "not painted since it was loaded";
        EXPECT_GT(var.paints, 0);
        var.paints = 0;
    };
    click(kVide);
    house_.settle();
    EXPECT_EQ(alarm_.passes, 11);
}

TEST_F(AlarmWindow, BothPicturesArePaintedAsSoonAsTheyAreLoaded)
{
    open(25);
    PaintCounter ref;
    PaintCounter var;
    find<QWidget>(QStringLiteral("iRef")).installEventFilter(&ref);
    find<QWidget>(QStringLiteral("iVar")).installEventFilter(&var);
    QObject::connect(&alarm_, &MotionAlarm::changed, &window_,
                     [&] { ref.paints = var.paints = 0; });
    int pairs = 0;
    QObject::connect(&alarm_, &MotionAlarm::repaintWanted, &window_, [&] {
        ++pairs;
        EXPECT_EQ(ref.paints, 1);
        EXPECT_EQ(var.paints, 1);
    });
    click(kVide);
    house_.settle();
    EXPECT_EQ(pairs, 11);
}

TEST_F(AlarmWindow, ShowsTheColoursOfTheImages)
{
    open(25);
    alarm_.onCompare = [this](int pass) {
        const QImage seen = find<QWidget>(QStringLiteral("iVar")).grab().toImage();
        const QColor middle = seen.pixelColor(seen.rect().center());
        const int meant = (24 - 2 * (pass - 1)) * 7 % 360;
        EXPECT_NEAR(middle.hsvHue(), meant, 6) << pass;
    };
    click(kVide);
    house_.settle();
}

TEST_F(AlarmWindow, PairsThatDoNotExistAreEmptyWithoutAMessage)
{
    open(3);
    click(kVide);
    house_.settle();
    EXPECT_EQ(shown(QStringLiteral("iVar")), QString());
    EXPECT_FALSE(find<PictureView>(QStringLiteral("iRef")).holdsPicture());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(AlarmWindow, AFileThatIsNoPictureLeavesItsPlaceEmpty)
{
    open(3);
    house_.house.putImage({0, 0}, storedName(2), "no picture");
    alarm_.onCompare = [this](int pass) {
        if (pass == 1) {
            EXPECT_EQ(find<PictureView>(QStringLiteral("iVar")).path(), QString());
            EXPECT_EQ(shown(QStringLiteral("iRef")), storedName(1));
        }
    };
    click(kVide);
    house_.settle();
    EXPECT_EQ(alarm_.passes, 11);
}

TEST_F(AlarmWindow, ASecondClickWhileItScansDoesNothing)
{
    open(25);
    click(kVide);
    click(kVide);
    alarm_.onCompare = [this](int pass) {
        if (pass == 4) {
            click(kVide);
        }
    };
    house_.settle();
    EXPECT_EQ(alarm_.passes, 11);
}

TEST_F(AlarmWindow, ClosingInTheMiddleEndsTheScanAndOnlyHides)
{
    open(25);
    alarm_.onCompare = [this](int pass) {
        if (pass == 3) {
            window_.close();
        }
    };
    click(kVide);
    house_.settle();
    EXPECT_EQ(alarm_.passes, 3);
    EXPECT_FALSE(window_.isVisible());
    window_.present();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    alarm_.passes = 0;
    click(kVide);
    house_.settle();
    EXPECT_EQ(alarm_.passes, 3) << "it closes itself again";
}

TEST_F(AlarmWindow, EscapeCloses)
{
    open(1);
    QTest::keyClick(window_.windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(window_.isVisible());
}

TEST_F(AlarmWindow, PresentsItselfWhenItIsMinimised)
{
    open(1);
    window_.showMinimized();
    window_.present();
    EXPECT_FALSE(window_.isMinimized());
    EXPECT_TRUE(window_.isVisible());
}

TEST_F(AlarmWindow, PicturesAreLoadedForTheSizeOfTheWindow)
{
    house_.house.addCamera({0, 0}, cameraUrl({0, 0}));
    house_.house.putImage({0, 0}, storedName(0), finePicture({1600, 1200}));
    house_.open();
    window_.present();
    house_.settle();
    alarm_.ChargeRef();
    window_.resize(3400, 1500);
    house_.settle();
    ASSERT_GE(find<QWidget>(QStringLiteral("iRef")).width(), 1600);
    EXPECT_TRUE(isSharp(find<QWidget>(QStringLiteral("iRef"))));
}

TEST_F(AlarmWindow, TheTabKeyGoesFromTheScanToTheMail)
{
    open(1);
    find<QWidget>(kVide).setFocus();
    QTest::keyClick(window_.windowHandle(), Qt::Key_Tab);
    EXPECT_EQ(window_.focusWidget(), &find<QWidget>(kButton));
    QTest::keyClick(window_.windowHandle(), Qt::Key_Tab);
    EXPECT_EQ(window_.focusWidget(), &find<QWidget>(kVide));
}

TEST_F(AlarmWindow, TheFocusOnTheEmptyPictureIsSeen)
{
    open(1);
    auto &vide = find<QWidget>(kVide);
    find<QWidget>(kButton).setFocus();
    const QImage without = vide.grab().toImage();
    QTest::keyClick(window_.windowHandle(), Qt::Key_Tab);
    ASSERT_TRUE(vide.hasFocus());
    EXPECT_NE(vide.grab().toImage(), without);
}

TEST_F(AlarmWindow, TheEmptyPictureSaysWhatAClickDoes)
{
    open(1);
    auto &vide = find<PictureView>(kVide);
    const QImage with = vide.grab().toImage();
    vide.setEmptyText(QString());
    EXPECT_NE(vide.grab().toImage(), with);
}

TEST_F(AlarmWindow, TheButtonSendsATestMail)
{
    open(1);
    click(kButton);
    settleMail();
    ASSERT_EQ(mailer_.texts.size(), 1);
    EXPECT_TRUE(mailer_.texts.first().contains("Subject: Alarm\r\n"));
    EXPECT_TRUE(mailer_.texts.first().endsWith("\r\n\r\nessai\r\n"));
    EXPECT_EQ(status(), QStringLiteral("Sending…"));
    EXPECT_FALSE(find<QWidget>(kButton).isEnabled());
    mailer_.finish();
    settleMail();
    EXPECT_EQ(status(), QStringLiteral("Sent"));
    EXPECT_TRUE(find<QWidget>(kButton).isEnabled());
}

TEST_F(AlarmWindow, APressWhileAMailIsOnItsWayDoesNothing)
{
    open(1);
    click(kButton);
    settleMail();
    click(kButton);
    QTest::keyClick(window_.windowHandle(), Qt::Key_Space);
    settleMail();
    EXPECT_EQ(mailer_.texts.size(), 1);
}

TEST_F(AlarmWindow, AMailThatFailsFreesTheButton)
{
    open(1);
    click(kButton);
    settleMail();
    mailer_.finish(MailProblem{MailFailure::TimedOut, {}, {}});
    settleMail();
    EXPECT_EQ(status(), QStringLiteral("Not sent"));
    EXPECT_TRUE(find<QWidget>(kButton).isEnabled());
    click(kButton);
    settleMail();
    EXPECT_EQ(mailer_.texts.size(), 2);
}

TEST_F(AlarmWindow, AMailThatBreaksDownFreesTheButton)
{
    open(1);
    mailer_.breaksDown = true;
    click(kButton);
    settleMail();
    EXPECT_EQ(status(), QStringLiteral("Not sent"));
    EXPECT_TRUE(find<QWidget>(kButton).isEnabled());
    mailer_.breaksDown = false;
    click(kButton);
    settleMail();
    EXPECT_EQ(mailer_.texts.size(), 1);
}

TEST_F(AlarmWindow, TheFocusComesBackToTheButton)
{
    open(1);
    find<QWidget>(kButton).setFocus();
    QTest::keyClick(window_.windowHandle(), Qt::Key_Space);
    settleMail();
    mailer_.finish();
    settleMail();
    EXPECT_EQ(window_.focusWidget(), &find<QWidget>(kButton));
    EXPECT_EQ(alarm_.passes, 0);
}

TEST_F(AlarmWindow, SpacePressedTwiceOnTheButtonDoesNotScan)
{
    open(1);
    find<QWidget>(kButton).setFocus();
    QTest::keyClick(window_.windowHandle(), Qt::Key_Space);
    settleMail();
    ASSERT_FALSE(find<QWidget>(kButton).isEnabled());
    QTest::keyClick(window_.windowHandle(), Qt::Key_Space);
    settleMail();
    EXPECT_EQ(alarm_.passes, 0);
    mailer_.finish();
    settleMail();
    EXPECT_EQ(window_.focusWidget(), &find<QWidget>(kButton));
}

TEST_F(AlarmWindow, AMailOutlivesTheClosedWindow)
{
    open(1);
    click(kButton);
    settleMail();
    window_.close();
    mailer_.finish();
    settleMail();
    EXPECT_EQ(status(), QStringLiteral("Sent"));
}

TEST_F(AlarmWindow, ScansWhileAMailIsOnItsWay)
{
    open(25);
    click(kButton);
    click(kVide);
    for (int turn = 0; turn < 200 && alarm_.passes < 11; ++turn) {
        settleMail();
    }
    EXPECT_EQ(alarm_.passes, 11);
    EXPECT_EQ(status(), QStringLiteral("Sending…"));
}

} // namespace
} // namespace velmora::test
