// The images of the camera on show by days and hours, and the way from a day to its first image.
#pragma once

#include "browser/DayCounts.h"
#include "browser/ImageBrowser.h"

#include <QObject>

namespace velmora {

/// As long as it is open, counts the browser's list again whenever that becomes another.
class Calendar : public QObject
{
    Q_OBJECT

public:
    /// The browser outlives the object.
    explicit Calendar(ImageBrowser &browser);

    void open();

    void close() { open_ = false; }

    /// Days with images, in order.
    [[nodiscard]] const std::vector<DayCount> &days() const { return days_; }

    /// Images of a day; 0 for a day that has none.
    [[nodiscard]] qsizetype imagesOf(std::chrono::year_month_day day) const;

    /// Of the day that has the most.
    [[nodiscard]] qsizetype most() const { return most_; }

    /// The day whose hours are shown; nothing while there are no images.
    [[nodiscard]] std::optional<std::chrono::year_month_day> chosen() const { return chosen_; }

    [[nodiscard]] const HourCounts &hours() const { return hours_; }

    /// Shows the hours of a day.
    void choose(std::chrono::year_month_day day);

    /// Chooses a day, or an hour of the chosen one, and selects the first image there in the
    /// browser; without one, the nearest.
    void goToDay(std::chrono::year_month_day day);
    void goToHour(int hour);

    /// An image of a camera was stored: its day has one more.
    void follow(CameraAddress camera, const QString &fileName);

Q_SIGNALS:
    /// Other days, or other numbers.
    void counted();

    /// Another day is chosen.
    void dayChosen();

private:
    void count();
    void goTo(const QByteArray &moment, const ImageRun &run);
    void goOn();

    [[nodiscard]] const FileList &files() const { return browser_.shown().files; }

    ImageBrowser &browser_;
    std::vector<DayCount> days_;
    HourCounts hours_{};
    std::optional<std::chrono::year_month_day> chosen_;
    QByteArray waiting_; // a moment to go to when the camera's images are on show
    qsizetype most_ = 0;
    bool open_ = false;
};

} // namespace velmora
