// Random sequences of what a user can do in a camera's sheet while commands, the capture and late
// answers change what is around it, each followed by a check of the sheet and of the settings file
// against what the rules make of them.
#include "SheetHands.h"
#include "admin/CameraCommands.h"
#include "support/Sequences.h"

#include <vector>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr int kSequences = 14;
constexpr int kEvents = 50;

const QString kNoCamera = QStringLiteral("no such camera");

class SheetModel : public SheetHands
{
protected:
    using Kind = EventKind<SheetModel>;

    SheetModel()
    {
        house_.log.setOn(false);
        Interface &main = rooms_.window; // connected as the program does
        QObject::connect(&main, &Interface::sheetWanted, &sheet_, &CameraSheet::present);
        QObject::connect(&sheet_, &CameraSheet::addressChosen, &main, &Interface::fillAddress);
        QObject::connect(&sheet_, &CameraSheet::saved, &house_.page, &CameraPage::reread);
        QObject::connect(&house_.view.trial(), &CameraTrial::ended, &another_,
                         [this] { takeResult(); });
    }

    ScriptedReply reply(const QString &url) override
    {
        return replies_.value(url, {{}, {}, {}, {}, kNoCamera});
    }

    // Around the sheet.
    void answerAnew()
    {
        static const QString day = QStringLiteral("Tue, 07 Mar 2006 14:05:%1 GMT");
        const QString jpeg = QStringLiteral("image/jpeg");
        static const QByteArray red = pictureBytes(Qt::red, {640, 480});
        static const QByteArray blue = pictureBytes(Qt::blue, {640, 480});
        const QString date = day.arg(10 + below(3));
        const QList<ScriptedReply> all{
            {red, date, jpeg, {}, {}},
            {blue, date, {}, {}, {}},
            {red, {}, jpeg, {}, {}},
            {blue, {}, jpeg, {}, {}},
            {QByteArray(2000 + below(9), 'x'), date, QStringLiteral("text/plain"), {}, {}},
            {QByteArray(2000, 'y'), {}, {}, {}, {}},
            {QByteArray(400, 'x'), date, jpeg, {}, {}},
            {{}, {}, {}, {}, QStringLiteral("gone")},
            {"<html><title>T</title>" + QByteArray(2000, ' '), {}, {}, {}, {}},
        };
        const QString url = anyUrl();
        ScriptedReply reply = all.at(below(static_cast<int>(all.size())));
        reply.delay = below(8) * 1000ms;
        replies_.insert(url, reply);
        rooms_.source.answer(url, reply);
    }

    // What another program stores is no concern of the sheet's rules.
    void adopt(CameraAddress camera)
    {
        const QString section = cameraSection(camera);
        const auto choice = [&](QStringView key) { return outside_.read(section, key); };
        SheetContent &stored = rules_.stored(camera);
        const QString keep = choice(u"Keep");
        stored = {choice(u"Name"),
                  outside_.read(listSection(camera.group), rowKey(u"lst", camera.row)),
                  choice(u"User"),
                  choice(u"Password"),
                  keep.isEmpty()         ? 0
                  : keep == u"differing" ? 1
                                         : kClearlyRow,
                  keep.startsWith(u"clearly:") ? keep.section(u':', 1).toInt() : kUsualPercent};
    }

    void hearMostly()
    {
        if (!oneIn(3)) {
            house_.engine.adoptSettings();
        }
    }

    void add()
    {
        const CameraAddress camera = anyCamera();
        const QString name = oneIn(2) ? QStringLiteral("Gate") : QString();
        const CommandResult result = addCamera(outside_, {anyUrl(), camera, name, {}});
        EXPECT_EQ(result.status == kDone, rules_.stored(camera).url.isEmpty());
        adopt(camera);
        hearMostly();
    }

    void remove()
    {
        const CameraAddress camera = anyCamera();
        static_cast<void>(removeCamera(outside_, {camera}));
        adopt(camera);
        hearMostly();
    }

    void editByHand()
    {
        const CameraAddress camera = anyCamera();
        const QString section = cameraSection(camera);
        switch (below(4)) {
        case 0:
            outside_.write(listSection(camera.group), rowKey(u"lst", camera.row), anyUrl());
            break;
        case 1:
            outside_.write(section, u"Name", QStringLiteral("Door"));
            break;
        case 2:
            outside_.write(section, oneIn(2) ? u"User" : u"Password", QStringLiteral("them"));
            break;
        default:
            outside_.write(section, u"Keep",
                           anyOf({QStringLiteral("differing"), QStringLiteral("clearly:30")}));
        }
        adopt(camera);
        hearMostly();
    }

    void capture()
    {
        house_.scheduler.setTickCounter(59);
        house_.scope.launch(house_.scheduler.Timer_Timer());
    }

