// Random command lines, right and wrong, beside a program in whose boxes someone types, whose
// switches are held and whose cameras answer; each followed by a check of what the command printed,
// of the settings file and of the window against what the rules make of them.
#include "CommandWriter.h"
#include "support/Sequences.h"
#include "support/WithoutRootRights.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScopeGuard>

#include <array>
#include <vector>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr int kSequences = 6;
constexpr int kEvents = 50;

class CommandModel : public CommandWriter
{
protected:
    using Kind = EventKind<CommandModel>;

    CommandModel()
    {
        ImageStore &store = house_.store;
        QObject::connect(&store, &ImageStore::loadBegan, &another_, [this](CameraAddress camera) {
            loading_ = camera;
            asked_ = rules_.at(camera).url;
            if (failed_[camera] != asked_) { // another camera
                failed_[camera].clear();
            }
        });
        QObject::connect(&store, &ImageStore::loaded, &another_, [this] { loading_.reset(); });
        QObject::connect(&store, &ImageStore::cameraFailed, &another_,
                         [this](CameraAddress camera) { failed_[camera] = asked_; });
        QObject::connect(&store, &ImageStore::cameraAnswered, &another_,
                         [this](CameraAddress camera) { failed_[camera].clear(); });
    }

    QString stateOf(CameraAddress camera);
    void status();
    static QString statusLine(const QJsonObject &camera);
    QString statusLines();

    void command() { give(anyCommand()); }

    // Events.
    void behind() override
    {
        static const std::array<void (CommandModel::*)(), 5> kinds{
            &CommandModel::tick, &CommandModel::passTime, &CommandModel::command,
            &CommandModel::command, &CommandModel::editByHand};
        (this->*kinds.at(static_cast<std::size_t>(below(kinds.size()))))();
    }

    void editByHand()
    {
        const CameraAddress camera = anyCamera();
        const QString url = oneIn(3) ? QString() : anyUrl();
        outside_.write(listSection(camera.group), rowKey(u"lst", camera.row), url);
        rules_.at(camera).url = url;
    }

    // Two commands at once, each of which has its own.
    void twoCommands()
    {
        const CameraAddress place = anyCamera();
        auto first = begin({QStringLiteral("--set"), QStringLiteral("tick=41")});
        auto second = begin(
            {QStringLiteral("--set"), QStringLiteral("camera.%1.name=Both").arg(placeText(place))});
        EXPECT_EQ(await(std::move(first)).status, kDone);
        EXPECT_EQ(await(std::move(second)).status, kDone);
        stored_[QStringLiteral("Tempo")] = QStringLiteral("41");
        rules_.at(place).choices[QStringLiteral("Name")] = QStringLiteral("Both");
        hear();
    }

    void twoAdds()
    {
        const QString url = QStringLiteral("http://a/same.jpg");
        auto first = begin({QStringLiteral("--add"), url});
        auto second = begin({QStringLiteral("--add"), url});
        QStringList outs{await(std::move(first)).out, await(std::move(second)).out};
        outs.sort();
        QStringList wanted;
        for (int i = 0; i < 2; ++i) {
            wanted.append(addCamera({url}, {QString()}, {QString()}, {}).out);
        }
        wanted.sort();
        EXPECT_EQ(outs, wanted);
        hear();
    }

    // What can be neither read nor written, its disk being away, is as it was afterwards.
    void unreadable()
    {
        const QString place = house_.tree.path(u"Velmora.ini");
        const QByteArray before = house_.tree.read(u"Velmora.ini");
        ASSERT_TRUE(QFile::rename(place, place + u'x'));
        ASSERT_TRUE(QFile::link(QStringLiteral("away/Velmora.ini"), place));
        QFile::remove(house_.tree.path(u"out.csv"));
        exported_.reset();
        failAll(1 + below(3));
        EXPECT_FALSE(house_.tree.exists(u"out.csv"));
        ASSERT_TRUE(QFile::remove(place));
        ASSERT_TRUE(QFile::rename(place + u'x', place));
        EXPECT_EQ(house_.tree.read(u"Velmora.ini"), before);
    }

    void failAll(int count)
    {
        for (int left = count; left > 0; --left) {
            const PlannedCommand planned = left % 2 == 0 ? exportToFile() : anyCommand();
            given_.append(QStringLiteral("unreadable: ") + planned.arguments.join(u' ').left(200));
            const CommandResult result = await(begin(planned.arguments));
            EXPECT_TRUE(result.status == kRefused || result.status == kMalformed)
                << given_.last().toStdString();
            EXPECT_EQ(result.out, QString()) << given_.last().toStdString();
            EXPECT_FALSE(result.error.isEmpty());
            EXPECT_FALSE(result.error.contains(kSecret));
        }
        exported_.reset();
    }

