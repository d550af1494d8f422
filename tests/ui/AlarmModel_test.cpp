// Random sequences of what a user, the capture and a mail server can do around the alarm's window
// while the browser moves on, each followed by a check of the window against what the rules of the
// scan and of the test mail make of them.
#include "AlarmReference.h"
#include "BrowserModel.h"
#include "support/Sequences.h"
#include "ui/Alarm.h"

#include <vector>

namespace velmora::test {
namespace {

constexpr int kSequences = 12;
constexpr int kEvents = 60;

/// Tells of each pair.
class ToldAlarm final : public MotionAlarm
{
public:
    using MotionAlarm::MotionAlarm;

    Comparison VerifColor() override
    {
        onCompare();
        return MotionAlarm::VerifColor();
    }

    std::function<void()> onCompare = [] {};
};

/// Tells when a widget gets another size, and when it has it.
class SizeWatch final : public QObject
{
public:
    SizeWatch(QWidget &widget, std::function<void(bool isOver)> told)
        : told_(std::move(told))
    {
        widget.installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Resize) {
            return false;
        }
        told_(false);
        watched->event(event);
        told_(true);
        return true;
    }

private:
    std::function<void(bool isOver)> told_;
};

class AlarmModel : public BrowserModel
{
protected:
    using Kind = EventKind<AlarmModel>;

    AlarmModel()
    {
        QObject::connect(&house_.window, &planche::alarmWanted, &alarm_, &Alarm::present);
        QObject::connect(&scan_, &MotionAlarm::changed, &here_, [this](AlarmPicture which) {
            if (!isResizing_) {
                rules_.follow(which);
                checkPictures();
            }
        });
        scan_.onCompare = [this] {
            rules_.compare();
            ++compared_;
            checkPictures();
        };
        QObject::connect(&mail_, &AlarmMail::failed, &here_, [this] { ++failures_; });
        nameServer(QStringLiteral("mail.example.org"));
        house_.house.settings.write(u"Mail", u"To", u"guard@example.org");
    }

    ~AlarmModel() override
    {
        alarm_.close();
        mailer_.finish();
        house_.settle();
    }

    void nameServer(const QString &server)
    {
        house_.house.settings.write(u"Mail", u"Server", server);
    }

    template <typename Control>
    Control &in(const QString &name)
    {
        return *alarm_.findChild<Control *>(name);
    }

    QAbstractButton &button() { return in<QAbstractButton>(QStringLiteral("Command1")); }

    QWidget &vide() { return in<QWidget>(QStringLiteral("iVide")); }

    bool mayUse()
    {
        if (alarm_.isVisible()) {
            alarm_.activateWindow();
            QCoreApplication::processEvents();
        }
        return alarm_.isVisible();
    }

    // Of the image at this position, in the folder of the camera that is selected.
    QString path(int position)
    {
        const QAbstractItemModel &list = *view(kImages).model();
        if (position < 0 || position >= list.rowCount()) {
            return {};
        }
        const QString folder =
            storage().native(storage().cameraFolderText(house_.data.state.camera()));
        return QDir::cleanPath(folder + u'/' + list.index(position, 0).data().toString());
    }

    static bool isPicture(const QString &path) { return !path.isEmpty() && !QImage(path).isNull(); }

    // Events.
    void open()
    {
        letGo();
        QTest::mouseClick(&house_.find<QWidget>(QStringLiteral("CmdAlarm")), Qt::LeftButton);
        EXPECT_TRUE(alarm_.isVisible());
    }

    void clickVide()
    {
        if (!mayUse()) {
            return;
        }
        rules_.start();
        if (oneIn(3)) {
            vide().setFocus(Qt::TabFocusReason);
            QTest::keyClick(&vide(), oneIn(2) ? Qt::Key_Space : Qt::Key_Return);
        } else {
            QTest::mouseClick(&vide(), Qt::LeftButton);
        }
    }

    void clickOther()
    {
        if (mayUse()) {
            QTest::mouseClick(&vide(), Qt::RightButton);
            QTest::mouseClick(
                &in<QWidget>(oneIn(2) ? QStringLiteral("iRef") : QStringLiteral("iVar")),
                Qt::LeftButton);
        }
    }

    void closeAlarm()
    {
        if (!mayUse()) {
            return;
        }
        rules_.stop();
        if (oneIn(2)) {
            QTest::keyClick(alarm_.windowHandle(), Qt::Key_Escape);
        } else {
            alarm_.close();
        }
        EXPECT_FALSE(alarm_.isVisible());
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }

    void resize()
    {
        static const QList<QSize> sizes{{760, 460}, {900, 500}, {1000, 700}};
        if (alarm_.isVisible()) {
            alarm_.resize(sizes.at(below(3)));
        }
    }

    // By its key, wherever the focus is while it is disabled.
    void pressMail()
    {
        if (!mayUse()) {
            return;
        }
        if (!oneIn(2)) {
            QTest::mouseClick(&button(), Qt::LeftButton);
        } else {
            if (!isSending_) {
                button().setFocus(Qt::TabFocusReason);
            } else if (vide().hasFocus()) {
                rules_.start();
            }
            QTest::keyClick(alarm_.windowHandle(), Qt::Key_Space);
        }
        if (!isSending_) {
            isSending_ = true;
            status_ = QStringLiteral("Sending…");
            takeFailure();
            const QWidget &meant = isSending_ ? status() : static_cast<QWidget &>(button());
            EXPECT_EQ(alarm_.focusWidget(), &meant);
        }
    }

    QLabel &status() { return in<QLabel>(QStringLiteral("lStatus")); }