    void passTime() { rooms_.clock.advance(below(5) * 1000ms); }

    void otherStorage()
    {
        house_.storage.choose(house_.tree.path(oneIn(2) ? u"drives/c/in" : u"drives/c/other"));
    }

    void clickTab()
    {
        if (rooms_.window.isVisible()) {
            activate(rooms_.window);
            rooms_.selectTab(below(kUsedGroups + 1));
        }
    }

    void hideMain()
    {
        if (rooms_.window.isVisible()) {
            activate(rooms_.window);
            rooms_.click(QStringLiteral("Cache"));
            activate(another_);
        }
    }

    // What else ends at that moment has not changed anything yet.
    void takeResult()
    {
        ASSERT_TRUE(trial_);
        const SheetTrial ended = *std::exchange(trial_, std::nullopt);
        EXPECT_EQ(rooms_.clock.monotonicNow().count(), ended.ends.count());
        checkResult(ended);
        result_ = text(u"sheetResult");
        difference_ = text(u"sheetDifference");
        notice_ = in<PictureView>(QStringLiteral("sheetPicture")).notice();
    }

    QString text(QStringView label) { return in<QLabel>(label.toString()).text(); }

    static QString orNone(const QString &text)
    {
        return text.isEmpty() ? QStringLiteral("none") : text;
    }

    void checkResult(const SheetTrial &trial)
    {
        const bool isLate = trial.reply.delay > 5s;
        const bool isThere = trial.reply.failure.isEmpty() && !isLate;
        const bool isPicture = isThere && trial.reply.contentType != u"text/plain" &&
                               trial.reply.body.startsWith("\xFF\xD8");
        QStringList lines = text(u"sheetResult").split(u'\n');
        checkVerdict(trial, lines.takeFirst());
        QStringList expected{
            QStringLiteral("%1 ms").arg(std::min(trial.reply.delay, 5000ms).count())};
        if (isThere) {
            const QString size = isPicture ? QStringLiteral("640 × 480 pixels, ") : QString();
            expected =
                QStringList{QStringLiteral("%1%2 bytes, type %3")
                                .arg(size)
                                .arg(trial.reply.body.size())
                                .arg(orNone(trial.reply.contentType)),
                            QStringLiteral("Last-Modified: ") + orNone(trial.reply.lastModified),
                            QStringLiteral("Date: none")} +
                expected;
        }
        EXPECT_EQ(lines, expected);
        EXPECT_EQ(in<PictureView>(QStringLiteral("sheetPicture")).notice(),
                  isPicture ? QString()
                  : isThere ? QStringLiteral("cannot be shown")
                            : QStringLiteral("no picture"));
        if (!isPicture) {
            EXPECT_EQ(text(u"sheetDifference"), QString());
        }
    }

    void checkVerdict(const SheetTrial &trial, const QString &verdict)
    {
        const ScriptedReply &reply = trial.reply;
        if (reply.delay > 5s) {
            EXPECT_EQ(verdict, QStringLiteral("no picture: time-out"));
        } else if (!reply.failure.isEmpty()) {
            EXPECT_EQ(verdict, QStringLiteral("no picture: ") + reply.failure);
        } else if (reply.body.startsWith("<html>")) {
            EXPECT_EQ(verdict, QStringLiteral("not a picture: a web page titled \"T\""));
        } else if (reply.body.size() < 1000) {
            EXPECT_EQ(verdict, QStringLiteral("too short for a picture"));
        } else {
            checkWorth(trial, verdict);
        }
    }

    void checkWorth(const SheetTrial &trial, const QString &verdict)
    {
        const QString folder = house_.storage.folderOf(trial.asked.url);
        const bool isEmpty = QDir(folder).entryList(QDir::Files).isEmpty();
        QString worth = verdict;
        if (!trial.reply.body.startsWith("\xFF\xD8")) {
            const QString type = trial.reply.contentType;
            const QString remark = type.isEmpty()
                                       ? QStringLiteral("not a picture; ")
                                       : QStringLiteral("not a picture (%1); ").arg(type);
            EXPECT_TRUE(verdict.startsWith(remark)) << verdict.toStdString();
            worth = verdict.sliced(remark.size());
        }
        const QString date = trial.reply.lastModified;
        const auto digits = [](const QString &of) { return of.section(u':', -1).left(2); };
        if (!date.isEmpty()) {
            const QString last = house_.value(u"LastModified", trial.camera);
            const bool isNew = isEmpty || digits(last) != digits(date);
            EXPECT_EQ(worth, isNew ? QStringLiteral("new: date of the server")
                                   : QStringLiteral("unchanged: date of the server"))
                << last.toStdString();
        } else if (trial.asked.keep == 0) {
            EXPECT_TRUE(worth.startsWith(isEmpty ? u"new: the camera has no image yet"
                                                 : u"not kept: it has no date"))
                << worth.toStdString();
        } else {
            const bool differs = worth.startsWith(u"new: it differs");
            EXPECT_TRUE(differs || (!isEmpty && worth == u"unchanged")) << worth.toStdString();
        }
    }

