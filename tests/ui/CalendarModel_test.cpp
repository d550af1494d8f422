// Random sequences of all that happens to the calendar: after each event it counts the images that
// are listed and those stored since, stays on its day, and a day leads to the image that is meant.
#include "BrowserWindowHouse.h"
#include "support/Sequences.h"
#include "ui/CalendarWindow.h"

#include <QAbstractScrollArea>
#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>

namespace velmora::test {
namespace {

using std::chrono::year_month_day;

constexpr int kSequences = 6;
constexpr int kEvents = 40;
const QList<CameraAddress> kCalendarCameras{{0, 0}, {0, 1}, {0, 4}, {1, 0}};
const QByteArray kPicture(100, 'x');

class CalendarRun
{
public:
    explicit CalendarRun(int seed)
        : random_(static_cast<quint32>(seed))
    {
        for (const CameraAddress camera : kCalendarCameras) {
            house_.house.addCamera(camera, cameraUrl(camera));
            for (int images = below(12); images > 0; --images) {
                put(camera, anyName());
            }
        }
        house_.open();
        QObject::connect(&house_.data.files, &QAbstractItemModel::modelReset, &window_,
                         [this] { stored_.clear(); });
        present();
        house_.settle();
    }

    Q_DISABLE_COPY_MOVE(CalendarRun)

    ~CalendarRun() = default;

    void play(int sequence)
    {
        compare();
        for (int i = 0; i < kEvents && !testing::Test::HasFailure(); ++i) {
            const auto kind = static_cast<std::size_t>(below(kKinds.size()));
            done_.append(QString::fromLatin1(kKinds.at(kind).name));
            (this->*kKinds.at(kind).run)();
            house_.settle();
            SCOPED_TRACE("sequence " + std::to_string(sequence));
            compare();
        }
        EXPECT_FALSE(testing::Test::HasFailure()) << done_.join(QStringLiteral(", ")).toStdString();
    }

private:
    struct Kind
    {
        const char *name;
        void (CalendarRun::*run)();
    };

    static const std::vector<Kind> kKinds;

    // By chance.
    int below(std::size_t bound) { return static_cast<int>(random_.bounded(quint32(bound))); }

    CameraAddress anyCamera() { return kCalendarCameras.at(below(4)); }

    year_month_day anyDay()
    {
        return std::chrono::sys_days{std::chrono::year{2006} / 2 / 26} +
               std::chrono::days{below(12)};
    }

    QString anyName()
    {
        const year_month_day day = anyDay();
        return QString::fromLatin1(dayKey(day)) + QStringLiteral("_%1%2000714.jpg")
                                                      .arg(below(24), 2, 10, QLatin1Char('0'))
                                                      .arg(below(60), 2, 10, QLatin1Char('0'));
    }

    // What happens to the images.
    void put(CameraAddress camera, const QString &name)
    {
        house_.house.putImage(camera, name, kPicture);
    }

    [[nodiscard]] bool isListed(CameraAddress camera) const
    {
        const ImageFile first = house_.data.files.file(0);
        return first.isNone() ? camera == calendar_.camera()
                              : first.folder == house_.house.storage.cameraFolderText(camera);
    }

    void store()
    {
        const CameraAddress camera = anyCamera();
        const QString name = anyName();
        put(camera, name);
        if (isOpen_ && isListed(camera)) {
            stored_.insert(name);
        }
        Q_EMIT house_.house.store.imageStored(camera, name);
    }

    // By someone else, who may put the same one there again.
    void removeFile()
    {
        const CameraAddress camera = anyCamera();
        const QStringList names = house_.house.images(camera);
        if (!names.isEmpty()) {
            const QString name = names.at(below(static_cast<std::size_t>(names.size())));
            QFile::remove(house_.imagePath(camera, name));
            if (below(2) == 0) {
                put(camera, name);
                if (isOpen_ && isListed(camera)) {
                    stored_.insert(name);
                }
                Q_EMIT house_.house.store.imageStored(camera, name);
            }
        }
    }

    void refresh() { house_.browser.refresh(); }

    void deleteForItsAge()
    {
        removeFile();
        house_.browser.showDeletion(anyCamera());
    }

    // What the user does in the browser.
    void chooseCamera() { house_.browser.chooseCamera(anyCamera().row); }

    void chooseGroup() { house_.browser.chooseGroup(below(2)); }

