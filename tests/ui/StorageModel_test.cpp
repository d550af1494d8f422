// Random sequences of what a user, a timer and a disk can do around the storage folder, checked
// against what must be true after every single event.
#include "DroppedText.h"
#include "WindowHouse.h"
#include "cameras/StoragePath.h"
#include "capture/Retention.h"
#include "support/Sequences.h"

#include <QDir>
#include <QDirIterator>
#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <utility>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr int kSequences = 150;
constexpr int kEvents = 50;

const QStringList kFolders{QStringLiteral("in"), QStringLiteral("other"), QStringLiteral("i"),
                           QStringLiteral("in/sub")};
const QStringList kTexts{QStringLiteral("C:\\in"),   QStringLiteral("C:\\other"),
                         QStringLiteral("C:\\i"),    QStringLiteral("C:\\in\\sub"),
                         QStringLiteral("C:\\none"), QStringLiteral("C:/in")};

/// What an event may do.
enum class May {
    Neither,    // change the folder in force nor the text
    PutInForce, // the text
    Type,       // change the text
    Name        // put another folder in force, once the box is not being edited
};

class StorageModel : public testing::Test
{
protected:
    StorageModel()
    {
        house_.addCamera({0, 0}, QStringLiteral("http://cam/a.jpg"));
        house_.addCamera({0, 1}, QStringLiteral("http://cam/b.jpg"));
        house_.setValue(u"EffM", {0, 0}, QStringLiteral("1"));
        house_.log.setOn(false);
        another_.show();
    }

    int below(int limit) { return random_.bounded(limit); }

    template <typename List>
    auto pick(const List &list)
    {
        return list[static_cast<decltype(list.size())>(below(static_cast<int>(list.size())))];
    }

    QLineEdit &box() { return rooms_.find<QLineEdit>(QStringLiteral("StRep")); }

    QString inForce() { return house_.storage.inForce(); }

    bool isMainInFront() { return QApplication::activeWindow() == &rooms_.window; }

    bool hasCursor() { return rooms_.window.focusWidget() == &box(); }

    // As a user would see it.
    bool isEdited()
    {
        return hasCursor() && (isMainInFront() ? box().hasFocus() : box().text() != inForce());
    }

    QSet<QString> everything() const
    {
        QSet<QString> paths;
        QDirIterator entries(house_.tree.path(u"drives/c"), QDir::AllEntries | QDir::NoDotAndDotDot,
                             QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            paths.insert(entries.next());
        }
        return paths;
    }

    QString native(const QString &text) { return house_.storage.native(text); }

    // Events. Each returns what it may do.
    May enter()
    {
        if (isMainInFront()) {
            QTest::mouseClick(&box(), Qt::LeftButton);
        }
        return May::Neither;
    }