    void checkSheet()
    {
        ASSERT_EQ(sheet_.isVisible(), rules_.isOpen());
        if (!rules_.isOpen()) {
            return;
        }
        const SheetContent &shown = rules_.shown();
        for (int number = 0; number < 4; ++number) {
            EXPECT_EQ(field(number).text(), shown.texts().at(number)) << number;
        }
        EXPECT_EQ(sheet_.windowTitle(), rules_.title());
        EXPECT_EQ(in<QComboBox>(QStringLiteral("sheetKeep")).currentIndex(), shown.keep);
        EXPECT_EQ(in<QSpinBox>(QStringLiteral("sheetPercent")).value(), shown.percent);
        EXPECT_EQ(in<QSpinBox>(QStringLiteral("sheetPercent")).isEnabled(),
                  shown.keep == kClearlyRow);
        EXPECT_EQ(text(u"sheetMessage"), rules_.message());
        for (const QString &name : {QStringLiteral("sheetTest"), QStringLiteral("sheetSave"),
                                    QStringLiteral("sheetCancel")}) {
            EXPECT_TRUE(in<QPushButton>(name).isEnabled());
        }
        EXPECT_EQ(text(u"sheetResult"), result_);
        EXPECT_EQ(text(u"sheetDifference"), difference_);
        EXPECT_EQ(in<PictureView>(QStringLiteral("sheetPicture")).notice(), notice_);
    }

    void checkFile()
    {
        for (const CameraAddress camera : kAllCameras) {
            if (camera.group >= kUsedGroups || camera.row >= kUsedRows) {
                continue;
            }
            const QString section = cameraSection(camera);
            const SheetContent &rules = rules_.stored(camera);
            const QStringList stored{
                outside_.read(section, u"Name"),
                outside_.read(listSection(camera.group), rowKey(u"lst", camera.row)),
                outside_.read(section, u"User"), outside_.read(section, u"Password")};
            EXPECT_EQ(stored, rules.texts()) << section.toStdString();
            EXPECT_EQ(outside_.read(section, u"Keep"), rules.keepText()) << section.toStdString();
        }
    }

    void check()
    {
        rooms_.clock.advance(0ms);
        EXPECT_TRUE(!trial_ || rooms_.clock.monotonicNow() < trial_->ends);
        checkSheet();
        checkFile();
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
        sheet_.close();
        rooms_.clock.advance(20s);
        rooms_.window.bringUp();
        rooms_.selectTab(kUsedGroups);
        house_.tree.makeFolder(u"drives/c/other");
        house_.storage.choose(house_.tree.path(u"drives/c/in"));
        house_.tree.write(u"Velmora.ini", "[Control]\r\nStRep=C:\\in\r\nTempo=60\r\nTIO=5\r\n"
                                          "[Liste0]\r\nLstAct=1\r\n[Liste1]\r\nLstAct=1\r\n");
        house_.engine.adoptSettings();
        rules_ = {};
        endTrial();
        check();
    }

    static bool HasFailure() { return testing::Test::HasFailure(); }

private:
    static const std::vector<Kind> kKinds;

    SettingsFile outside_{house_.settings.programFolder()};
    QMap<QString, ScriptedReply> replies_;
};

const std::vector<SheetModel::Kind> SheetModel::kKinds{
    {"open", &SheetModel::open, 4},
    {"type", &SheetModel::type, 5},
    {"take back", &SheetModel::takeBack},
    {"choose keep", &SheetModel::chooseKeep, 2},
    {"choose percent", &SheetModel::choosePercent, 2},
    {"test", &SheetModel::test, 3},
    {"save", &SheetModel::save, 3},
    {"cancel", &SheetModel::cancel},
    {"answer anew", &SheetModel::answerAnew, 2},
    {"add", &SheetModel::add},
    {"remove", &SheetModel::remove},
    {"edit by hand", &SheetModel::editByHand},
    {"capture", &SheetModel::capture, 2},
    {"pass time", &SheetModel::passTime, 3},
    {"other storage", &SheetModel::otherStorage},
    {"click tab", &SheetModel::clickTab},
    {"hide main", &SheetModel::hideMain},
};

TEST_F(SheetModel, HoldsAfterEveryEventOfRandomSequences)
{
    playSequences(kSequences, [this](int sequence) {
        tidyUp();
        play(sequence);
    });
    EXPECT_GT(house_.stored().size(), 0);
}

} // namespace
} // namespace velmora::test