    void changeView() { house_.browser.setMode(Mode::Camera, below(2) == 0); }

    void changeAuto() { house_.browser.setMode(Mode::Auto, below(2) == 0); }

    void chooseFile()
    {
        if (house_.data.files.count() > 0 && house_.data.state.view() == View::Camera) {
            house_.browser.chooseFile(below(static_cast<std::size_t>(house_.data.files.count())));
        }
    }

    // And in the calendar.
    void present()
    {
        window_.present();
        if (!isOpen_) {
            isOpen_ = true;
            chosen_.reset();
            anchor_.reset();
            stored_.clear();
        }
    }

    void close()
    {
        window_.close();
        isOpen_ = false;
    }

    QWidget &map() { return *window_.findChild<QWidget *>(QStringLiteral("calendarDays")); }

    void key()
    {
        static const std::array keys{Qt::Key_Left, Qt::Key_Right,  Qt::Key_Up,   Qt::Key_Down,
                                     Qt::Key_Home, Qt::Key_PageUp, Qt::Key_End,  Qt::Key_PageDown,
                                     Qt::Key_Left, Qt::Key_Right,  Qt::Key_Left, Qt::Key_Right};
        const Qt::Key pressed = keys.at(static_cast<std::size_t>(below(keys.size())));
        const bool isShifted = below(4) == 0;
        if (!isOpen_) {
            return;
        }
        if (const auto to = behind(pressed)) {
            choose(*to, isShifted);
        }
        QTest::keyClick(&map(), pressed, isShifted ? Qt::ShiftModifier : Qt::NoModifier);
    }

    [[nodiscard]] std::optional<year_month_day> behind(Qt::Key key) const
    {
        const std::map<year_month_day, int> days = this->days();
        if (!chosen_ || days.empty()) {
            return std::nullopt;
        }
        const year_month_day first = days.begin()->first;
        const year_month_day last = days.rbegin()->first;
        const QDate date(int{chosen_->year()}, static_cast<int>(unsigned{chosen_->month()}),
                         static_cast<int>(unsigned{chosen_->day()}));
        const std::map<Qt::Key, QDate> moved{
            {Qt::Key_Left, date.addDays(-1)},      {Qt::Key_Right, date.addDays(1)},
            {Qt::Key_Up, date.addMonths(-1)},      {Qt::Key_Down, date.addMonths(1)},
            {Qt::Key_PageUp, date.addMonths(-12)}, {Qt::Key_PageDown, date.addMonths(12)}};
        if (key == Qt::Key_Home || key == Qt::Key_End) {
            return key == Qt::Key_Home ? first : last;
        }
        const QDate to = moved.at(key);
        const year_month_day day{std::chrono::year{to.year()},
                                 std::chrono::month{static_cast<unsigned>(to.month())},
                                 std::chrono::day{static_cast<unsigned>(to.day())}};
        return std::clamp(day, first, last);
    }

    void choose(year_month_day day, bool isShifted)
    {
        const auto anchor = anchor_ ? anchor_ : chosen_;
        anchor_ = isShifted && anchor && *anchor != day ? anchor : std::nullopt;
        chosen_ = day;
    }

    void goToDay()
    {
        const year_month_day day = anyDay();
        if (isOpen_ && chosen_) {
            choose(day, false);
            calendar_.goToDay(day);
            checkWay(QString::fromLatin1(dayKey(day)), QStringLiteral("120000"));
        }
    }

    void goToHour()
    {
        const int hour = below(24);
        if (isOpen_ && chosen_) {
            const QString day = QString::fromLatin1(dayKey(*chosen_));
            const QString text = QStringLiteral("%1").arg(hour, 2, 10, QLatin1Char('0'));
            calendar_.goToHour(hour);
            checkWay(day + u'_' + text,
                     text.leftJustified(6, u'0').replace(2, 2, QStringLiteral("30")));
        }
    }

    static qint64 seconds(const QString &name)
    {
        QDateTime time = QDateTime::fromString(name.left(15), QStringLiteral("yyyyMMdd_HHmmss"));
        time.setTimeSpec(Qt::UTC);
        return time.toSecsSinceEpoch();
    }

