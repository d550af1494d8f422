// Random sequences of what a user, commands from outside, a camera's sheet, a list and the capture
// can do to the camera rows, each followed by a check of the settings file and of the window
// against what the rules make of them.
#include "RowWorld.h"
#include "admin/CameraCommands.h"
#include "admin/SettingKeys.h"
#include "cameras/CameraChoices.h"
#include "support/Sequences.h"
#include "ui/CameraListWindow.h"
#include "ui/CameraSheet.h"

#include <QPlainTextEdit>
#include <QPushButton>

#include <array>
#include <vector>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr int kSequences = 24;
constexpr int kEvents = 60;

class RowModel : public RowWorld
{
protected:
    using Kind = EventKind<RowModel>;

    RowModel()
    {
        house_.log.setOn(false);
        connectWindows();
    }

    // As the program does.
    void connectWindows()
    {
        Interface &main = rooms_.window;
        QObject::connect(&main, &Interface::sheetWanted, &sheet_, &CameraSheet::present);
        QObject::connect(&sheet_, &CameraSheet::addressChosen, &main, &Interface::fillAddress);
        QObject::connect(&sheet_, &CameraSheet::saved, &house_.page, &CameraPage::reread);
        QObject::connect(&list_, &CameraListWindow::storing, &main, &Interface::endAddress);
        QObject::connect(&list_, &CameraListWindow::stored, &house_.page, &CameraPage::reread);
    }

    void hear()
    {
        house_.engine.adoptSettings();
        rules_.reread();
    }

    void hearMostly()
    {
        if (!oneIn(3)) {
            hear();
        }
    }

    void add()
    {
        const CameraAddress camera = anyCamera();
        const QString name = oneIn(2) ? QStringLiteral("Gate") : QString();
        const QString url = anyUrl();
        const CommandResult result = addCamera(outside_, {url, camera, name, {}});
        EXPECT_EQ(result.status == kDone, rules_.at(camera).url.isEmpty());
        if (result.status == kDone) {
            rules_.at(camera).add(url, name);
            hearMostly();
        }
    }

    void behind() override
    {
        static const std::array<void (RowModel::*)(), 6> kinds{
            &RowModel::tick,       &RowModel::passTime, &RowModel::hear,
            &RowModel::editByHand, &RowModel::add,      &RowModel::remove};
        (this->*kinds.at(static_cast<std::size_t>(below(6))))();
    }

    void remove()
    {
        const CameraAddress camera = anyCamera();
        if (removeCamera(outside_, {camera}).status == kDone) {
            rules_.at(camera) = {};
            hearMostly();
        }
    }

    void editByHand()
    {
        const CameraAddress camera = anyCamera();
        const QString url = oneIn(3) ? QString() : anyUrl();
        outside_.write(listSection(camera.group), rowKey(u"lst", camera.row), url);
        rules_.at(camera).url = url;
        if (oneIn(3)) {
            hear();
        }
    }

    void set()
    {
        const CameraAddress camera = anyCamera();
        const bool on = oneIn(2);
        const QString value = on ? QStringLiteral("1") : QStringLiteral("0");
        const QString typed = on ? QStringLiteral("=on") : QStringLiteral("=off");
        const int kind = below(3);
        const QString key =
            kind == 0 ? QStringLiteral("group.%1").arg(camera.group)
                      : QStringLiteral("camera.%1.%2")
                            .arg(cameraText(camera),
                                 kind == 1 ? QStringLiteral("auto") : QStringLiteral("delete"));
        EXPECT_EQ(setKeys(outside_, house_.paths, {{key + typed}}).status, kDone);
        if (kind == 0) {
            rules_.active.at(static_cast<std::size_t>(camera.group)) = value;
        } else {
            rules_.at(camera)
                .row[kind == 1 ? QStringLiteral("AutoDelai") : QStringLiteral("EffM")] = value;
        }
        hearMostly();
    }

