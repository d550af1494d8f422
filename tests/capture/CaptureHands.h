// All that can happen to the capture and around it, by chance, told to the program and to the rules
// alike.
#pragma once

#include "CaptureTown.h"
#include "support/CaptureHouse.h"
#include "support/NativeFiles.h"

#include <QDir>
#include <QFile>
#include <QLocale>
#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <memory>

namespace velmora::test {

inline const QList<CameraAddress> kCamerasUsed{{0, 0}, {0, 3}, {0, 4}, {2, 1}, {2, 9}, {9, 5}};
inline const QStringList kStorages{QStringLiteral("in"), QStringLiteral("other")};

/// The last two have one folder, since its name is cut.
inline const QStringList kPaths{QStringLiteral("/one.jpg"),
                                QStringLiteral("/TWO.JPG"),
                                QStringLiteral("/three.jpeg"),
                                QStringLiteral("/snap"),
                                QStringLiteral("/four.cgi"),
                                QStringLiteral("/five.php?camera=1"),
                                QStringLiteral("/<six:seven>.jpg"),
                                u'/' + QString(200, u'x') + QStringLiteral("1.jpg"),
                                u'/' + QString(200, u'x') + QStringLiteral("2.jpg")};

/// One run of the program's capture.
class CaptureHands
{
public:
    CaptureHands(CaptureTown &town, FakeClock &clock, int seed)
        : town_(town)
        , clock_(clock)
        , random_(static_cast<quint32>(seed))
    {
        QObject::connect(&house_.store, &ImageStore::lampChanged, &house_,
                         [this](CameraAddress camera, LampColour lamp) { paint(camera, lamp); });
        QObject::connect(&house_.scheduler, &Scheduler::lampChanged, &house_,
                         [this](CameraAddress camera, LampColour lamp) { paint(camera, lamp); });
        QObject::connect(&house_.scheduler, &Scheduler::cameraLoading, &house_,
                         [this](CameraAddress camera) { paint(camera, LampColour::Orange); });
        house_.tree.makeFolder(u"drives/c/other");
        house_.settings.write(u"Control", u"StRep", u"C:\\in\\");
        house_.engine.adoptSettings();
        clock_.setLocal(kFakeStart);
        clock_.setUtcOffset({});
        for (const QString &path : kPaths) {
            answer(path);
        }
        for (const CameraAddress camera : kCamerasUsed) {
            setValue(QStringLiteral("Liste%1").arg(camera.group), QStringLiteral("LstAct"),
                     oneIn(6) ? QStringLiteral("0") : QStringLiteral("1"));
            setUrl(camera);
            setValue(QStringLiteral("Groupe%1").arg(camera.group),
                     QStringLiteral("AutoDelai%1").arg(camera.row), QString::number(below(2)));
            setValue(QStringLiteral("Groupe%1").arg(camera.group),
                     QStringLiteral("EffM%1").arg(camera.row), QString::number(below(3) / 2));
            setValue(QStringLiteral("Camera%1%2").arg(camera.group).arg(camera.row),
                     QStringLiteral("Keep"), oneIn(2) ? QStringLiteral("differing") : QString());
        }
        debug();
    }

    Q_DISABLE_COPY_MOVE(CaptureHands)

    ~CaptureHands()
    {
        for (const Suspension suspension : suspensions_) {
            house_.scheduler.resume(suspension);
        }
        house_.scheduler.giveUp();
        town_.settle();
    }

    // Time.
    void tick()
    {
        if (!oneIn(3)) {
            const int counter = oneIn(3) ? 59 : below(61);
            house_.scheduler.setTickCounter(counter);
            rules_.counter = counter;
        }
        house_.scope.launch(house_.scheduler.Timer_Timer());
        rules_.tick();
    }

    void passSeconds()
    {
        for (int seconds = 1 + below(6); seconds > 0; --seconds) {
            passSecond();
        }
    }

    void passTime()
    {
        for (int left = 40; rules_.isPassing && left > 0; --left) {
            passSecond();
        }
        if (!rules_.isPassing) {
            static const QList<int> seconds{5, 59, 70, 3600, 4 * 3600, 86400, 26 * 3600, 5 * 86400};
            const auto more = std::chrono::seconds{anyOf(seconds)};
            clock_.advance(more);
            rules_.passIdle(more);
        }
    }

