// Whatever a user does in the windows of the program, in any order, while cameras answer and the
// program ends and begins: each window shows what the rules say of all that was done in any of
// them, the settings file holds it, and no image comes or goes but those that were stored or agreed
// upon.
#include "ProgramChecks.h"
#include "support/Sequences.h"

namespace velmora::test {
namespace {

constexpr int kSequences = 24;
constexpr int kEvents = 40;

class ProgramModel : public ProgramChecks
{
protected:
    void play(int sequence)
    {
        begin(sequence);
        check();
        playEvents(
            *this, kKinds, {sequence, kEvents}, [this](int bound) { return below(bound); },
            [this] {
                rest();
                check();
            });
        endProgram();
    }

    void behindQuestion() override
    {
        const auto &kind = anyOfKinds(kBehind, [this](int bound) { return below(bound); });
        (this->*kind.run)();
    }

    void endAndStart()
    {
        bringBackUnused();
        endProgram();
        startAgain();
    }

    void endInAHurry()
    {
        bringBackUnused();
        endProgram();
        takeStoredPlaces();
        startAgain();
    }

    // The question goes with the program, unanswered.
    void endWithQuestion()
    {
        if (mayBrowse()) {
            focusOn(viewsList());
            QTest::keyClick(&list(viewsList()), Qt::Key_Delete);
            endAndStart();
        }
    }

    // What was typed is what the next start uses.
    void endHalfTyped()
    {
        if (!mayUseMain() || isAway_) {
            return;
        }
        enterStorage();
        auto &edit = find<QLineEdit>(kMain, QStringLiteral("StRep"));
        QString &stored = control_[QStringLiteral("StRep")];
        QTest::keyClick(&edit, Qt::Key_A, Qt::ControlModifier);
        const QString text = pick(kStorages);
        QGuiApplication::clipboard()->setText(text);
        QTest::keyClick(&edit, Qt::Key_V, Qt::ControlModifier);
        const bool isOther = stored != text;
        endProgram();
        stored = text;
        isOther ? browser_.moveTo(root()) : void();
        startAgain();
    }

    // Folders are slow to read, and nothing waits for what was begun before.
    void hurry()
    {
        closeCalendar();
        if (mayBrowse()) {
            focusOn(viewsList());
        }
        keyRefresh();
        rest();
        hurried_.clear();
        const std::size_t images = files_.size();
        busy_.setCost(std::chrono::milliseconds{10});
        for (int events = 2 + below(5); events > 0; --events) {
            const auto &kind = anyOfKinds(kHurried, [this](int bound) { return below(bound); });
            hurried_.append(QString::fromLatin1(kind.name));
            (this->*kind.run)();
            for (int turns = below(4); turns > 0; --turns) {
                QCoreApplication::processEvents();
            }
        }
        busy_.setCost(std::chrono::milliseconds{0});
        rest();
        SCOPED_TRACE("hurried: " + hurried_.join(QStringLiteral(", ")).toStdString());
        checkAfterHurry(images);
        check();
    }

    static bool HasFailure() { return testing::Test::HasFailure(); }

private:
    static const std::vector<EventKind<ProgramModel>> kKinds;
    static const std::vector<EventKind<ProgramModel>> kHurried;
    static const std::vector<EventKind<ProgramModel>> kBehind;