    // A command that would change nothing need not fail.
    void unwritable()
    {
        const QByteArray before = house_.tree.read(u"Velmora.ini");
        const auto rules = rules_;
        const auto stored = stored_;
        const PlannedCommand planned = oneIn(2) ? set() : add();
        const int status = planned.play().status;
        const bool isChange = wanted() != file();
        rules_ = rules;
        stored_ = stored;
        given_.append(QStringLiteral("unwritable: ") + planned.arguments.join(u' ').left(200));
        const CommandResult result = resultWithoutRights(planned.arguments);
        if (status != kDone || isChange) {
            EXPECT_EQ(result.status, status == kDone ? kRefused : status)
                << given_.last().toStdString() << result.error.toStdString();
            EXPECT_FALSE(result.error.isEmpty());
        }
        EXPECT_FALSE(result.error.contains(kSecret));
        EXPECT_EQ(house_.tree.read(u"Velmora.ini"), before);
    }

    CommandResult resultWithoutRights(const QStringList &arguments)
    {
        const QString folder = house_.tree.path();
        const QString file = house_.tree.path(u"Velmora.ini");
        const QFile::Permissions toRead = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
        const QFile::Permissions toEnter = QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;
        QFile::setPermissions(folder, toRead | toEnter);
        QFile::setPermissions(file, toRead);
        const auto giveBack = qScopeGuard([&] {
            QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
            QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        });
        const WithoutRootRights nobody;
        return await(begin(arguments));
    }

    // Lines that no one understands, the last without an end, stay where they are.
    void damage()
    {
        if (damage_.isEmpty()) {
            damage_ = "garbage\r\n; lst0=none\r\nhalf";
            house_.tree.write(u"Velmora.ini", house_.tree.read(u"Velmora.ini") + damage_);
        }
    }

    void hideMain()
    {
        constexpr int kGreen = 65280;
        if (rooms_.find<Lamp>(QStringLiteral("LampSA")).FillColor() == kGreen) {
            hide();
        }
    }

    void check() override
    {
        rooms_.clock.advance(0ms);
        followFront();
        checkFile();
        const QByteArray settings = house_.tree.read(u"Velmora.ini");
        EXPECT_TRUE(settings.startsWith("; mine\r\n") && settings.contains(damage_))
            << settings.toStdString();
        checkOptions();
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
        given_.clear();
        for (int i = 0; i < kEvents && !HasFailure(); ++i) {
            const Kind &kind = anyOfKinds(kKinds, [this](int bound) { return below(bound); });
            given_.append(QStringLiteral("<%1>").arg(QString::fromLatin1(kind.name)));
            (this->*kind.run)();
            check();
        }
        EXPECT_FALSE(house_.tree.exists(u"Velmora.log") &&
                     house_.tree.read(u"Velmora.log").contains(kSecret.toLatin1()));
        if (HasFailure()) {
            ADD_FAILURE() << "sequence " << sequence << ":\n" << given_.join(u'\n').toStdString();
        }
    }

    // A new house costs more than a sequence.
    void tidyUp()
    {
        release();
        rooms_.clock.advance(20s);
        QDir(house_.tree.path(u"drives/c/none")).removeRecursively();
        QDir(house_.tree.path(u"drives/c/in")).removeRecursively();
        house_.tree.makeFolder(u"drives/c/in");
        bringUp();
        rooms_.selectTab(0);
        rooms_.clock.advance(20s);
        house_.tree.write(u"Velmora.ini",
                          "; mine\r\n[Control]\r\nStRep=C:\\in\\\r\nTempo=60\r\nTIO=5\r\n"
                          "[Other]\r\nmine=kept\r\n");
        house_.engine.adoptSettings();
        rooms_.selectTab(0);
        rules_ = {};
        rules_.load(0);
        stored_ = {{QStringLiteral("StRep"), QStringLiteral("C:\\in\\")},
                   {QStringLiteral("Tempo"), QStringLiteral("60")},
                   {QStringLiteral("TIO"), QStringLiteral("5")},
                   {QStringLiteral("Debug"), QString()}};
        shown_ = stored_;
        storageSeen_ = storageInForce_ = stored_[QStringLiteral("StRep")];
        exported_.reset();
        damage_.clear();
        check();
    }

    static bool HasFailure() { return testing::Test::HasFailure(); }

private:
    static const std::vector<Kind> kKinds;

    SettingsFile outside_{house_.settings.programFolder()};
    std::optional<CameraAddress> loading_;
    QString asked_;
    PerCamera<QString> failed_;
    QByteArray damage_; // at what was the end of the settings
};

