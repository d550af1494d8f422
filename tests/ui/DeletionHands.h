// All that happens around the deletion of images for their age and for room on the disk, by chance:
// settings changed in the windows, by hand and by command, clocks, captures, other programs, and a
// user of the browser. Each image that goes is told to the rules.
#pragma once

#include "BrowserModel.h"
#include "DeletionRules.h"
#include "health/HealthEngine.h"
#include "support/DiskDouble.h"
#include "support/LoopbackCameraAnswers.h"
#include "ui/HealthWindow.h"
#include "ui/Interface.h"

#include <QLocale>
#include <QSpinBox>

#include <sys/stat.h>
#include <unistd.h>

namespace velmora::test {

class DeletionHands : public BrowserModel
{
protected:
    static constexpr qint64 kMegabyte = 1'000'000;
    static constexpr qint64 kDisk = 10'000 * kMegabyte;
    static constexpr qint64 kImage = kMegabyte; // each takes so much

    DeletionHands()
    {
        house_.endless = 1; // that which watches the disk
        const auto tell = [this](CameraAddress camera) { house_.browser.showDeletion(camera); };
        QObject::connect(&house_.house.engine.retention(), &Retention::imagesDeleted, &here_, tell);
        QObject::connect(&health_.oldest(), &OldestFirst::imagesDeleted, &here_, tell);
        QObject::connect(&house_.house.page, &CameraPage::pageReread, &house_.window,
                         &planche::showCamera);
        QObject::connect(&house_.house.page, &CameraPage::rowReread, &house_.window,
                         &planche::showCamera);
        house_.house.settings.write(u"Health", u"Notices", 0);
        rows_.bringUp();
        health_.start();
        house_.busy.setOnYield([this](int) { disturb(); });
    }

    ~DeletionHands() override
    {
        rows_.allowClose();
        rows_.close();
        house_.house.scheduler.giveUp();
        house_.house.scope.requestStop();
        house_.clock.advance(std::chrono::seconds{1});
    }

    DeletionHands(const DeletionHands &) = delete;
    DeletionHands &operator=(const DeletionHands &) = delete;
    DeletionHands(DeletionHands &&) = delete;
    DeletionHands &operator=(DeletionHands &&) = delete;

    // Time.
    void passTime()
    {
        static const QList<int> seconds{1, 5, 30, 600, 3600, 86400, 20 * 86400};
        house_.clock.stall(std::chrono::seconds{anyOf(seconds)});
        house_.clock.advance(std::chrono::seconds{5});
    }

    void setClock()
    {
        static const QList<int> seconds{-3600,      3600,        -86400,      86400,
                                        40 * 86400, -40 * 86400, 400 * 86400, -400 * 86400};
        house_.clock.setLocal(house_.clock.localNow() + std::chrono::seconds{anyOf(seconds)});
    }

    void rightClock() { house_.clock.setLocal(kFakeStart); }

    void changeZone()
    {
        static const QList<int> hours{0, 1, -5, 12};
        house_.clock.setUtcOffset(std::chrono::hours{anyOf(hours)});
    }

    // Settings, in a window, by hand or by a command.
    void tickBox()
    {
        const CameraAddress camera = anyCamera();
        auto *const box = rows_.findChild<QCheckBox *>(QStringLiteral("EffM%1").arg(camera.row));
        if (camera.group == 0 && oneIn(2)) {
            QTest::mouseClick(box, Qt::LeftButton, {}, {8, box->height() / 2});
        } else {
            write(QStringLiteral("Groupe%1").arg(camera.group),
                  QStringLiteral("EffM%1").arg(camera.row), QString::number(below(2)));
        }
    }

    void chooseRoom()
    {
        auto *const box = window_.findChild<QCheckBox *>(QStringLiteral("healthDelete"));
        if (window_.isVisible() && oneIn(2)) {
            QTest::mouseClick(box, Qt::LeftButton, {}, {8, box->height() / 2});
        } else {
            write(QStringLiteral("Health"), QStringLiteral("DeleteOldest"),
                  QString::number(below(3) > 0 ? 1 : 0));
        }
    }

    void setLimit()
    {
        static const QStringList limits{QStringLiteral("150"),   QStringLiteral("200"),
                                        QStringLiteral("200"),   QStringLiteral("300"),
                                        QStringLiteral("30000"), QStringLiteral("0")};
        auto *const box = window_.findChild<QSpinBox *>(QStringLiteral("healthLimit"));
        if (window_.isVisible() && oneIn(2)) {
            box->setFocus();
            box->selectAll();
            QTest::keyClicks(box, anyOf(limits));
            QTest::keyClick(box, Qt::Key_Return);
        } else {
            write(QStringLiteral("Health"), QStringLiteral("LimitMB"), anyOf(limits));
        }
    }

