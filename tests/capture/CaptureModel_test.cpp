// Random sequences of all that happens to a capture: after each event its files, settings, log,
// lamps and counters are those that the rules give.
#include "CaptureHands.h"
#include "support/Sequences.h"

#include <QRegularExpression>

#include <vector>

namespace velmora::test {
namespace {

constexpr int kSequences = 15;
constexpr int kEvents = 60;

class CaptureRun : public CaptureHands
{
public:
    using CaptureHands::CaptureHands;

    void play(int sequence)
    {
        for (int i = 0; i < kEvents && !testing::Test::HasFailure(); ++i) {
            const Kind &kind = anyOfKinds(kKinds, [this](int bound) { return below(bound); });
            done_.append(QString::fromLatin1(kind.name));
            (this->*kind.run)();
            town_.settle();
            if (rules_.isUnsure) {
                break;
            }
            SCOPED_TRACE("sequence " + std::to_string(sequence));
            compare();
        }
        EXPECT_FALSE(testing::Test::HasFailure()) << text(done_);
    }

    [[nodiscard]] qsizetype stored() const { return house_.stored().size(); }

private:
    using Kind = EventKind<CaptureHands>;

    static const std::vector<Kind> kKinds;

    static std::string text(const QStringList &list)
    {
        return list.join(QStringLiteral(", ")).toStdString();
    }

    void compare()
    {
        compareFolders();
        compareSettings();
        compareLog();
        EXPECT_EQ(text(house_.stored()), text(rules_.stored));
        EXPECT_EQ(text(house_.failed()), text(rules_.failed));
        EXPECT_EQ(lamps_, rules_.lamps);
        EXPECT_EQ(house_.scheduler.ticksLeft(), 60 - rules_.counter);
        if (!rules_.isPassing) { // while it runs, each camera that was loaded starts the timer
            EXPECT_EQ(house_.timer.isActive(), rules_.isTimerOn());
        }
        for (const CameraAddress camera : kCamerasUsed) {
            EXPECT_EQ(house_.store.automaticCounter(camera), rules_.automatic[camera])
                << camera.group << ':' << camera.row;
        }
    }

    // What is there, whole. path: in the tree.
    [[nodiscard]] RuleFolder onDisk(const QString &path) const
    {
        const QFileInfo info(house_.tree.path(path));
        if (info.isSymLink()) {
            return {
                RuleFolder::Is::Link, QFile::symLinkTarget(info.filePath()).section(u'/', -1), {}};
        }
        if (!info.exists()) {
            return {};
        }
        RuleFolder folder{info.isDir() ? RuleFolder::Is::Folder : RuleFolder::Is::File, {}, {}};
        for (const QString &file : info.isDir() ? house_.tree.files(path) : QStringList()) {
            folder.files[file] = house_.tree.read(path + u'/' + file);
        }
        return folder;
    }

    void compareFolders()
    {
        for (const QString &storage : kStorages) {
            const DiskRules &rules = rules_.disks[storage];
            compareStorage(place(storage, rules.isThere), rules);
            EXPECT_FALSE(house_.tree.exists(place(storage, !rules.isThere)));
        }
    }

    void compareStorage(const QString &path, const DiskRules &rules)
    {
        QStringList names = house_.tree.folders(path) + house_.tree.files(path);
        names.removeAll(QStringLiteral("tmp"));
        for (const QString &name : names) {
            EXPECT_TRUE(rules.folders.contains(name)) << name.toStdString();
        }
        for (const QString &name : rules.folders.keys()) {
            const RuleFolder folder = onDisk(path + u'/' + name);
            const RuleFolder &wanted = rules.folders[name];
            EXPECT_EQ(folder.is, wanted.is) << name.toStdString();
            EXPECT_EQ(folder.target.toStdString(), wanted.target.toStdString());
            EXPECT_EQ(text(folder.files.keys()), text(wanted.files.keys())) << name.toStdString();
            EXPECT_TRUE(folder.files == wanted.files) << name.toStdString();
        }
        const QString work = path + QStringLiteral("/tmp");
        EXPECT_TRUE(rules.isRefusing || !house_.tree.exists(work) ||
                    house_.tree.files(work).isEmpty());
    }