    void setClock()
    {
        static const QList<int> seconds{-1, 1, -61, 3600, -3600, -86400, 86400, 40 * 86400};
        rules_.local += std::chrono::seconds{anyOf(seconds)};
        clock_.setLocal(rules_.local);
    }

    void toMidnight()
    {
        const auto day = std::chrono::ceil<std::chrono::days>(rules_.local);
        rules_.local = day - std::chrono::seconds{1 + below(4)};
        clock_.setLocal(rules_.local);
    }

    // By an hour, at any time of the year.
    void changeSummerTime()
    {
        const std::chrono::seconds change = std::chrono::hours{oneIn(2) ? 1 : -1};
        rules_.local += change;
        rules_.utcOffset += change;
        clock_.setLocal(rules_.local);
        clock_.setUtcOffset(rules_.utcOffset);
    }

    // Settings, by another program or by this one.
    void changeUrl() { setUrl(anyCamera()); }

    void switchGroup()
    {
        static const QStringList values{QStringLiteral("1"),   QStringLiteral("1"),
                                        QStringLiteral("0"),   QStringLiteral("2"),
                                        QStringLiteral("1.5"), QString()};
        setValue(QStringLiteral("Liste%1").arg(anyCamera().group), QStringLiteral("LstAct"),
                 anyOf(values));
    }

    void changeRow()
    {
        static const QMap<QString, QStringList> values{
            {QStringLiteral("AutoDelai"),
             {QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("0"), QStringLiteral("2"),
              QString(), QStringLiteral("abc")}},
            {QStringLiteral("EffM"),
             {QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("0"), QString()}},
            {QStringLiteral("BestTime"),
             {QStringLiteral("00:00:04"), QStringLiteral("00:01:00"), QStringLiteral("26:00:00"),
              QStringLiteral("99:10:00"), QStringLiteral("00:00:00"), QStringLiteral("0"),
              QString(), QStringLiteral("rubbish")}},
            {QStringLiteral("LocalTime"),
             {QStringLiteral("07/03/2006 14:05:09"), QStringLiteral("31/02/2006 10:00:00"),
              QStringLiteral("01/01/2030 00:00:00"), QString(), QStringLiteral("rubbish")}},
            {QStringLiteral("LastModified"),
             {QStringLiteral("07/03/2006 14:05:09"), QStringLiteral("31/02/2006 10:00:00"),
              QStringLiteral("01/01/2030 00:00:00"), QString(), QStringLiteral("rubbish")}},
            {QStringLiteral("lNew"),
             {QStringLiteral("7"), QString(), QStringLiteral("abc"), QStringLiteral("12abc"),
              QStringLiteral("-3")}}};
        const QString word = anyOf(values.keys());
        const CameraAddress camera = anyCamera();
        setValue(QStringLiteral("Groupe%1").arg(camera.group), word + QString::number(camera.row),
                 anyOf(values[word]));
    }

    // A camera whose own period is nearly or just over.
    void nearlyDue()
    {
        static const QMap<QString, int> periods{{QStringLiteral("00:00:04"), 4},
                                                {QStringLiteral("00:01:00"), 60},
                                                {QStringLiteral("26:00:00"), 26 * 3600},
                                                {QStringLiteral("99:10:00"), 357000}};
        static const QList<int> beyond{-1, 0, 1, 2, 3600, 23 * 3600, 86400};
        const CameraAddress camera = anyCamera();
        const QString section = QStringLiteral("Groupe%1").arg(camera.group);
        const QString period = anyOf(periods.keys());
        const std::chrono::seconds ago{periods[period] + anyOf(beyond)};
        const QString row = QString::number(camera.row);
        setValue(section, QStringLiteral("AutoDelai") + row, QStringLiteral("1"));
        setValue(section, QStringLiteral("BestTime") + row, period);
        setValue(section, QStringLiteral("LocalTime") + row, ruleDate(rules_.local - ago));
    }