    // The first image whose name begins so, or else the one nearest to that time of the day.
    void checkWay(const QString &begin, const QString &middle)
    {
        const CameraAddress camera = calendar_.camera();
        house_.settle();
        QStringList names = list();
        EXPECT_EQ(house_.data.state.view(), View::Camera);
        EXPECT_EQ(house_.data.state.camera(), camera);
        if (names.isEmpty()) {
            return;
        }
        const auto found = std::ranges::find_if(
            names, [&](const QString &name) { return name.startsWith(begin); });
        const qint64 wanted = seconds(begin.left(8) + u'_' + middle);
        const auto nearest = std::ranges::min_element(
            names, {}, [&](const QString &name) { return std::abs(seconds(name) - wanted); });
        EXPECT_EQ(house_.data.files.selected().name.toStdString(),
                  (found != names.end() ? *found : *nearest).toStdString())
            << begin.toStdString();
    }

    // What must be so.
    [[nodiscard]] QStringList list() const
    {
        QStringList names;
        for (int i = 0; i < house_.data.files.count(); ++i) {
            names.append(house_.data.files.file(i).name);
        }
        return names;
    }

    [[nodiscard]] std::set<QString> counted() const
    {
        const QStringList listed = list();
        std::set<QString> names(listed.begin(), listed.end());
        names.insert(stored_.begin(), stored_.end());
        return names;
    }

    [[nodiscard]] std::map<year_month_day, int> days() const
    {
        std::map<year_month_day, int> days;
        for (const QString &name : counted()) {
            ++days[*dayOfName(name.toLatin1())];
        }
        return days;
    }

    void compare()
    {
        if (!isOpen_) {
            return;
        }
        const std::map<year_month_day, int> days = this->days();
        if (days.empty()) {
            chosen_.reset();
            anchor_.reset();
        } else if (!chosen_) {
            chosen_ = days.rbegin()->first;
        }
        std::map<year_month_day, int> shown;
        for (const DayCount &day : calendar_.days()) {
            shown[day.day] = static_cast<int>(day.images.count);
        }
        EXPECT_EQ(shown.size(), days.size());
        EXPECT_TRUE(shown == days);
        EXPECT_EQ(calendar_.chosen(), chosen_);
        EXPECT_EQ(calendar_.range().has_value(), anchor_.has_value());
        compareHours();
    }

    void compareHours()
    {
        std::array<int, kHoursOfDay> hours{};
        for (const QString &name : counted()) {
            if (chosen_ && dayOfName(name.toLatin1()) == chosen_) {
                ++hours.at(static_cast<std::size_t>(name.mid(9, 2).toInt()));
            }
        }
        for (std::size_t hour = 0; hour < hours.size(); ++hour) {
            EXPECT_EQ(calendar_.hours().at(hour).count, hours.at(hour)) << hour;
        }
    }

    QRandomGenerator random_;
    BrowserWindowHouse house_;
    Calendar &calendar_ = house_.images.calendar();
    CalendarWindow window_{calendar_};
    bool isOpen_ = false;
    std::optional<year_month_day> chosen_;
    std::optional<year_month_day> anchor_;
    std::set<QString> stored_; // since the list was read
    QStringList done_;
};

const std::vector<CalendarRun::Kind> CalendarRun::kKinds{
    {"store", &CalendarRun::store},
    {"store", &CalendarRun::store},
    {"store", &CalendarRun::store},
    {"remove", &CalendarRun::removeFile},
    {"refresh", &CalendarRun::refresh},
    {"delete for its age", &CalendarRun::deleteForItsAge},
    {"camera", &CalendarRun::chooseCamera},
    {"group", &CalendarRun::chooseGroup},
    {"view", &CalendarRun::changeView},
    {"auto", &CalendarRun::changeAuto},
    {"file", &CalendarRun::chooseFile},
    {"present", &CalendarRun::present},
    {"present", &CalendarRun::present},
    {"close", &CalendarRun::close},
    {"key", &CalendarRun::key},
    {"key", &CalendarRun::key},
    {"key", &CalendarRun::key},
    {"go to day", &CalendarRun::goToDay},
    {"go to day", &CalendarRun::goToDay},
    {"go to hour", &CalendarRun::goToHour},
};

TEST(CalendarModel, HoldsAfterEveryEventOfRandomSequences)
{
    playSequences(kSequences, [](int sequence) { CalendarRun(sequence).play(sequence); });
}

} // namespace
} // namespace velmora::test