    void openHealth()
    {
        if (window_.isVisible() && oneIn(3)) {
            window_.close();
        } else {
            window_.present();
        }
    }

    void changeUrl()
    {
        const CameraAddress camera = anyCamera();
        write(QStringLiteral("Liste%1").arg(camera.group), QStringLiteral("lst%1").arg(camera.row),
              oneIn(4) ? QString() : anyOf(urls_));
        house_.house.engine.adoptSettings();
    }

    // The disk.
    void fillDisk()
    {
        static const QList<int> free{100, 150, 180, 195, 199, 210, 400, 6000};
        taken_ = kDisk - kImage * count() - anyOf(free) * kMegabyte;
    }

    void keepStates() { keptCount_ = keptCount_ ? std::nullopt : std::optional(count()); }

    void editStorage()
    {
        letGo();
        if (!storage().isBeingEdited()) {
            storage().beginEdit();
            storage().edit(anyOf(QStringList{QStringLiteral("C:\\o"), QStringLiteral("C:\\in")}));
        } else {
            endEdit();
        }
    }

    void endEdit()
    {
        if (storage().isBeingEdited()) {
            inForce_ = oneIn(3) ? QStringLiteral("other") : QStringLiteral("in");
            storage().edit(QStringLiteral("C:\\") + inForce_);
            storage().putInForce();
        }
    }

    // Images.
    void store()
    {
        const CameraAddress camera = anyCamera();
        const QString url = house_.house.table.url(camera);
        const WallTime now = house_.clock.localNow() - house_.clock.utcOffset();
        const auto date = QDateTime::fromSecsSinceEpoch(now.time_since_epoch().count(), Qt::UTC);
        const QString header =
            QLocale::c().toString(date, QStringLiteral("ddd, dd MMM yyyy HH:mm:ss")) +
            QStringLiteral(" GMT");
        house_.source.answer(url, {pictureBytes(Qt::red, {64, 48}) + QByteArray(1000, ' '),
                                   header,
                                   QStringLiteral("image/jpeg"),
                                   {},
                                   {}});
        if (!url.isEmpty() && storage().isUsable()) {
            house_.house.beginLoad(camera);
        }
    }

    void addOld()
    {
        for (int images = 1 + below(6); images > 0; --images) {
            put(anyOf(urls_), anyDate());
        }
    }

    void addMany()
    {
        const QString url = anyOf(urls_);
        for (int images = 0; images < 110; ++images) {
            put(url, anyDate());
        }
    }

    void removeNewest()
    {
        const QStringList images = imagesOf(anyOf(urls_));
        if (!images.isEmpty()) {
            remove(images.last());
        }
    }

    void removeAny()
    {
        const QStringList images = imagesOf(anyOf(urls_));
        if (!images.isEmpty()) {
            remove(anyOf(images));
        }
    }

    void linkFolder()
    {
        const QString link = rules_.folder(urls_.at(2));
        if (QFileInfo(link).isSymLink()) {
            QFile::remove(link);
        } else if (!QFileInfo::exists(link)) {
            QFile::link(rules_.folder(urls_.at(1)), link);
        }
    }

    // The program has started.
    void begin() { house_.house.engine.retention().begin(); }

    // In the browser.
    void kill()
    {
        letGo();
        QTest::keyClick(&view(isGroupView() ? kRowsOfGroup : kImages), Qt::Key_Delete);
        QMessageBox *const box = house_.question();
        if (box == nullptr) {
            return;
        }
        const QString target =
            native(isGroupView() ? house_.data.state.DerniereImage(row(kRowsOfGroup))
                                 : house_.data.files.selected());
        const bool isYes = oneIn(2);
        killed_ = isYes ? target : QString();
        QTest::mouseClick(box->button(isYes ? QMessageBox::Yes : QMessageBox::No), Qt::LeftButton);
        house_.settle();
    }