    QStringList hurried_; // in the last hurry
};

const std::vector<EventKind<ProgramModel>> ProgramModel::kHurried{
    {"click a group", &ProgramModel::clickGroup, 2},
    {"click a camera", &ProgramModel::clickCamera, 2},
    {"key on the cameras", &ProgramModel::keyCamera, 2},
    {"F5", &ProgramModel::keyRefresh},
    {"click cAuto", &ProgramModel::clickAuto},
    {"click cCamera", &ProgramModel::clickView, 2},
    {"walk", &ProgramModel::walk},
    {"press bFilm", &ProgramModel::pressFilm},
    {"press cSetUp", &ProgramModel::pressSetup, 2},
    {"hide the main window", &ProgramModel::hideMain},
    {"close the browser", &ProgramModel::closeBrowser},
    {"click a tab", &ProgramModel::clickTab},
    {"type an address", &ProgramModel::typeAddress, 4},
    {"start a second time", &ProgramModel::startSecond},
    {"command", &ProgramModel::command},
    {"add", &ProgramModel::add, 2},
    {"remove", &ProgramModel::remove, 2},
    {"import a list", &ProgramModel::importList},
    {"set a storage folder", &ProgramModel::setStorage, 2},
    {"type a storage folder", &ProgramModel::typeStorage},
    {"open a sheet", &ProgramModel::openSheet, 2},
    {"type in the sheet", &ProgramModel::typeInSheet, 2},
    {"save the sheet", &ProgramModel::saveSheet, 2},
    {"go to a camera", &ProgramModel::goToCamera, 2},
    {"move the disk", &ProgramModel::moveDisk},
    {"end and start", &ProgramModel::endInAHurry},
};

const std::vector<EventKind<ProgramModel>> ProgramModel::kBehind{
    {"walk", &ProgramModel::walk, 2},
    {"pass", &ProgramModel::pass, 2},
    {"command", &ProgramModel::command},
    {"add", &ProgramModel::add},
    {"remove", &ProgramModel::remove},
    {"import a list", &ProgramModel::importList},
    {"set a storage folder", &ProgramModel::setStorage},
    {"type a storage folder", &ProgramModel::typeStorage},
    {"type an address", &ProgramModel::typeAddress},
    {"click a tab", &ProgramModel::clickTab},
    {"save the sheet", &ProgramModel::saveSheet},
    {"click a day", &ProgramModel::clickDay},
    {"go to a camera", &ProgramModel::goToCamera},
    {"start a second time", &ProgramModel::startSecond},
};

const std::vector<EventKind<ProgramModel>> ProgramModel::kKinds{
    {"click a group", &ProgramModel::clickGroup, 2},
    {"click a camera", &ProgramModel::clickCamera, 2},
    {"key on the cameras", &ProgramModel::keyCamera},
    {"click an image", &ProgramModel::clickImage},
    {"key on the images", &ProgramModel::keyImage},
    {"Enter or Escape", &ProgramModel::keyZoom},
    {"F5", &ProgramModel::keyRefresh},
    {"click a cell", &ProgramModel::clickCell},
    {"right click on a cell", &ProgramModel::zoomCell},
    {"click cAuto", &ProgramModel::clickAuto},
    {"click cCamera", &ProgramModel::clickView, 2},
    {"click cScan", &ProgramModel::clickScan},
    {"walk", &ProgramModel::walk, 2},
    {"search", &ProgramModel::search},
    {"delete", &ProgramModel::deleteImage, 2},
    {"press bFilm", &ProgramModel::pressFilm, 2},
    {"press PauseCine", &ProgramModel::pressPause},
    {"close the film", &ProgramModel::closeFilm},
    {"press cSetUp", &ProgramModel::pressSetup, 3},
    {"hide the main window", &ProgramModel::hideMain},
    {"close the browser", &ProgramModel::closeBrowser},
    {"click a tab", &ProgramModel::clickTab, 2},
    {"type an address", &ProgramModel::typeAddress, 4},
    {"click an address", &ProgramModel::clickAddress},
    {"click a switch", &ProgramModel::clickSwitch},
    {"click a best time", &ProgramModel::clickBestTime},
    {"click RAZ", &ProgramModel::clickReset},
    {"click ActLst", &ProgramModel::clickGroupSwitch, 2},
    {"type an option", &ProgramModel::typeOption},
    {"click cDebug", &ProgramModel::clickDebug},
    {"start a second time", &ProgramModel::startSecond},
    {"pass", &ProgramModel::pass, 4},
    {"begin a pass", &ProgramModel::beginPass, 2},
    {"pass time", &ProgramModel::passTime, 3},
    {"command", &ProgramModel::command, 4},
    {"add", &ProgramModel::add, 2},
    {"remove", &ProgramModel::remove},
    {"import a list", &ProgramModel::importList, 2},
    {"edit by hand", &ProgramModel::editByHand},
    {"hurry", &ProgramModel::hurry, 5},
    {"open a sheet", &ProgramModel::openSheet, 3},
    {"type in the sheet", &ProgramModel::typeInSheet, 3},
    {"save the sheet", &ProgramModel::saveSheet, 2},
    {"open the calendar", &ProgramModel::openCalendar},
    {"close the calendar", &ProgramModel::closeCalendar},
    {"click a day", &ProgramModel::clickDay},
    {"click an hour", &ProgramModel::clickHour},
    {"open the health", &ProgramModel::openHealth},
    {"look at the health", &ProgramModel::lookAtHealth, 2},
    {"go to a camera", &ProgramModel::goToCamera, 2},
    {"import", &ProgramModel::import, 2},
    {"open the film to keep", &ProgramModel::openKeep},
    {"open the alarm", &ProgramModel::openAlarm},
    {"close a window", &ProgramModel::closeTool, 2},
    {"set the clock", &ProgramModel::setClock},
    {"type a storage folder", &ProgramModel::typeStorage},
    {"set a storage folder", &ProgramModel::setStorage},
    {"move the disk", &ProgramModel::moveDisk},
    {"enter the storage box", &ProgramModel::enterStorage},
    {"an image of an older name", &ProgramModel::writeOldName, 2},
    {"end with a question", &ProgramModel::endWithQuestion},
    {"end in the middle of a folder", &ProgramModel::endHalfTyped},
    {"end and start", &ProgramModel::endAndStart},
};

TEST_F(ProgramModel, HoldsAfterEveryEventOfRandomSequences)
{
    playSequences(kSequences, [this](int sequence) { play(sequence); });
}

} // namespace
} // namespace velmora::test
