// What happens beside the windows: cameras that are slow to answer, commands, and the settings file
// changed by hand. Both rules hear of it as the windows should.
#pragma once

#include "ProgramMainHands.h"
#include "admin/Administration.h"
#include "start/CommandLine.h"

#include <QDeadlineTimer>
#include <QDir>

#include <future>

namespace velmora::test {

class ProgramBesideHands : public ProgramMainHands
{
protected:
    // The capture.
    void beginPass()
    {
        if (!isPassing_) {
            scriptAnswers();
            engine_->scheduler().setTickCounter(oneIn(3) ? 10 : 59);
            engine_->launch(runPass());
            clock_.advance(std::chrono::milliseconds{0});
        }
    }

    void pass()
    {
        beginPass();
        clock_.advance(std::chrono::seconds{30});
        rest();
    }

    void passTime() { clock_.advance(std::chrono::milliseconds{below(5) * 400}); }

    // Commands, which the program has acted upon before they end.
    CommandResult give(const QStringList &arguments)
    {
        const StartRequest request =
            parseCommandLine(QStringList{QStringLiteral("velmora")} + arguments);
        const AdminCommand command = std::get<AdminRequest>(request).command;
        auto result = std::async(std::launch::async, [folder = tree_.path(), command] {
            return administer(folder, command,
                              [](const QString &) { return std::optional<qint64>(4711); });
        });
        const QDeadlineTimer deadline(20'000);
        while (result.wait_for(std::chrono::seconds{0}) == std::future_status::timeout &&
               !deadline.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        }
        return result.get();
    }

    void set(const QString &key, const QString &value)
    {
        const CommandResult result = give({QStringLiteral("--set"), key + u'=' + value});
        EXPECT_EQ(result.status, kDone) << result.error.toStdString();
        hear();
    }

    void hear()
    {
        rows_.reread();
        for (const CameraAddress camera : kAllCameras) {
            hearAddress(camera);
        }
    }

    void command()
    {
        if (isStorageInHand()) {
            return setOption();
        }
        switch (below(6)) {
        case 0:
            return setOption();
        case 1:
            return setGroup();
        case 2:
            return setSwitch();
        default:
            return setName();
        }
    }

    void setOption()
    {
        const bool isTick = oneIn(2);
        const QString text = QString::number(isTick ? 30 + below(30) : 5 + below(20));
        control_[isTick ? QStringLiteral("Tempo") : QStringLiteral("TIO")] = text;
        set(isTick ? QStringLiteral("tick") : QStringLiteral("timeout"), text);
    }

    void setGroup()
    {
        const int group = below(3);
        const bool on = oneIn(2);
        switchGroup(group, on);
        set(QStringLiteral("group.%1").arg(group), onOff(on));
    }

    void setSwitch()
    {
        const CameraAddress camera = anyCamera();
        const bool on = oneIn(2);
        const bool isKeep = oneIn(2);
        rows_.at(camera).row[isKeep ? QStringLiteral("EffM") : QStringLiteral("AutoDelai")] =
            on ? QStringLiteral("1") : QStringLiteral("0");
        set(keyOf(camera, isKeep ? QStringLiteral("delete") : QStringLiteral("auto")), onOff(on));
    }

    void setName()
    {
        const CameraAddress camera = anyCamera();
        const QString name = oneIn(4) ? QString() : pick(kNames);
        rows_.at(camera).choices[QStringLiteral("Name")] = name;
        set(keyOf(camera, QStringLiteral("name")), name);
    }

    void add()
    {
        if (isAway_ || isStorageInHand()) {
            return;
        }
        const CameraAddress camera = anyCamera();
        const QString url = anyUrl();
        const bool isFree = rows_.at(camera).url.isEmpty();
        const CommandResult result =
            give({QStringLiteral("--add"), url, QStringLiteral("--camera"), placeOf(camera)});
        EXPECT_EQ(result.status, isFree ? kDone : kRefused) << result.error.toStdString();
        if (isFree) {
            rows_.at(camera).add(url, {});
            hear();
        }
    }

    void remove()
    {
        const CameraAddress camera = anyCamera();
        if (isAway_ || isStorageInHand()) {
            return;
        }
        const bool isThere = !rows_.at(camera).url.isEmpty();
        const CommandResult result = give({QStringLiteral("--remove"), placeOf(camera)});
        EXPECT_EQ(result.status, isThere ? kDone : kRefused) << result.error.toStdString();
        if (isThere) {
            rows_.at(camera) = {};
            hear();
        }
    }

    // Several at once, each in the first row that is free, unless it is there already.
    void importList()
    {
        if (isAway_ || isStorageInHand()) {
            return;
        }
        QByteArray list;
        for (int cameras = 2 + below(3); cameras > 0; --cameras) {
            const QString url =
                oneIn(2) ? anyUrl() : QStringLiteral("http://list/%1.jpg").arg(below(9));
            list += url.toLatin1() + '\n';
            if (const auto place = rows_.placeFor(url)) {
                rows_.at(*place).add(url, {});
            }
        }
        tree_.write(u"list.txt", list);
        give({QStringLiteral("--import-list"), tree_.path(u"list.txt")});
        hear();
    }

    // Heard of with the next command, or when the row is loaded or acted on.
    void editByHand()
    {
        const CameraAddress camera = anyCamera();
        const QString url = oneIn(3) ? QString() : anyUrl();
        if (isStorageInHand()) {
            return;
        }
        SettingsFile(tree_.path())
            .write(listSection(camera.group), rowKey(u"lst", camera.row), url);
        unheard_[camera].append(rows_.at(camera).url);
        rows_.at(camera).url = url;
        storeAddress(camera);
    }

    void setClock() { clock_.setLocal(kFakeStart + std::chrono::hours{below(97) - 48}); }

    // The storage folder.
    void typeStorage()
    {
        if (mayUseMain() && !isAway_) {
            const QString text = pick(kStorages);
            auto &edit = find<QLineEdit>(kMain, QStringLiteral("StRep"));
            inMain([&] { QTest::mouseClick(&edit, Qt::LeftButton); });
            QTest::keyClick(&edit, Qt::Key_A, Qt::ControlModifier);
            QGuiApplication::clipboard()->setText(text);
            QTest::keyClick(&edit, Qt::Key_V, Qt::ControlModifier);
            passTime();
            EXPECT_FALSE(engine_->timer().isActive());
            EXPECT_FALSE(find(kMain, QStringLiteral("Import")).isEnabled());
            QTest::keyClick(&edit, Qt::Key_Return);
            takeStorage(text);
        }
    }

    void setStorage()
    {
        if (!isAway_ && !isStorageInHand()) {
            const QString text = pick(kStorages);
            const CommandResult result =
                give({QStringLiteral("--set"), QStringLiteral("storage=") + text});
            EXPECT_EQ(result.status, kDone) << result.error.toStdString();
            takeStorage(text);
            hear();
        }
    }

    // Unchanged, it is set aside by another window, and left for another box.
    void enterStorage()
    {
        if (mayUseMain()) {
            clickInMain(QStringLiteral("StRep"));
        }
    }

    void takeStorage(const QString &text)
    {
        if (std::exchange(control_[QStringLiteral("StRep")], text) != text) {
            browser_.moveTo(root());
        }
    }

    // A folder that may hold images is not made again while its disk is away, which the next start
    // knows from the cameras' last images.
    bool wasEverStored()
    {
        return std::ranges::any_of(kAllCameras, [this](CameraAddress camera) {
            return !rows_.at(camera).row[QStringLiteral("LastModified")].isEmpty();
        });
    }

    void bringBackUnused()
    {
        if (isAway_ && !wasEverStored()) {
            turnDisk();
        }
    }

    // Its disk goes away, and comes back.
    void moveDisk()
    {
        if (!isStorageInHand()) {
            turnDisk();
        }
    }

    void turnDisk()
    {
        isAway_ = !isAway_;
        const QString away = root() + QStringLiteral(".away");
        ASSERT_TRUE(QDir().rename(isAway_ ? root() : away, isAway_ ? away : root()));
        clock_.advance(std::chrono::seconds{3});
        if (!isAway_) {
            browser_.moveTo(root());
        }
    }

    static QString onOff(bool on) { return on ? QStringLiteral("on") : QStringLiteral("off"); }

    static QString placeOf(CameraAddress camera)
    {
        return QStringLiteral("%1:%2").arg(camera.group).arg(camera.row);
    }

    static QString keyOf(CameraAddress camera, const QString &word)
    {
        return QStringLiteral("camera.%1.%2").arg(placeOf(camera), word);
    }

    inline static const QStringList kNames{QStringLiteral("Gate"), QStringLiteral("Yard"),
                                           QStringLiteral("Roof")};
};

} // namespace velmora::test