// A failure that the program knows counts for more than the stored lamp.
QString CommandModel::stateOf(CameraAddress camera)
{
    const StoredCamera &stored = rules_.at(camera);
    const QString lamp = stored.row[QStringLiteral("SB")];
    if (loading_ == camera) {
        return QStringLiteral("loading");
    }
    if (failed_[camera] == stored.url) {
        return QStringLiteral("failed");
    }
    if (lamp == u"65280") {
        return QStringLiteral("good");
    }
    return lamp == u"255" && stored.wasLoaded() ? QStringLiteral("failed")
                                                : QStringLiteral("unknown");
}

void CommandModel::status()
{
    given_.append(QStringLiteral("--status"));
    const CommandResult result =
        await(begin({QStringLiteral("--status"), QStringLiteral("--json")}));
    const QJsonObject told = QJsonDocument::fromJson(result.out.toUtf8()).object();
    const QString storage = nativeFolder(stored_[QStringLiteral("StRep")]);
    const bool isThere = QFileInfo(storage).isDir();
    EXPECT_EQ(told[u"pid"].toInteger(), kProcess);
    EXPECT_EQ(told[u"storage"].toString().toStdString(), storage.toStdString());
    EXPECT_EQ(told[u"storage_present"].toBool(), isThere);
    bool isWell = isThere && !told[u"disk_low"].toBool();
    QStringList cameras;
    for (const QJsonValue camera : told[u"cameras"].toArray()) {
        cameras.append(statusLine(camera.toObject()));
        const bool isFailing =
            !camera[u"failure"].isNull() || camera[u"state"].toString() == u"failed";
        isWell = isWell && !(camera[u"on"].toBool() && isFailing);
    }
    EXPECT_EQ(cameras.join(u'\n').toStdString(), statusLines().toStdString());
    EXPECT_EQ(result.status, isWell ? kDone : kRefused);
    EXPECT_FALSE(result.out.contains(kSecret)) << result.out.toStdString();
}

QString CommandModel::statusLine(const QJsonObject &camera)
{
    return QStringList{placeText({camera[u"group"].toInt(), camera[u"row"].toInt()}),
                       camera[u"name"].toString(),
                       camera[u"on"].toBool() ? QStringLiteral("on") : QStringLiteral("off"),
                       camera[u"state"].toString()}
        .join(u'\t');
}

QString CommandModel::statusLines()
{
    QStringList lines;
    for (const CameraAddress camera : kAllCameras) {
        const StoredCamera &stored = rules_.at(camera);
        if (!stored.url.isEmpty()) {
            const QString active = rules_.active.at(static_cast<std::size_t>(camera.group));
            lines.append(QStringList{placeText(camera), stored.choices[QStringLiteral("Name")],
                                     onOff(active), stateOf(camera)}
                             .join(u'\t'));
        }
    }
    return lines.join(u'\n');
}

const std::vector<CommandModel::Kind> CommandModel::kKinds{
    {"click a box", &CommandModel::clickBox, 3},
    {"paste", &CommandModel::paste, 3},
    {"drop", &CommandModel::drop},
    {"type", &CommandModel::typeLetter, 2},
    {"take back", &CommandModel::takeBack},
    {"empty", &CommandModel::empty},
    {"key", &CommandModel::key, 2},
    {"press switch", &CommandModel::pressSwitch, 2},
    {"press best time", &CommandModel::pressBestTime},
    {"press group", &CommandModel::pressGroup},
    {"release", &CommandModel::release, 2},
    {"reset", &CommandModel::reset},
    {"click tab", &CommandModel::clickTab},
    {"tool on tabs", &CommandModel::toolOnTabs},
    {"command", &CommandModel::command, 16},
    {"status", &CommandModel::status, 2},
    {"two commands", &CommandModel::twoCommands},
    {"two adds", &CommandModel::twoAdds},
    {"edit by hand", &CommandModel::editByHand},
    {"damage", &CommandModel::damage},
    {"unreadable", &CommandModel::unreadable},
    {"unwritable", &CommandModel::unwritable},
    {"tick", &CommandModel::tick, 2},
    {"pass time", &CommandModel::passTime, 3},
    {"edit an option", &CommandModel::editOption, 2},
    {"edit storage", &CommandModel::editStorage, 2},
    {"hide", &CommandModel::hideMain},
    {"bring up", &CommandModel::bringUp, 2},
    {"other window", &CommandModel::otherWindow},
};

TEST_F(CommandModel, HoldsAfterEveryEventOfRandomSequences)
{
    playSequences(kSequences, [this](int sequence) {
        tidyUp();
        play(sequence);
    });
    EXPECT_GT(stored(), 0);
}

} // namespace
} // namespace velmora::test