    template <typename Control>
    Control &inSheet(const QString &name)
    {
        return *sheet_.findChild<Control *>(name);
    }

    void openSheet()
    {
        if (!mayUseMain() || cursorRow() < 0) {
            return;
        }
        const CameraAddress camera{rules_.group, cursorRow()};
        rules_.leave();
        const bool isBusy = sheet_.isVisible() && inSheet_ != filled_;
        QTest::keyClick(&box(camera.row), Qt::Key_F4);
        QCoreApplication::processEvents();
        EXPECT_TRUE(sheet_.isVisible());
        if (!isBusy) {
            const StoredCamera &stored = rules_.at(camera);
            sheetOf_ = camera;
            sheetUrl_ = stored.url;
            filled_ = {stored.choices[QStringLiteral("Name")], stored.url,
                       stored.choices[QStringLiteral("User")]};
            inSheet_ = filled_;
        }
    }

    void typeInSheet()
    {
        if (!sheet_.isVisible() || press_) {
            return;
        }
        const int field = below(3);
        const QString text = field == 0
                                 ? QStringList{QStringLiteral("Yard"), QString()}.at(below(2))
                             : field == 1 ? (oneIn(4) ? QString() : anyUrl())
                                          : QStringLiteral("u%1").arg(below(3));
        auto &edit = inSheet<QLineEdit>(QStringList{QStringLiteral("sheetName"),
                                                    QStringLiteral("sheetAddress"),
                                                    QStringLiteral("sheetUser")}
                                            .at(field));
        sheet_.activateWindow();
        QTest::mouseClick(&edit, Qt::LeftButton);
        QTest::keyClick(&edit, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&edit, Qt::Key_Delete);
        QTest::keyClicks(&edit, text);
        (field == 0 ? inSheet_.name : field == 1 ? inSheet_.url : inSheet_.user) = text;
    }

    void saveSheet()
    {
        if (!sheet_.isVisible() || press_) {
            return;
        }
        sheet_.activateWindow();
        QTest::mouseClick(&inSheet<QPushButton>(QStringLiteral("sheetSave")), Qt::LeftButton);
        const bool isRefused = rules_.at(sheetOf_).url != sheetUrl_;
        EXPECT_EQ(sheet_.isVisible(), isRefused);
        if (isRefused) {
            return;
        }
        if (inSheet_.url != filled_.url) {
            rules_.fill(sheetOf_, inSheet_.url);
        }
        if (!inSheet_.url.isEmpty() || filled_.url.isEmpty()) {
            QMap<QString, QString> &choices = rules_.at(sheetOf_).choices;
            if (inSheet_.name != filled_.name) {
                choices[QStringLiteral("Name")] = inSheet_.name;
            }
            if (inSheet_.user != filled_.user || inSheet_.url != filled_.url) {
                choices[QStringLiteral("User")] = inSheet_.user;
            }
        }
        rules_.reread();
    }

    void cancelSheet()
    {
        if (sheet_.isVisible() && !press_) {
            QTest::mouseClick(&inSheet<QPushButton>(QStringLiteral("sheetCancel")), Qt::LeftButton);
        }
    }

    void openList()
    {
        if (!press_) {
            listed_ = anyUrl() + (oneIn(2) ? QString() : QStringLiteral("?%1").arg(below(9)));
            list_.present();
            QCoreApplication::processEvents();
            list_.findChild<QPlainTextEdit *>()->setPlainText(listed_);
            listedFor_ = rules_.placeFor(listed_);
        }
    }

    void storeList()
    {
        if (!list_.isVisible() || press_) {
            return;
        }
        if (QApplication::activeWindow() != &list_) {
            list_.activateWindow();
            QCoreApplication::processEvents();
            listedFor_ = rules_.placeFor(listed_);
        }
        auto &store = *list_.findChild<QPushButton *>(QStringLiteral("listStore"));
        EXPECT_EQ(store.isEnabled(), listedFor_.has_value());
        QTest::mouseClick(&store, Qt::LeftButton);
        if (!listedFor_) {
            return;
        }
        rules_.leave();
        const auto place = rules_.placeFor(listed_);
        if (place == listedFor_) {
            rules_.at(*place).add(listed_, {});
            rules_.reread();
        }
        listedFor_ = place == listedFor_ ? std::nullopt : place;
    }

