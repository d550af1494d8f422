// Twenty thousand random events over all windows, while cameras are captured and files come and go:
// nothing crashes, and the windows still do as told.
#include "ProgramHouse.h"
#include "support/StoredPictures.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QPointer>
#include <QRandomGenerator>
#include <QThread>
#include <QWindow>

#include <algorithm>
#include <array>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr quint32 kSeed = 20060307;
constexpr int kEvents = 20000;
constexpr int kActionsBetweenTurns = 10;
constexpr int kFirstFiles = 400;
constexpr int kCaptured = 3; // cameras of group 0, the one that is captured
constexpr int kPictures = 12;

// Anything that would end the program or lead out of the temporary folder.
const QStringList kHandsOff{QStringLiteral("Quitter"), QStringLiteral("StRep"),
                            QStringLiteral("Browse"), QStringLiteral("MakeDir"),
                            QStringLiteral("Drive1")};

constexpr std::array kKeys{
    Qt::Key_Up,     Qt::Key_Down,   Qt::Key_Left,     Qt::Key_Right, Qt::Key_Home,   Qt::Key_End,
    Qt::Key_PageUp, Qt::Key_Delete, Qt::Key_Space,    Qt::Key_Enter, Qt::Key_Return, Qt::Key_Escape,
    Qt::Key_Tab,    Qt::Key_F5,     Qt::Key_0,        Qt::Key_2,     Qt::Key_Slash,  Qt::Key_A,
    Qt::Key_Y,      Qt::Key_Insert, Qt::Key_Backspace};

/// The toolkit's own context menus of boxes and scroll bars wait for an answer in a loop of their
/// own.
class NoContextMenus final : public QObject
{
public:
    NoContextMenus() { QApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        return event->type() == QEvent::ContextMenu || QObject::eventFilter(watched, event);
    }
};

/// Answers the toolkit's own boxes, such as those about a missing file: they too wait in a loop of
/// their own, in which no other event would ever arrive. The program's boxes open without one.
class NestedBoxes final : public QObject
{
public:
    NestedBoxes() { startTimer(10); }

protected:
    void timerEvent(QTimerEvent * /*event*/) override
    {
        auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (box != nullptr && QThread::currentThread()->loopLevel() > 0) {
            box->reject();
        }
    }
};

class Monkey : public ProgramHouse
{
protected:
    Monkey()
    {
        for (int i = 0; i < kPictures; ++i) {
            pictures_.append(pictureBytes(QColor::fromHsv(30 * i, 200, 200), {240, 180}));
        }
        pictures_.append("no picture");
        pictures_.append("");
        QByteArray settings = "[Control]\r\nStRep=C:\\in\\\r\nDebug=0\r\n";
        for (int camera = 0; camera < kGroups * kRows; ++camera) {
            if (camera % kRows == 0) {
                settings += "[Liste" + QByteArray::number(camera / kRows) + "]\r\n";
                settings += camera == 0 ? "LstAct=1\r\n" : "";
            }
            settings +=
                "lst" + QByteArray::number(camera % kRows) + "=" + url(camera).toLatin1() + "\r\n";
        }
        tree_.write(u"Velmora.ini", settings);
    }

    static QString url(int camera) { return QStringLiteral("http://cam/%1").arg(camera); }

    // Native path, with a final "/", of the camera's present folder.
    QString folder(int camera)
    {
        const CameraTable &table = engine_->table();
        const StorageFolder &storage = engine_->storage();
        return storage.native(
                   storage.folderText(table.CameraFolderName({camera / kRows, camera % kRows}))) +
               u'/';
    }

    int below(int limit) { return random_.bounded(limit); }

    bool chance(int percent) { return below(100) < percent; }

    template <typename List>
    auto pick(const List &list)
    {
        return list[static_cast<decltype(list.size())>(below(static_cast<int>(list.size())))];
    }

    // A new image for every camera at the next capture.
    void answer()
    {
        const QString time = QTime(0, 0).addSecs(++captures_).toString(QStringLiteral("HH:mm:ss"));
        for (int camera = 0; camera < kCaptured; ++camera) {
            source_.answer(url(camera), {pick(pictures_) + QByteArray(1000, ' '),
                                         QStringLiteral("Tue, 07 Mar 2006 %1 GMT").arg(time),
                                         {},
                                         std::chrono::milliseconds{below(3000)},
                                         chance(10) ? QStringLiteral("no answer") : QString()});
        }
    }

    // Some have the short names that are to be renamed.
    void addFile()
    {
        const QString longForm = storedName(below(80000));
        const QString name = chance(5) ? longForm.left(15) + QStringLiteral(".jpg") : longForm;
        const QString path = folder(below(kGroups * kRows));
        QDir().mkpath(path);
        QFile file(path + name);
        if (file.open(QIODevice::WriteOnly)) {
            file.write(pick(pictures_));
        }
    }

    void removeFile()
    {
        QDir images(folder(below(kGroups * kRows)));
        const QStringList names = images.entryList(QDir::Files);
        if (!names.isEmpty()) {
            images.remove(pick(names));
        }
    }

    void capture()
    {
        answer();
        engine_->scheduler().setTickCounter(59);
        engine_->launch(engine_->scheduler().Timer_Timer());
    }

    // A window that was minimised is restored now and then.
    static void restoreWindows()
    {
        for (QWidget *const window : QApplication::topLevelWidgets()) {
            if (window->isMinimized()) {
                window->showNormal();
            }
        }
    }

