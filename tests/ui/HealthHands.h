// A user of the health window, and all that happens to the cameras behind it, by chance.
#pragma once

#include "HealthRules.h"
#include "cameras/CameraChoices.h"
#include "health/HealthEngine.h"
#include "support/CaptureHouse.h"
#include "support/CaptureHouseSource.h"
#include "support/LoopbackCameraAnswers.h"
#include "support/MailDouble.h"
#include "ui/HealthWindow.h"

#include <QDir>
#include <QHeaderView>
#include <QLineEdit>
#include <QLocale>
#include <QRandomGenerator>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>

namespace velmora::test {

inline const QList<CameraAddress> kHealthCameras{{0, 0}, {0, 1}, {0, 5}, {2, 0}, {2, 7}, {3, 3}};
inline const QStringList kHealthUrls{
    QStringLiteral("http://cam/a.jpg"), QStringLiteral("http://cam/b.jpg"),
    QStringLiteral("http://cam/c.jpg"), QStringLiteral("http://cam/d.jpg"),
    QStringLiteral("http://cam/e.jpg")};

class HealthHands
{
public:
    explicit HealthHands(int seed)
        : random_(static_cast<quint32>(seed))
    {
        rules_.now = universal();
        fill(kHealthUrls.at(0), 5, 600, 3600);
        fill(kHealthUrls.at(1), 70, 60, 300);
        fill(kHealthUrls.at(2), 3, 86400, -7200);
        for (const CameraAddress camera : kHealthCameras) {
            house_.table.setGroupActive(camera.group, true);
            if (!oneIn(4)) {
                house_.table.setUrl(camera, anyOf(kHealthUrls));
            }
        }
        follow();
        health_.start();
        advance(0);
        for (auto &[camera, known] : rules_.cameras) {
            known.quiet = known.newest ? std::max<qint64>(0, rules_.now - *known.newest) : 0;
        }
        hearStore();
        present();
        look();
    }

    Q_DISABLE_COPY_MOVE(HealthHands)

    ~HealthHands()
    {
        window_.close(); // which releases a switch that is pressed
        house_.scheduler.giveUp();
        house_.scope.requestStop();
        clock_.advance(std::chrono::seconds{1});
    }

    // What the capture and its surroundings do.
    void pass()
    {
        for (const QString &url : kHealthUrls) {
            answer(url);
        }
        const bool isRound = oneIn(2) || !house_.scheduler.isFirstPassDone();
        house_.scheduler.setTickCounter(isRound ? 59 : 10);
        const bool runs = !isStanding();
        if (isRound && runs) {
            rules_.beginRound();
        }
        house_.scope.launch(house_.scheduler.Timer_Timer());
        advance(0);
        if (isRound && runs && !house_.storage.isCheckRequested()) {
            rules_.endRound();
        }
    }

    void passTime()
    {
        static const QList<int> minutes{1, 4, 8, 16};
        advance(60 * anyOf(minutes));
    }

    void setClock()
    {
        static const QList<int> seconds{-3600, 3600, -400 * 86400, 86400};
        const std::chrono::seconds by{anyOf(seconds)};
        clock_.setLocal(clock_.localNow() + by);
        rules_.now += by.count();
    }

    void stall()
    {
        const int seconds = 60 * (3 + below(60));
        clock_.stall(std::chrono::seconds{seconds});
        rules_.standStill(seconds);
        rules_.slack += 10;
    }

    void suspend()
    {
        suspensions_.append(house_.scheduler.suspend());
        rules_.slack += 10;
    }

    void resume()
    {
        if (!suspensions_.isEmpty()) {
            house_.scheduler.resume(suspensions_.takeFirst());
            rules_.slack += 10;
        }
    }

    void switchGroup()
    {
        const int group = anyCamera().group;
        rules_.isOff[group] = !rules_.isOff[group];
        house_.table.setGroupActive(group, !rules_.isOff[group]);
        rules_.slack += 10;
    }

    // Another program puts a camera into a row, or takes it out.
    void changeAddress()
    {
        const CameraAddress camera = anyCamera();
        const QString url = oneIn(3) ? QString() : anyOf(kHealthUrls);
        EXPECT_EQ(house_.settings.change([&](SettingsDraft &draft) {
            forgetCamera(draft, camera);
            setUrl(draft, camera, url);
        }),
                  SettingsChange::Made);
        rules_.isNever[camera] = false;
        if (oneIn(2)) {
            house_.engine.adoptSettings();
        }
        follow();
    }

    void moveStorage()
    {
        const QString in = house_.tree.path(u"drives/c/in");
        const QString away = house_.tree.path(u"drives/c/away");
        isAway_ = !isAway_;
        EXPECT_TRUE(QDir().rename(isAway_ ? in : away, isAway_ ? away : in));
        house_.storage.recheck();
        rules_.slack += 10;
    }