    void choose()
    {
        static const QList<QStringList> choices{
            {QStringLiteral("Keep"), QStringLiteral("differing")},
            {QStringLiteral("Keep"), QStringLiteral("differing")},
            {QStringLiteral("Keep"), QStringLiteral("dated")},
            {QStringLiteral("Keep"), QString()},
            {QStringLiteral("User"), QStringLiteral("user")},
            {QStringLiteral("User"), QStringLiteral("other")},
            {QStringLiteral("User"), QString()},
            {QStringLiteral("Password"), QStringLiteral("secret")},
            {QStringLiteral("Password"), QStringLiteral("secret")},
            {QStringLiteral("Password"), QString()}};
        const CameraAddress camera = anyCamera();
        const QStringList choice = anyOf(choices);
        setValue(QStringLiteral("Camera%1%2").arg(camera.group).arg(camera.row), choice.at(0),
                 choice.at(1));
    }

    void setTimeout()
    {
        static const QList<int> seconds{5, 2, 6, 8};
        rules_.timeout = anyOf(seconds);
        house_.options.setTimeout(QString::number(rules_.timeout));
    }

    void debug()
    {
        rules_.isLogOn = oneIn(2);
        house_.engine.debugSwitch().set(rules_.isLogOn);
    }

    void hear()
    {
        house_.engine.adoptSettings();
        rules_.hear();
    }

    // What holds the capture.
    void suspend()
    {
        suspensions_.append(house_.scheduler.suspend());
        rules_.suspend();
    }

    void resume()
    {
        if (suspensions_.isEmpty()) {
            return;
        }
        house_.scheduler.resume(suspensions_.takeAt(below(static_cast<int>(suspensions_.size()))));
        if (suspensions_.isEmpty()) {
            rules_.resume();
        }
    }

    void editStorage()
    {
        if (rules_.isEdited && !oneIn(4)) {
            house_.storage.putInForce();
            rules_.endEdit();
        } else if (oneIn(2)) {
            house_.storage.beginEdit();
            rules_.beginEdit();
        } else {
            const QString storage = anyOf(kStorages);
            done_.append(storage);
            house_.storage.edit(QStringLiteral("C:\\") + storage);
            rules_.type(storage);
        }
    }

    void nameStorageElsewhere()
    {
        const QString storage = anyOf(kStorages);
        done_.append(storage);
        rules_.storedStorage = storage;
        outside_.write(u"Control", u"StRep", QStringLiteral("C:\\%1\\").arg(storage));
        if (oneIn(2)) {
            hear();
        }
    }

    void check()
    {
        if (oneIn(2)) {
            house_.storage.testSA();
            rules_.check();
        } else {
            house_.storage.recheck();
            rules_.recheck();
        }
    }

    // Folders, by whoever may.
    void moveStorage()
    {
        DiskRules &disk = rules_.disk();
        const QString from = place(rules_.inForce, disk.isThere);
        const QString to = place(rules_.inForce, !disk.isThere);
        EXPECT_TRUE(QDir().rename(house_.tree.path(from), house_.tree.path(to)));
        disk.isThere = !disk.isThere;
    }

    // A file in place of the folder for working files.
    void refuseFiles()
    {
        const QString tmp = house_.tree.path(storage() + QStringLiteral("/tmp"));
        if (rules_.disk().isRefusing) {
            EXPECT_TRUE(QFile::remove(tmp));
        } else {
            QDir(tmp).removeRecursively();
            house_.tree.write(storage() + QStringLiteral("/tmp"), "in the way");
        }
        rules_.disk().isRefusing = !rules_.disk().isRefusing;
    }

    void changeFolder()
    {
        static const std::array kinds{&CaptureHands::emptyFolder,  &CaptureHands::removeFolder,
                                      &CaptureHands::renameFolder, &CaptureHands::putFile,
                                      &CaptureHands::linkFolder,   &CaptureHands::standInTheWay};
        const QString folder = anyFolder();
        const auto kind = static_cast<std::size_t>(below(6));
        done_.append(QString::number(kind) + u' ' + folder.right(20));
        (this->*kinds.at(kind))(folder);
    }

    void changeAnswer() { answer(anyOf(kPaths)); }

protected:
    int below(int bound) { return static_cast<int>(random_.bounded(bound)); }

    bool oneIn(int chances) { return below(chances) == 0; }

    template <typename Value>
    Value anyOf(const QList<Value> &values)
    {
        return values.at(below(static_cast<int>(values.size())));
    }

    CameraAddress anyCamera() { return anyOf(kCamerasUsed); }

    QString anyFolder() { return ruleFolder(town_.url(anyOf(kPaths))); }