    // Things that happen besides the user's actions.
    void turnTheWorld()
    {
        restoreWindows();
        switch (below(6)) {
        case 0:
            capture();
            break;
        case 1:
            clock_.advance(std::chrono::milliseconds{below(3000)});
            break;
        case 2:
            removeFile();
            break;
        case 3:
            fire(QStringLiteral("planche"), QStringLiteral("TimerScan"));
            break;
        default:
            addFile();
            break;
        }
    }

    static void fire(const QString &window, const QString &timer)
    {
        auto *const ticking = topLevel(window)->findChild<QTimer *>(timer);
        if (ticking->isActive()) {
            QMetaObject::invokeMethod(ticking, "timeout", Qt::DirectConnection);
        }
    }

    QWidget *someWindow()
    {
        if (QWidget *const modal = QApplication::activeModalWidget()) {
            return modal;
        }
        QWidgetList windows;
        for (QWidget *const window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && !window->isMinimized() && window->windowHandle()) {
                windows.append(window);
            }
        }
        const auto byName = [](const QWidget *one, const QWidget *other) {
            return one->objectName() < other->objectName();
        };
        std::sort(windows.begin(), windows.end(), byName);
        return windows.isEmpty() ? nullptr : pick(windows);
    }

    static bool isForbidden(const QWidget *widget)
    {
        return widget != nullptr && kHandsOff.contains(widget->objectName());
    }

    void useMouse(QWidget &window)
    {
        const QPoint at(below(window.width()), below(window.height()));
        if (isForbidden(window.childAt(at))) {
            return;
        }
        const Qt::MouseButton button = chance(75) ? Qt::LeftButton : Qt::RightButton;
        const Qt::KeyboardModifiers modifiers = chance(10) ? Qt::ShiftModifier : Qt::NoModifier;
        const QPointer<QWindow> target = window.windowHandle(); // a box goes once answered
        QTest::mouseMove(target, at);
        ++events_;
        for (int clicks = chance(25) ? 2 : chance(80) ? 1 : 0; clicks > 0 && target; --clicks) {
            QTest::mousePress(target, button, modifiers, at);
            if (target) {
                QTest::mouseRelease(target, button, modifiers, at);
            }
            events_ += 2;
        }
    }

    void useKey(QWidget &window)
    {
        const bool forbidden = isForbidden(window.focusWidget());
        QTest::keyClick(window.windowHandle(), forbidden ? Qt::Key_Tab : pick(kKeys));
        events_ += 2;
    }

    void act()
    {
        QWidget *const window = someWindow();
        if (window == nullptr) {
            program_->bringToFront();
        } else if (below(1000) < 3) {
            window->resize(700 + below(300), 700 + below(300));
            ++events_;
        } else if (chance(60)) {
            useMouse(*window);
        } else {
            useKey(*window);
        }
    }

    // Closes whatever is open besides the browser, as a user would.
    void tidyUp()
    {
        while (QWidget *const box = QApplication::activeModalWidget()) {
            QTest::keyClick(box->windowHandle(), Qt::Key_Escape);
            settle();
        }
        program_->bringToFront();
        topLevel(QStringLiteral("fCine"))->close();
        topLevel(QStringLiteral("Zoom"))->close();
        topLevel(QStringLiteral("frmImport"))->close();
        topLevel(QStringLiteral("Interface"))->hide();
        program_->bringToFront();
        clock_.advance(10s);
    }

    void untick(const QString &box)
    {
        if (topLevel(QStringLiteral("planche"))->findChild<QCheckBox *>(box)->isChecked()) {
            QTest::mouseClick(control(QStringLiteral("planche"), box), Qt::LeftButton, {}, {8, 8});
            settle();
        }
    }

    void choose(const QString &list, int row)
    {
        auto *const choices = topLevel(QStringLiteral("planche"))->findChild<QListWidget *>(list);
        QTest::mouseClick(choices->viewport(), Qt::LeftButton, {},
                          choices->visualItemRect(choices->item(row)).center());
        settle();
    }

    QRandomGenerator random_{kSeed};
    QList<QByteArray> pictures_;
    NoContextMenus noMenus_;
    NestedBoxes nestedBoxes_;
    int captures_ = 0;
    int events_ = 0;
};

TEST_F(Monkey, TheWindowsStillDoWhatTheyAreToldAfterwards)
{
    start();
    for (int i = 0; i < kFirstFiles; ++i) {
        addFile();
    }
    for (int action = 0; action < kEvents && events_ < kEvents; ++action) {
        act();
        if (action % kActionsBetweenTurns == 0) {
            turnTheWorld();
        }
    }
    EXPECT_GE(events_, kEvents);
    EXPECT_GT(captures_, 50);
    tidyUp();
    for (const QString &box : {QStringLiteral("cCamera"), QStringLiteral("cScan")}) {
        untick(box);
    }
    choose(QStringLiteral("lstGroupe"), 0);
    choose(QStringLiteral("lstCam"), 7);
    const QStringList names =
        QDir(folder(7)).entryList({QStringLiteral("20*")}, QDir::Files, QDir::Name);
    EXPECT_EQ(text(QStringLiteral("planche"), QStringLiteral("NbI")),
              names.isEmpty() ? QStringLiteral("0") : QStringLiteral("%1 / %1").arg(names.size()));
    EXPECT_GT(captures_, 50);
}

} // namespace
} // namespace velmora::test