    // In the browser.
    void deleteImage()
    {
        const QString url = anyOf(kHealthUrls);
        const QStringList names = isAway_ ? QStringList() : images(url);
        if (names.isEmpty()) {
            return;
        }
        EXPECT_TRUE(QFile::remove(folder(url) + u'/' + anyOf(names)));
        book_.recountFolder(folder(url));
        for (auto &[camera, known] : rules_.cameras) {
            known.isCounted = known.isCounted && known.url != url;
        }
    }

    void setNever()
    {
        const CameraAddress camera = anyCamera();
        if (rules_.cameras.contains(camera)) {
            rules_.isNever[camera] = oneIn(2);
            options_.setNever(camera, rules_.isNever[camera]);
        }
    }

    void setTimes()
    {
        rules_.times = anyOf(QList<int>{10, 3, 25});
        options_.setLateTimes(rules_.times);
    }

    // What the user does.
    void typeFilter()
    {
        static const QStringList texts{QStringLiteral("a"), QStringLiteral("0:"),
                                       QStringLiteral("late"), QStringLiteral("out"),
                                       QStringLiteral("2:7")};
        if (window_.isVisible()) {
            clearFilter();
            filter_ = anyOf(texts);
            QTest::keyClicks(&find<QLineEdit>("healthFilter"), filter_);
        }
        wasCurrent_ = current();
    }

    void clearFilter()
    {
        if (window_.isVisible()) {
            filter_.clear();
            find<QLineEdit>("healthFilter").clear();
        }
    }

    void sort()
    {
        static const QList<HealthTable::Column> columns{
            HealthTable::Lamp,     HealthTable::Camera,    HealthTable::Age,
            HealthTable::Interval, HealthTable::FailedFor, HealthTable::Failures};
        if (!window_.isVisible()) {
            return;
        }
        const HealthTable::Column column = anyOf(columns);
        order_ = sorted_ == column && order_ == Qt::AscendingOrder ? Qt::DescendingOrder
                                                                   : Qt::AscendingOrder;
        sorted_ = column;
        table().sortByColumn(column, order_);
    }

    void select()
    {
        static const QList<Qt::Key> keys{Qt::Key_Up, Qt::Key_Down, Qt::Key_Down, Qt::Key_Home,
                                         Qt::Key_End};
        const int rows = table().model()->rowCount();
        if (!window_.isVisible() || rows == 0) {
            return;
        }
        if (oneIn(2)) {
            QTest::keyClick(&table(), anyOf(keys));
        } else {
            const QModelIndex index = table().model()->index(below(rows), HealthTable::Camera);
            QTest::mouseClick(table().viewport(), Qt::LeftButton, {},
                              table().visualRect(index).center());
        }
        wasCurrent_ = current();
    }

    void pressNever()
    {
        auto &box = find<QCheckBox>("healthNever");
        if (!pressed_ && window_.isVisible() && box.isEnabled()) {
            const CameraAddress camera = current().value_or(CameraAddress());
            pressed_ = Press{camera, rules_.cameras.at(camera).url, box.isChecked()};
            QTest::mousePress(&box, Qt::LeftButton, {}, {5, box.height() / 2});
        }
    }

    void releaseNever()
    {
        auto &box = find<QCheckBox>("healthNever");
        if (!pressed_ || !window_.isVisible()) {
            return;
        }
        const auto there = rules_.cameras.find(pressed_->camera);
        const bool isSame = there != rules_.cameras.end() && there->second.url == pressed_->url &&
                            current() == pressed_->camera && box.isDown();
        QTest::mouseRelease(&box, Qt::LeftButton, {}, {5, box.height() / 2});
        if (isSame) {
            rules_.isNever[pressed_->camera] = !pressed_->wasOn;
        }
        pressed_.reset();
    }

    void close()
    {
        if (!pressed_) {
            window_.close();
        }
    }

    void present()
    {
        if (!window_.isVisible()) {
            filter_.clear();
        }
        if (!pressed_) {
            window_.present();
            wasCurrent_ = current();
        }
    }

protected:
    struct Press
    {
        CameraAddress camera;
        QString url;
        bool wasOn = false;
    };

    int below(int bound) { return static_cast<int>(random_.bounded(bound)); }

    bool oneIn(int chances) { return below(chances) == 0; }

    template <typename Value>
    Value anyOf(const QList<Value> &values)
    {
        return values.at(below(static_cast<int>(values.size())));
    }

    CameraAddress anyCamera() { return anyOf(kHealthCameras); }

    [[nodiscard]] qint64 universal() const
    {
        return clock_.universalNow().time_since_epoch().count();
    }

    [[nodiscard]] bool isStanding() const
    {
        return isAway_ || !suspensions_.isEmpty() || !house_.storage.isUsable();
    }

    [[nodiscard]] QString folder(const QString &url) const { return house_.storage.folderOf(url); }

    [[nodiscard]] QStringList images(const QString &url) const
    {
        return QDir(folder(url)).entryList({QStringLiteral("20*")}, QDir::Files);
    }

    static QString name(qint64 moment)
    {
        const QDateTime date = QDateTime::fromSecsSinceEpoch(moment, Qt::UTC);
        return date.toString(QStringLiteral("yyyyMMdd_HHmmss")) +
               date.toString(QStringLiteral("ddHH")) + QStringLiteral(".jpg");
    }