    // Settings that name no server end the mail at once, and so does a sender that breaks down, of
    // which no mail's failure tells.
    void takeFailure()
    {
        house_.clock.advance(std::chrono::milliseconds{0});
        if (house_.house.settings.read(u"Mail", u"Server").isEmpty()) {
            endMail(QStringLiteral("Not sent"), 1);
        } else if (mailer_.breaksDown) {
            endMail(QStringLiteral("Not sent"), 0);
        }
    }

    void endMail(const QString &status, int failures)
    {
        isSending_ = false;
        status_ = status;
        EXPECT_EQ(std::exchange(failures_, 0), failures);
        EXPECT_NE(alarm_.focusWidget(), &this->status());
    }

    void finishMail()
    {
        if (!isSending_) {
            return;
        }
        const bool isGood = oneIn(2);
        const auto problem =
            isGood ? std::nullopt : std::optional(MailProblem{MailFailure::TimedOut, {}, {}});
        mailer_.finish(problem);
        house_.clock.advance(std::chrono::milliseconds{0});
        endMail(isGood ? QStringLiteral("Sent") : QStringLiteral("Not sent"), isGood ? 0 : 1);
    }

    void otherServer() { nameServer(oneIn(2) ? QString() : QStringLiteral("mail.example.org")); }

    // In the browser, whose keys would otherwise be those of the window in front.
    void keyInBrowser()
    {
        activateBrowser();
        key();
    }

    void refreshBrowser()
    {
        activateBrowser();
        refresh();
    }

    void breakDown() { mailer_.breaksDown = oneIn(3); }

    void ask()
    {
        if (!isSending_) {
            activateBrowser();
            deleteImage();
        }
    }

    void activateBrowser()
    {
        house_.window.activateWindow();
        QCoreApplication::processEvents();
    }

    void rest()
    {
        for (int turn = 0; turn < 200 && (rules_.isScanning() || !house_.loader.isIdle()); ++turn) {
            house_.clock.advance(std::chrono::milliseconds{0});
        }
    }

    bool oneIn(int chances) { return below(chances) == 0; }

    void passATurn() { QCoreApplication::processEvents(); }

    void checkPictures()
    {
        EXPECT_EQ(shown(QStringLiteral("iRef")), rules_.ref);
        EXPECT_EQ(shown(QStringLiteral("iVar")), rules_.var);
        EXPECT_EQ(shown(QStringLiteral("iVide")), QString());
        EXPECT_EQ(rules_.error, QString());
    }

    QString shown(const QString &picture)
    {
        return QDir::cleanPath(in<QWidget>(picture).accessibleDescription());
    }

    void check()
    {
        checkPictures();
        EXPECT_EQ(status().text(), status_);
        EXPECT_EQ(button().isEnabled(), !isSending_);
        EXPECT_EQ(failures_, 0) << "one that was not told of in time";
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    }

    void play(int sequence)
    {
        seed(sequence);
        playEvents(
            *this, kKinds, {sequence, kEvents}, [this](int bound) { return below(bound); },
            [this] { check(); });
        letGo();
        putInForce();
        finishMail();
        rest();
        EXPECT_FALSE(rules_.isScanning()) << "sequence " << sequence;
    }

    int compared() const { return compared_; }

private:
    static const std::vector<Kind> kKinds;

    ToldAlarm scan_{house_.house.storage, house_.data, house_.clock, house_.house.scope};
    MailDouble mailer_;
    AlarmMail mail_{house_.house.settings, mailer_, house_.clock, house_.house.scope};
    Alarm alarm_{scan_, mail_};
    AlarmReference rules_{{[this] { return row(kImages); },
                           [this](int position) { return path(position); }, &isPicture}};
    QString status_;
    int failures_ = 0;
    int compared_ = 0;
    bool isSending_ = false;
    bool isResizing_ = false;
    SizeWatch watch_{in<QWidget>(QStringLiteral("iRef")), [this](bool isOver) {
                         isResizing_ = !isOver;
                         if (isOver) {
                             rules_.reload();
                         }
                     }};
    QObject here_;
};

const std::vector<AlarmModel::Kind> AlarmModel::kKinds{
    {"open", &AlarmModel::open, 3},
    {"click the empty picture", &AlarmModel::clickVide, 4},
    {"click another", &AlarmModel::clickOther},
    {"close the alarm", &AlarmModel::closeAlarm},
    {"resize", &AlarmModel::resize},
    {"press mail", &AlarmModel::pressMail, 2},
    {"finish mail", &AlarmModel::finishMail, 2},
    {"other server", &AlarmModel::otherServer},
    {"break down", &AlarmModel::breakDown},
    {"a turn", &AlarmModel::passATurn, 8},
    {"rest", &AlarmModel::rest},
    {"click a row", &AlarmModel::clickRow, 3},
    {"click a cell", &AlarmModel::clickCell},
    {"key", &AlarmModel::keyInBrowser, 2},
    {"mode", &AlarmModel::mode},
    {"scan", &AlarmModel::scan},
    {"stored image", &AlarmModel::storedImage},
    {"vanished image", &AlarmModel::vanishedImage},
    {"delete", &AlarmModel::ask},
    {"type folder", &AlarmModel::typeFolder},
    {"put folder in force", &AlarmModel::putInForce, 2},
    {"refresh", &AlarmModel::refreshBrowser},
    {"other address", &AlarmModel::otherAddress},
};

TEST_F(AlarmModel, HoldsAfterEveryEventOfRandomSequences)
{
    playSequences(kSequences, [this](int sequence) { play(sequence); });
    EXPECT_GT(compared(), 0);
}

} // namespace
} // namespace velmora::test