    // As another program would read them.
    [[nodiscard]] RuleValues settings() const
    {
        RuleValues values;
        QString section;
        for (const QByteArray &bytes : house_.tree.read(u"Velmora.ini").split('\n')) {
            const QString line = QString::fromLatin1(bytes.trimmed());
            if (line.startsWith(u'[')) {
                section = line.mid(1).chopped(1);
            } else if (section != u"Control" && !line.startsWith(u"Digest=")) {
                values.insert(section + u' ' + line.section(u'=', 0, 0), line.section(u'=', 1));
            }
        }
        return values;
    }

    static RuleValues withoutEmpty(RuleValues values)
    {
        values.removeIf([](const auto &value) { return value->isEmpty(); });
        return values;
    }

    void compareSettings()
    {
        const RuleValues program = withoutEmpty(settings());
        const RuleValues rules = withoutEmpty(rules_.values);
        if (program == rules) {
            return;
        }
        for (const QString &key : program.keys() + rules.keys()) {
            EXPECT_EQ(program[key].toStdString(), rules[key].toStdString()) << key.toStdString();
        }
    }

    void compareLog()
    {
        static const QRegularExpression turn(QStringLiteral("Retention [^\n]*\n"));
        QString log = house_.logText();
        QStringList turns;
        for (auto match = turn.match(log); match.hasMatch(); match = turn.match(log)) {
            turns.append(match.captured().chopped(1));
            log.remove(match.capturedStart(), match.capturedLength());
        }
        EXPECT_EQ(log.toStdString(), rules_.log.toStdString());
        EXPECT_EQ(text(turns), text(rules_.turns));
        QFile::remove(house_.tree.path(u"Velmora.log"));
        rules_.log.clear();
        rules_.turns.clear();
    }
};

const std::vector<CaptureRun::Kind> CaptureRun::kKinds{
    {"tick", &CaptureHands::tick, 12},
    {"seconds", &CaptureHands::passSeconds, 8},
    {"time", &CaptureHands::passTime, 3},
    {"set clock", &CaptureHands::setClock},
    {"midnight", &CaptureHands::toMidnight},
    {"summer time", &CaptureHands::changeSummerTime},
    {"address", &CaptureHands::changeUrl, 3},
    {"group", &CaptureHands::switchGroup, 2},
    {"row", &CaptureHands::changeRow, 4},
    {"nearly due", &CaptureHands::nearlyDue, 4},
    {"choose", &CaptureHands::choose, 3},
    {"time-out", &CaptureHands::setTimeout},
    {"debug", &CaptureHands::debug},
    {"hear", &CaptureHands::hear},
    {"suspend", &CaptureHands::suspend},
    {"resume", &CaptureHands::resume, 2},
    {"edit storage", &CaptureHands::editStorage, 2},
    {"check", &CaptureHands::check, 2},
    {"name storage elsewhere", &CaptureHands::nameStorageElsewhere},
    {"move storage", &CaptureHands::moveStorage},
    {"refuse files", &CaptureHands::refuseFiles},
    {"folder", &CaptureHands::changeFolder, 4},
    {"answer", &CaptureHands::changeAnswer, 8},
};

class CaptureModel : public testing::Test
{
protected:
    FakeClock clock_;
    CaptureTown town_{clock_};
};

TEST_F(CaptureModel, HoldsAfterEveryEventOfRandomSequences)
{
    qsizetype stored = 0;
    const int played = playSequences(kSequences, [&](int sequence) {
        CaptureRun run(town_, clock_, sequence);
        run.play(sequence);
        stored += run.stored();
    });
    EXPECT_TRUE(stored > 0 || played < kSequences);
}

} // namespace
} // namespace velmora::test