    static qint64 moment(const QString &name)
    {
        QDateTime date = QDateTime::fromString(name.left(15), QStringLiteral("yyyyMMdd_HHmmss"));
        date.setTimeSpec(Qt::UTC);
        return date.toSecsSinceEpoch();
    }

    void fill(const QString &url, int count, int apart, int ago)
    {
        QDir().mkpath(folder(url));
        for (int i = 0; i < count; ++i) {
            QFile file(folder(url) + u'/' + name(rules_.now - ago - qint64{i} * apart));
            EXPECT_TRUE(file.open(QIODevice::WriteOnly));
            file.write("old");
        }
    }

    void answer(const QString &url)
    {
        const int kind = below(4);
        const QDateTime now = QDateTime::fromSecsSinceEpoch(rules_.now, Qt::UTC);
        const QString header =
            QLocale::c().toString(now, QStringLiteral("ddd, dd MMM yyyy HH:mm:ss")) +
            QStringLiteral(" GMT");
        if (kind < 2) { // a new picture
            headers_[url] = header;
        }
        ScriptedReply reply{jpeg(2000), headers_.value(url), QStringLiteral("image/jpeg"), {}, {}};
        if (kind == 3 || reply.lastModified.isEmpty()) {
            reply = {{}, {}, {}, {}, QStringLiteral("the camera is out")};
        }
        source_.answer(url, reply);
    }

    // The rules know the cameras that the settings name now.
    void follow()
    {
        for (const CameraAddress camera : kHealthCameras) {
            rules_.put(camera, house_.table.url(camera));
        }
    }

    void countFolders()
    {
        for (auto &[camera, known] : rules_.cameras) {
            if (!known.isCounted && QDir(folder(known.url)).exists()) {
                std::vector<qint64> dates;
                for (const QString &image : images(known.url)) {
                    dates.push_back(moment(image));
                }
                rules_.count(camera, dates);
            }
        }
    }

    void advance(int seconds)
    {
        clock_.advance(std::chrono::seconds{seconds});
        countFolders();
        if (isStanding()) {
            rules_.standStill(seconds);
        } else {
            rules_.pass(seconds);
        }
    }

    // Twice, since what the first look finds is shown by the second.
    void look()
    {
        advance(5);
        advance(5);
    }

    void hearStore()
    {
        QObject::connect(&house_.store, &ImageStore::imageStored, &house_,
                         [this](CameraAddress camera) { rules_.store(camera); });
        QObject::connect(&house_.store, &ImageStore::cameraAnswered, &house_,
                         [this](CameraAddress camera) { rules_.answer(camera); });
        QObject::connect(
            &house_.store, &ImageStore::cameraFailed, &house_,
            [this](CameraAddress camera, const QString &reason) { rules_.fail(camera, reason); });
    }

    template <typename Control>
    [[nodiscard]] Control &find(const char *name) const
    {
        return *window_.findChild<Control *>(QLatin1String(name));
    }

    [[nodiscard]] QTableView &table() const { return find<QTableView>("healthTable"); }

    [[nodiscard]] QString cell(int row, HealthTable::Column column) const
    {
        return table().model()->index(row, column).data().toString();
    }

    [[nodiscard]] CameraAddress cameraAt(int row) const
    {
        return cameraFromText(cell(row, HealthTable::Camera).left(3)).value_or(CameraAddress());
    }

    [[nodiscard]] std::vector<CameraAddress> listed() const
    {
        std::vector<CameraAddress> cameras;
        for (int row = 0; row < table().model()->rowCount(); ++row) {
            cameras.push_back(cameraAt(row));
        }
        return cameras;
    }

    [[nodiscard]] bool isListed(CameraAddress camera) const
    {
        const std::vector<CameraAddress> all = listed();
        return std::ranges::find(all, camera) != all.end();
    }

    [[nodiscard]] std::optional<CameraAddress> current() const
    {
        const QModelIndex index = table().currentIndex();
        return index.isValid() ? std::optional(cameraAt(index.row())) : std::nullopt;
    }

    static std::string text(const QStringList &list)
    {
        return list.join(QStringLiteral(" | ")).toStdString();
    }

    QRandomGenerator random_;
    FakeClock clock_;
    ScriptedSource source_{clock_};
    CaptureHouse house_{source_, clock_};
    MailDouble mail_;
    HealthEngine health_{house_.engine, mail_};
    HealthBook &book_ = health_.book();
    HealthWindow window_{book_, health_.watch(), house_.settings};
    HealthOptions options_{house_.settings};
    HealthRules rules_;
    QHash<QString, QString> headers_; // the last of each address
    QList<Suspension> suspensions_;
    bool isAway_ = false;
    QString filter_;
    int sorted_ = HealthTable::Lamp;
    Qt::SortOrder order_ = Qt::DescendingOrder;
    std::optional<Press> pressed_;
    std::optional<CameraAddress> wasCurrent_;
    QStringList done_;
};

} // namespace velmora::test