    void check() override
    {
        rooms_.clock.advance(0ms);
        followFront();
        checkFile();
        if (rooms_.window.isVisible()) {
            checkWindow();
            if (house_.scope.running() == 0) {
                checkLamps();
            }
        }
    }

    void play(int sequence)
    {
        random_.seed(static_cast<quint32>(sequence));
        playEvents(
            *this, kKinds, {sequence, kEvents}, [this](int bound) { return below(bound); },
            [this] { check(); });
    }

    // A new house costs more than a sequence.
    void tidyUp()
    {
        release();
        sheet_.close();
        list_.close();
        rooms_.clock.advance(20s);
        bringUp();
        rooms_.selectTab(0);
        rooms_.clock.advance(20s);
        house_.tree.write(u"Velmora.ini", "[Control]\r\nStRep=C:\\in\r\nTempo=60\r\nTIO=5\r\n");
        hear();
        rooms_.selectTab(0);
        rules_ = {};
        rules_.load(0);
        check();
    }

    static bool HasFailure() { return testing::Test::HasFailure(); }

private:
    static const std::vector<Kind> kKinds;

    SettingsFile outside_{house_.settings.programFolder()};
    CameraSheet sheet_{house_.settings, house_.view.trial()};
    CameraListWindow list_{house_.settings};
    CameraAddress sheetOf_;
    QString sheetUrl_;
    SheetFields filled_;
    SheetFields inSheet_;
    QString listed_;
    std::optional<CameraAddress> listedFor_;
};

const std::vector<RowModel::Kind> RowModel::kKinds{
    {"click a box", &RowModel::clickBox, 3},
    {"paste", &RowModel::paste, 3},
    {"type", &RowModel::typeLetter},
    {"take back", &RowModel::takeBack},
    {"undo", &RowModel::undo},
    {"empty", &RowModel::empty},
    {"drop", &RowModel::drop},
    {"paste lines", &RowModel::pasteLines},
    {"put text", &RowModel::putText},
    {"key", &RowModel::key, 2},
    {"press switch", &RowModel::pressSwitch, 2},
    {"press best time", &RowModel::pressBestTime},
    {"press group", &RowModel::pressGroup},
    {"release", &RowModel::release, 2},
    {"reset", &RowModel::reset},
    {"click tab", &RowModel::clickTab},
    {"key of tab", &RowModel::keyOfTab},
    {"tool on tabs", &RowModel::toolOnTabs},
    {"hear", &RowModel::hear},
    {"add", &RowModel::add, 2},
    {"remove", &RowModel::remove},
    {"edit by hand", &RowModel::editByHand},
    {"set", &RowModel::set},
    {"tick", &RowModel::tick},
    {"pass time", &RowModel::passTime, 2},
    {"hide", &RowModel::hide},
    {"close", &RowModel::close},
    {"bring up", &RowModel::bringUp, 2},
    {"other window", &RowModel::otherWindow},
    {"open sheet", &RowModel::openSheet, 2},
    {"type in sheet", &RowModel::typeInSheet, 2},
    {"save sheet", &RowModel::saveSheet},
    {"cancel sheet", &RowModel::cancelSheet},
    {"open list", &RowModel::openList},
    {"store list", &RowModel::storeList},
};

TEST_F(RowModel, HoldsAfterEveryEventOfRandomSequences)
{
    playSequences(kSequences, [this](int sequence) {
        tidyUp();
        play(sequence);
    });
    EXPECT_GT(stored(), 0);
}

} // namespace
} // namespace velmora::test