    May typeText()
    {
        if (!box().hasFocus()) {
            return May::Neither;
        }
        QTest::keyClick(&box(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(&box(), pick(kTexts));
        return May::Type;
    }

    May typeKey()
    {
        static const std::array keys{Qt::Key_Backspace, Qt::Key_X, Qt::Key_I, Qt::Key_N};
        if (!box().hasFocus()) {
            return May::Neither;
        }
        QTest::keyClick(&box(), pick(keys));
        return May::Type;
    }

    May emptyBox()
    {
        if (!box().hasFocus()) {
            return May::Neither;
        }
        QTest::keyClick(&box(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&box(), Qt::Key_Delete);
        return May::Type;
    }

    // From another program's window, which may stay the active one.
    May dropText()
    {
        test::dropText(box(), pick(kTexts));
        return May::Type;
    }

    May press(Qt::Key key)
    {
        const bool isMeant = box().hasFocus();
        if (isMainInFront() && rooms_.window.focusWidget() != nullptr) {
            QTest::keyClick(rooms_.window.focusWidget(), key);
        }
        return isMeant ? May::PutInForce : May::Neither;
    }

    May makeFolder()
    {
        auto &button = rooms_.find<QWidget>(QStringLiteral("MakeDir"));
        if (!isMainInFront() || !button.isVisible()) {
            return May::Neither;
        }
        QTest::mouseClick(&button, Qt::LeftButton);
        return May::PutInForce;
    }

    May clickElsewhere()
    {
        const bool isMeant = hasCursor();
        if (!isMainInFront()) {
            return May::Neither;
        }
        QTest::mouseClick(&rooms_.find<QWidget>(QStringLiteral("tempo")), Qt::LeftButton);
        return isMeant ? May::PutInForce : May::Neither;
    }

    May clickAddress()
    {
        const bool isMeant = hasCursor();
        if (!isMainInFront()) {
            return May::Neither;
        }
        QTest::mouseClick(&rooms_.find<QWidget>(QStringLiteral("Source0")), Qt::LeftButton);
        return isMeant ? May::PutInForce : May::Neither;
    }

    May activate(QWidget &window)
    {
        window.activateWindow();
        QCoreApplication::processEvents();
        return May::Neither;
    }

    May tick()
    {
        const QString time = QTime(0, 0).addSecs(++captures_).toString(QStringLiteral("HH:mm:ss"));
        for (const QString &url :
             {QStringLiteral("http://cam/a.jpg"), QStringLiteral("http://cam/b.jpg")}) {
            rooms_.source.answer(url, {QByteArray(1000, 'x'),
                                       QStringLiteral("Tue, 07 Mar 2006 %1 GMT").arg(time),
                                       {},
                                       std::chrono::milliseconds{below(3) * 1000},
                                       {}});
        }
        house_.scheduler.setTickCounter(59);
        house_.scope.launch(house_.scheduler.Timer_Timer());
        return May::Neither;
    }

    May passTime()
    {
        rooms_.clock.advance(std::chrono::milliseconds{below(4) * 1000});
        return May::Neither;
    }

    May watch()
    {
        house_.storage.recheck();
        return May::Neither;
    }

    // A disk comes or goes; its files are not the program's doing.
    May turnTheDisk()
    {
        const QString path = house_.tree.path(QStringLiteral("drives/c/") + pick(kFolders));
        if (QFileInfo::exists(path)) {
            QDir(path).removeRecursively();
        } else {
            QDir().mkpath(path);
        }
        before_ = everything();
        return May::Neither;
    }

    May deleteOld()
    {
        const QString folder =
            native(house_.storage.folderText(house_.table.CameraFolderName({0, 0})));
        if (QFileInfo::exists(folder)) {
            QFile old(folder + QStringLiteral("/20050101_0000000100.jpg"));
            EXPECT_TRUE(old.open(QIODevice::WriteOnly));
            before_ = everything();
        }
        retention_.follow({0, 0});
        return May::Neither;
    }

    // A command does, and tells the program. The very text that is being typed is the user's: it
    // is stored already, and may be taken back.
    May nameFolder()
    {
        const QString named = FormRep(withBackslashes(pick(kTexts)));
        if (!house_.storage.isBeingEdited() || named != rooms_.stored(u"Control", u"StRep")) {
            named_ = named;
        }
        EXPECT_EQ(
            house_.settings.change([&named](SettingsDraft &draft) { setStorage(draft, named); }),
            SettingsChange::Made);
        house_.engine.adoptSettings();
        return May::Name;
    }

    May act()
    {
        static const std::array<std::function<May(StorageModel &)>, 19> events{
            &StorageModel::enter,
            &StorageModel::enter,
            &StorageModel::typeText,
            &StorageModel::typeText,
            &StorageModel::typeKey,
            &StorageModel::emptyBox,
            &StorageModel::dropText,
            [](StorageModel &model) { return model.press(Qt::Key_Tab); },
            [](StorageModel &model) { return model.press(Qt::Key_Return); },
            &StorageModel::makeFolder,
            &StorageModel::clickElsewhere,
            &StorageModel::clickAddress,
            [](StorageModel &model) { return model.activate(model.another_); },
            [](StorageModel &model) { return model.activate(model.rooms_.window); },
            &StorageModel::tick,
            &StorageModel::passTime,
            &StorageModel::turnTheDisk,
            &StorageModel::deleteOld,
            &StorageModel::nameFolder,
        };
        event_ = below(static_cast<int>(events.size()));
        return events.at(static_cast<std::size_t>(event_))(*this);
    }

    // A folder is made for the text at the moment when it is put in force.
    void checkFiles(bool wasEdited, const QString &forceBefore, May may)
    {
        const QSet<QString> now = everything();
        QSet<QString> changed = now - before_;
        changed.unite(before_ - now);
        for (const QString &path : std::as_const(changed)) {
            const bool isInside = (path + u'/').startsWith(native(forceBefore)) ||
                                  (path + u'/').startsWith(native(inForce())) ||
                                  (native(inForce())).startsWith(path + u'/');
            EXPECT_TRUE(isInside) << path.toStdString();
        }
        EXPECT_TRUE(changed.isEmpty() || !wasEdited || may == May::PutInForce)
            << changed.values().join(u' ').toStdString();
        before_ = now;
    }

    // What a command named counts once the box is not being edited, unless another was typed.
    bool checkNamed(const QString &textBefore, const QString &forceBefore)
    {
        if (named_.isEmpty() || house_.storage.isBeingEdited()) {
            return false;
        }
        const QString named = std::exchange(named_, QString());
        const bool counts = isEmptied_ || textBefore == forceBefore;
        if (counts) {
            EXPECT_EQ(inForce(), named);
            EXPECT_EQ(box().text(), named);
        }
        return counts;
    }

    void checkTexts(const QString &textBefore, const QString &forceBefore, May may)
    {
        if (checkNamed(textBefore, forceBefore)) {
            return;
        }
        if (may == May::Name) {
            EXPECT_EQ(inForce(), forceBefore);
            EXPECT_EQ(box().text(), textBefore);
        } else if (may == May::Neither || may == May::Type) {
            EXPECT_EQ(inForce(), forceBefore);
        } else if (may == May::PutInForce && isEmptied_) {
            EXPECT_EQ(inForce(), forceBefore);
            EXPECT_EQ(box().text(), forceBefore);
        } else if (may == May::PutInForce) {
            EXPECT_EQ(inForce(), textBefore);
        }
        if (may == May::Neither) {
            EXPECT_EQ(box().text(), textBefore);
        }
        EXPECT_EQ(box().text(), house_.storage.text());
        if (named_.isEmpty()) {
            EXPECT_EQ(rooms_.stored(u"Control", u"StRep"), box().text());
        }
    }

    void checkTimer()
    {
        watch(); // the lamp may not have noticed the disk yet
        const bool isGreen = rooms_.find<Lamp>(QStringLiteral("LampSA")).FillColor() == 65280;
        const bool mayRun = isGreen && !isEdited();
        if (!mayRun) {
            EXPECT_FALSE(house_.timer.isActive());
        } else if (house_.scope.running() == 0) {
            EXPECT_TRUE(house_.timer.isActive());
        }
        const QString step = rooms_.find<QLabel>(QStringLiteral("lErr")).text();
        EXPECT_EQ(step == QStringLiteral("Pause"), !mayRun) << step.toStdString();
    }

    void runSequence()
    {
        for (int i = 0; i < kEvents && !HasFailure(); ++i) {
            const QString textBefore = box().text();
            const QString forceBefore = inForce();
            const bool wasEdited = isEdited();
            const May may = act();
            rooms_.clock.advance(0ms);
            SCOPED_TRACE(testing::Message()
                         << "event " << i << " of kind " << event_ << ", "
                         << textBefore.toStdString() << " over " << forceBefore.toStdString());
            checkFiles(wasEdited && isEdited(), forceBefore, may);
            checkTexts(textBefore, forceBefore, may);
            checkTimer();
            isEmptied_ = box().text() == QStringLiteral("\\"); // not typed here
        }
    }

    // A new house costs more than a sequence.
    void tidyUp()
    {
        activate(rooms_.window);
        rooms_.clock.advance(10s);
        for (const QString &name :
             QDir(house_.tree.path(u"drives/c")).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            QDir(house_.tree.path(QStringLiteral("drives/c/") + name)).removeRecursively();
        }
        house_.tree.makeFolder(u"drives/c/in");
        house_.storage.choose(house_.tree.path(u"drives/c/in"));
        rooms_.find<QWidget>(QStringLiteral("Selecteur")).setFocus();
        rooms_.clock.advance(10s);
        isEmptied_ = false;
        named_.clear();
        before_ = everything();
    }

    WindowHouse rooms_;
    CaptureHouse &house_ = rooms_.house;
    Retention &retention_ = house_.engine.retention();
    QWidget another_;
    QRandomGenerator random_;
    QSet<QString> before_;
    QString named_; // by a command, and not yet in force
    bool isEmptied_ = false;
    int captures_ = 0;
    int event_ = 0;
};

TEST_F(StorageModel, HoldsAfterEveryEventOfRandomSequences)
{
    playSequences(kSequences, [this](int sequence) {
        SCOPED_TRACE(testing::Message() << "sequence " << sequence);
        random_.seed(static_cast<quint32>(sequence));
        tidyUp();
        runSequence();
    });
    EXPECT_GT(house_.stored().size(), 0);
}

} // namespace
} // namespace velmora::test
