// The images of the camera on show by day and hour, and the way from a day to its first image.
#pragma once

#include "browser/DayCounts.h"
#include "browser/ImageBrowser.h"

#include <QObject>

namespace velmora {

/// Both ends included.
struct DayRange
{
    std::chrono::year_month_day first;
    std::chrono::year_month_day last;

    [[nodiscard]] bool contains(std::chrono::year_month_day day) const
    {
        return first <= day && day <= last;
    }
};

/// While open, counts the browser's list again whenever it changes.
class Calendar : public QObject
{
    Q_OBJECT

public:
    /// The browser outlives the object.
    explicit Calendar(ImageBrowser &browser);

    /// Begins with the last day; does nothing while open.
    void open();

    void close() { open_ = false; }

    /// The camera whose images are counted.
    [[nodiscard]] CameraAddress camera() const { return files().camera(); }

    /// Days with images, in order.
    [[nodiscard]] const std::vector<DayCount> &days() const { return days_; }

    /// Images of a day; 0 for a day that has none.
    [[nodiscard]] qsizetype imagesOf(std::chrono::year_month_day day) const;

    /// Images of the day that has the most.
    [[nodiscard]] qsizetype most() const { return most_; }

    /// The day whose hours are shown; nothing if there are no images.
    [[nodiscard]] std::optional<std::chrono::year_month_day> chosen() const { return chosen_; }

    [[nodiscard]] const HourCounts &hours() const { return hours_; }

    /// Shows the hours of a day.
    void choose(std::chrono::year_month_day day);

    /// The same, and selects all days from the previously chosen one up to this.
    void extendTo(std::chrono::year_month_day day);

    /// First and last of the days selected together; nothing if only one is.
    [[nodiscard]] std::optional<DayRange> range() const;

    /// Images of these days.
    [[nodiscard]] qsizetype imagesOf(const DayRange &range) const;

    /// Chooses a day, or an hour of the chosen one, and selects its first image in the browser, or
    /// the nearest image if it has none.
    void goToDay(std::chrono::year_month_day day);
    void goToHour(int hour);

    /// An image of a camera was stored: its day gains one.
    void follow(CameraAddress camera, const QString &fileName);

Q_SIGNALS:
    /// The days or their numbers have changed.
    void counted();

    /// A different day, or several, are chosen.
    void dayChosen();

    /// Several days are selected together.
    void rangeChosen(const velmora::DayRange &range);

private:
    // Where a person wants to go.
    struct Goal
    {
        CameraAddress camera;
        std::chrono::year_month_day day;
        std::optional<int> hour;
    };

    void count();
    void countChosen();
    void goTo(const Goal &goal);
    void showCamera(CameraAddress camera);
    void goOn();
    void select(const Goal &goal);
    [[nodiscard]] ImageRun imagesAt(const Goal &goal) const;
    void add(std::chrono::year_month_day day);

    [[nodiscard]] const FileList &files() const { return browser_.shown().files; }

    ImageBrowser &browser_;
    std::vector<DayCount> days_;
    HourCounts hours_{};
    std::vector<QByteArray> stored_; // names, since the list was read
    std::optional<std::chrono::year_month_day> chosen_;
    std::optional<std::chrono::year_month_day> anchor_; // the end of the range that stays
    std::optional<Goal> waiting_;                       // until the list has been read
    int wishes_ = 0;                                    // of the browser, as the goal was set
    qsizetype most_ = 0;
    bool open_ = false;
};

} // namespace velmora