    void refreshAll()
    {
        house_.window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&house_.window));
        refresh();
        house_.settle();
    }

    /// Judges all that went since the last time, by what holds now.
    void judge();
    void takeState();

    void write(const QString &section, const QString &key, const QString &value)
    {
        outside_.write(section, key, value);
        if (oneIn(2)) {
            house_.house.engine.adoptSettings();
        }
    }

    bool oneIn(int chances) { return below(chances) == 0; }

    template <typename Value>
    Value anyOf(const QList<Value> &values)
    {
        return values.at(below(static_cast<int>(values.size())));
    }

    CameraAddress anyCamera() { return anyOf(cameras_); }

    [[nodiscard]] StoredFiles stored() const
    {
        StoredFiles files;
        QDirIterator all(house_.house.tree.path(u"drives/c"), QDir::Files,
                         QDirIterator::Subdirectories);
        while (all.hasNext()) {
            const QString path = all.next();
            struct stat info = {};
            if (!path.contains(u"n/tmp/") && !path.contains(u"r/tmp/") &&
                ::lstat(QFile::encodeName(path), &info) == 0) {
                files.insert(path, static_cast<int>(info.st_nlink));
            }
        }
        return files;
    }

    [[nodiscard]] qint64 count() const { return stored().size(); }

    [[nodiscard]] qint64 freeBytes() const
    {
        return std::max<qint64>(0, kDisk - taken_ - kImage * keptCount_.value_or(count()));
    }

    QStringList imagesOf(const QString &url)
    {
        const QString folder = rules_.folder(url);
        const QDir dir(folder);
        QStringList paths;
        for (const QString &name : dir.entryList({QStringLiteral("20*")}, QDir::Files)) {
            paths.append(folder + u'/' + name);
        }
        return QFileInfo(folder).isSymLink() ? QStringList() : paths;
    }

    // Up to 70 days before the test's start, and not of its future.
    QString anyDate()
    {
        const int seconds = oneIn(4) ? below(4) : below(70 * 86400);
        const auto date =
            QDateTime::fromSecsSinceEpoch(kFakeStart.time_since_epoch().count() - seconds, Qt::UTC);
        return date.toString(QStringLiteral("yyyyMMdd_HHmmssdd")) + QStringLiteral("14.jpg");
    }

    void put(const QString &url, const QString &name)
    {
        static const QByteArray kPicture = pictureBytes(Qt::blue, {16, 12});
        const QString folder = rules_.folder(url);
        if (QFileInfo(folder).isSymLink() || !QFileInfo(rules_.storage).isDir()) {
            return;
        }
        QDir().mkpath(folder);
        QFile file(folder + u'/' + name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(kPicture);
        files_[file.fileName()] = 1;
        if (oneIn(12)) {
            files_[file.fileName()] = 2;
            ::link(QFile::encodeName(file.fileName()),
                   QFile::encodeName(
                       house_.house.tree.path(QStringLiteral("second%1").arg(++links_))));
        }
    }

    void remove(const QString &path)
    {
        EXPECT_TRUE(QFile::remove(path));
        files_.remove(path);
    }

    QObject here_;
    SettingsFile outside_{house_.house.settings.programFolder()};
    HealthEngine health_{house_.house.engine, house_.mail};
    HealthWindow window_{health_.book(), health_.watch(), house_.house.settings};
    Interface rows_{{house_.house.timer, house_.house.table, house_.house.storage,
                     house_.house.options, house_.house.engine.debugSwitch(), house_.house.log,
                     house_.house.view, house_.opener}};
    DeletionRules rules_;
    StoredFiles files_;  // as last judged
    StoredFiles before_; // the main event
    QString killed_;     // by the user
    QString inForce_ = QStringLiteral("in");
    qint64 taken_ = 0; // by others
    std::optional<qint64>
        keptCount_;            // images that still take room, on a disk that keeps old states
    bool isDisturbed_ = false; // in the main event
    bool mayDisturb_ = false;
    int forRoom_ = 0; // images that went
    int forAge_ = 0;
    const QStringList urls_{
        QStringLiteral("http://cam/a.jpg"), QStringLiteral("http://cam/b.jpg"),
        QStringLiteral("http://cam/c.jpg"),
        QStringLiteral("http://") + QString(200, u'/') + QStringLiteral("1.jpg"),
        QStringLiteral("http://") + QString(200, u'/') + QStringLiteral("2.jpg")};

private:
    struct Gone
    {
        QStringList forAge;
        QStringList forRoom;
    };

    void disturb();
    void meanwhile();
    [[nodiscard]] QStringList newRecords();
    [[nodiscard]] Gone gone(const StoredFiles &now);
    void judgeRoom(const QStringList &paths, qsizetype forAge, const StoredFiles &now);

    bool isQueued_ = false;
    qsizetype recordsRead_ = 0;
    int links_ = 0;
    DiskDouble disk_{kDisk, [this] { return freeBytes(); }};
};

} // namespace velmora::test