    // Where a storage folder is, or where it is put while it is away.
    [[nodiscard]] static QString place(const QString &storage, bool isThere)
    {
        return (isThere ? QStringLiteral("drives/c/") : QStringLiteral("drives/c/away-")) + storage;
    }

    [[nodiscard]] QString storage() { return place(rules_.inForce, rules_.disk().isThere); }

    [[nodiscard]] QString pathOf(const QString &folder) { return storage() + u'/' + folder; }

    [[nodiscard]] QString native(const QString &folder) { return house_.tree.path(pathOf(folder)); }

    void passSecond()
    {
        clock_.advance(std::chrono::seconds{1});
        town_.settle();
        rules_.passSecond();
    }

    void setValue(const QString &section, const QString &key, const QString &value)
    {
        rules_.values[section + u' ' + key] = value;
        done_.append(section + u' ' + key + u'=' + value);
        (oneIn(2) ? outside_ : house_.settings).write(section, key, value);
    }

    void setUrl(CameraAddress camera)
    {
        setValue(QStringLiteral("Liste%1").arg(camera.group),
                 QStringLiteral("lst%1").arg(camera.row),
                 oneIn(5) ? QString() : town_.url(anyOf(kPaths)));
    }

    void paint(CameraAddress camera, LampColour lamp) { lamps_[camera] = static_cast<int>(lamp); }

    void removeFolder(const QString &name)
    {
        RuleFolder &folder = rules_.disk().folders[name];
        if (folder.is == RuleFolder::Is::Folder) {
            EXPECT_TRUE(QDir(native(name)).removeRecursively());
        } else if (folder.is != RuleFolder::Is::Missing) {
            EXPECT_TRUE(QFile::remove(native(name)));
        }
        folder = {};
    }

    void emptyFolder(const QString &name)
    {
        RuleFolder &folder = rules_.disk().folders[name];
        if (folder.is == RuleFolder::Is::Folder) {
            removeFolder(name);
            house_.tree.makeFolder(pathOf(name) + QStringLiteral("/old"));
            folder.is = RuleFolder::Is::Folder;
        }
    }

    void renameFolder(const QString &name)
    {
        const QString to = anyFolder();
        RuleFolder &target = rules_.disk().folders[to];
        RuleFolder &folder = rules_.disk().folders[name];
        if (folder.is == RuleFolder::Is::Folder && target.is == RuleFolder::Is::Missing) {
            EXPECT_TRUE(QDir().rename(native(name), native(to)));
            std::swap(folder, target);
        }
    }

    // A picture that someone copies there, or a remark.
    void putFile(const QString &name)
    {
        RuleFolder &folder = rules_.disk().folders[name];
        if (folder.is == RuleFolder::Is::Folder) {
            const QString file =
                oneIn(2) ? QStringLiteral("read me") : QStringLiteral("18991230_0000000714.jpg");
            house_.tree.write(pathOf(name) + u'/' + file, "old");
            folder.files[file] = "old";
        }
    }

    void linkFolder(const QString &name)
    {
        const QString to = anyFolder();
        if (to != name) {
            removeFolder(name);
            EXPECT_TRUE(QFile::link(to, native(name)));
            rules_.disk().folders[name] = {RuleFolder::Is::Link, to, {}};
        }
    }

    void standInTheWay(const QString &name)
    {
        removeFolder(name);
        house_.tree.write(pathOf(name), "a file");
        rules_.disk().folders[name] = {RuleFolder::Is::File, {}, {}};
    }

    void answer(const QString &path);

    CaptureTown &town_;
    FakeClock &clock_;
    QRandomGenerator random_;
    CaptureHouse house_{town_, clock_};
    SettingsFile outside_{house_.settings.programFolder()};
    CaptureRules rules_{[this](const QString &url) { return town_.rule(url); },
                        [this](int row) { return house_.page.row(row).url; }, kFakeStart,
                        kStorages.first()};
    std::map<CameraAddress, int> lamps_;
    QStringList done_; // with what was chosen by chance

private:
    QByteArray anyBody();
    void date(ServerAnswer *answer, QByteArray *headers);
    CameraAnswer refusal(const QString &path, const QByteArray &headers, const QByteArray &body);
    void deliver(const QString &path, const QByteArray &headers, TownAnswer *answer);

    QList<Suspension> suspensions_;
    int pictures_ = 0;
};

} // namespace velmora::test
