// Random sequences of what a user, commands from outside, a camera's sheet, a list and the capture
// can do to the camera rows, each followed by a check of the settings file and of the window
// against what the rules make of them.
#include "RowHands.h"
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

class RowModel : public RowHands
{
protected:
    struct Kind
    {
        const char *name;
        void (RowModel::*run)();
        int chances = 1;
    };

    RowModel()
    {
        house_.log.setOn(false);
        connectWindows();
        connectCapture();
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

    // The dates of what is captured are the answers' own.
    void connectCapture()
    {
        ImageStore &store = house_.store;
        const auto seconds = [this](CameraAddress camera, int taken) {
            rules_.showLoadSeconds(camera, taken);
        };
        QObject::connect(&store, &ImageStore::downloaded, &another_, seconds);
        QObject::connect(&rooms_.live, &LiveView::downloaded, &another_, seconds);
        QObject::connect(&store, &ImageStore::cameraAnswered, &another_,
                         [this](CameraAddress camera) {
                             takeTimes(camera);
                             rules_.answer(camera, now(camera, u"LastModified"));
                         });
        QObject::connect(&store, &ImageStore::cameraFailed, &another_,
                         [this](CameraAddress camera) {
                             takeTimes(camera);
                             rules_.fail(camera);
                         });
        QObject::connect(&store, &ImageStore::imageStored, &another_,
                         [this](CameraAddress camera) { rules_.countImage(camera); });
    }

    void takeTimes(CameraAddress camera)
    {
        for (const QString &word : {QStringLiteral("TimeLoad"), QStringLiteral("LocalTime")}) {
            rules_.at(camera).row[word] = now(camera, word);
        }
    }

    QString now(CameraAddress camera, QStringView word) { return house_.value(word, camera); }

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
        static const std::array kinds{&RowModel::tick, &RowModel::passTime,
                                      &RowModel::hear, &RowModel::editByHand,
                                      &RowModel::add,  &RowModel::remove};
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

    void tick()
    {
        for (const QString &url : kUrls) {
            const QDateTime date = QDateTime({2006, 3, 7}, {0, 0}).addSecs(60 * ++answers_ / 3);
            rooms_.source.answer(
                url, {QByteArray(oneIn(5) ? 500 : 2000, 'x'),
                      QLocale::c().toString(date, QStringLiteral("ddd, dd MMM yyyy HH:mm:ss")) +
                          QStringLiteral(" GMT"),
                      {},
                      std::chrono::seconds{below(4)},
                      {}});
        }
        house_.scheduler.setTickCounter(59);
        house_.scope.launch(house_.scheduler.Timer_Timer());
    }

    void passTime() { rooms_.clock.advance(std::chrono::milliseconds{below(4) * 1000}); }

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

    // Everything about cameras and groups, as another program would read it.
    QMap<QString, QString> file()
    {
        QMap<QString, QString> values;
        QString section;
        for (const QByteArray &bytes : house_.tree.read(u"Velmora.ini").split('\n')) {
            const QString line = QString::fromLatin1(bytes.trimmed());
            if (line.startsWith(u'[')) {
                section = line.mid(1).chopped(1);
            } else if (section != u"Control" || line.startsWith(u"Selecteur")) {
                values.insert(section + u' ' + line.section(u'=', 0, 0), line.section(u'=', 1));
            }
        }
        values.removeIf([](const auto &value) { return value->isEmpty(); });
        return values;
    }

    void checkFile()
    {
        const QMap<QString, QString> stored = file();
        const QMap<QString, QString> rules = rules_.file();
        if (stored == rules) {
            return;
        }
        for (const QString &key : (stored.keys() + rules.keys())) {
            EXPECT_EQ(stored[key], rules[key]) << key.toStdString();
        }
    }

    void checkSwitch(const QString &name, bool on)
    {
        if (!isPressed(name)) {
            EXPECT_EQ(rooms_.find<QCheckBox>(name).isChecked(), on) << name.toStdString();
        }
    }

    void checkWindow()
    {
        checkSwitch(QStringLiteral("ActLst"), rules_.groupOn);
        for (int row = 0; row < kRows; ++row) {
            const ShownRow &rules = rules_.shown(row);
            EXPECT_EQ(box(row).text(), rules.box) << row;
            checkSwitch(rowKey(u"AutoDelay", row), rules.automatic);
            checkSwitch(rowKey(u"EffM", row), rules.deletes);
            checkLabel(rowKey(u"BestTime", row), rules.bestTime);
            checkLabel(rowKey(u"lNew", row), QString::number(rules.newImages));
            checkLabel(rowKey(u"TimeLoad", row), QString::number(rules.loadSeconds));
        }
    }

    void checkLabel(const QString &name, const QString &text)
    {
        EXPECT_EQ(rooms_.find<QLabel>(name).text(), text) << name.toStdString();
    }

    // No camera is being fetched. The end of a fetch for an address that the row has no more shows
    // what is stored for the one that it has.
    void checkLamps()
    {
        for (int row = 0; row < kRows; ++row) {
            const int lamp = rooms_.find<Lamp>(rowKey(u"SB", row)).property("FillColor").toInt();
            EXPECT_TRUE(lamp == rules_.shown(row).lamp || lamp == rules_.storedLamp(row))
                << row << ": " << lamp << " for " << rules_.shown(row).lamp;
        }
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
        QStringList done;
        for (int i = 0; i < kEvents && !HasFailure(); ++i) {
            const Kind &kind = anyOfKinds(kKinds, [this](int bound) { return below(bound); });
            done.append(QString::fromLatin1(kind.name));
            (this->*kind.run)();
            SCOPED_TRACE("sequence " + std::to_string(sequence) + ": " +
                         done.join(QStringLiteral(", ")).toStdString());
            check();
        }
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

    [[nodiscard]] qsizetype stored() const { return house_.stored().size(); }

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
    int answers_ = 0;
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
    const Sequences all = sequencesToPlay(kSequences);
    for (int sequence = all.first; sequence < all.end && !HasFailure(); ++sequence) {
        tidyUp();
        play(sequence);
    }
    EXPECT_GT(stored(), 0);
}

} // namespace
} // namespace velmora::test
