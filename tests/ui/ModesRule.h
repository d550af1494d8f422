// What the browser must show, by the rules alone: it is told what happens to the browser, reads the
// same folders, and knows nothing of the program's own lists. A value, so that a test can follow
// several roads at once.
#pragma once

#include "cameras/CameraAddress.h"

#include <QDateTime>
#include <QHash>
#include <QStringList>

#include <array>

namespace velmora::test {

/// Every function without a result is one thing that happens.
class ModesRule
{
public:
    enum class Film { Closed, Playing, Paused };

    /// storage: native path of the storage folder.
    explicit ModesRule(const QString &storage)
        : storage_(storage)
    {
    }

    [[nodiscard]] QString address(CameraAddress of) const { return addresses_.value(indexOf(of)); }

    void giveAddress(CameraAddress to, const QString &url) { addresses_[indexOf(to)] = url; }

    /// Native; of a row without an address, the storage folder itself.
    [[nodiscard]] QString folderOf(CameraAddress of) const;

    // What the user does.
    void chooseGroup(int group)
    {
        camera.group = group;
        rebuild();
    }

    void chooseCamera(int of)
    {
        camera.row = of;
        useCamera();
    }

    void chooseImage(int at)
    {
        index = at;
        followZoom();
        position = QStringLiteral("%1 / %2").arg(index + 1).arg(list.size());
    }

    void chooseRow(int of)
    {
        takeRow(of);
        listCamera();
    }

    // Of a group that is being left: its camera is that of what follows.
    void takeRowAlong(int of);

    void storeRow() { storedRow = isGroup ? storedRow : camera.row; }

    // What was in the cell at the press is meant, though a search comes first.
    void clickCell(int cell);

    void zoomCell(int cell);

    void toggleZoom()
    {
        isZoomed = !isZoomed && !selected().isEmpty();
        zoomed = isZoomed ? selected() : QString();
    }

    void hideZoom()
    {
        isZoomed = false;
        zoomed.clear();
    }

    void setGroupView(bool on)
    {
        isGroup = on;
        position.clear();
        rebuild();
    }

    void setAuto(bool on)
    {
        isAuto = on;
        isGroup ? fill() : useCamera();
    }

    void refresh();

    /// A step of the walk.
    void walk();

    /// The text of the boxes is searched for.
    void search();

    /// A box that was typed into is left.
    void leave()
    {
        found = Found::Nothing;
        if (isTyped) {
            search();
        }
    }

    void pressFilm();

    /// The button may have been enabled for another list.
    void pressEnabledFilm();

    /// Opens on another list, and is restarted with this one.
    void openFilm() { film = film == Film::Closed ? Film::Playing : film; }

    /// By any road.
    void closeFilm();

    void pressPause()
    {
        if (film != Film::Closed) {
            film = film == Film::Playing ? Film::Paused : Film::Playing;
        }
    }

    /// The window is closed, and loaded again.
    void reload(const QDateTime &now);

    /// Another storage folder is in force, or the same is there again.
    void moveTo(const QString &storage)
    {
        storage_ = storage;
        refresh();
    }

    /// The camera's address, which may have been read already, is known to be another.
    void hearAddress(CameraAddress of)
    {
        const QString &looked = looked_.at(static_cast<std::size_t>(of.row));
        const bool isOther =
            isGroup ? looked.isEmpty() || looked != folderOf(of) : listed_ != folderOf(of);
        if (isOther && (isGroup ? of.group == camera.group : of == camera)) {
            rebuildInPlace();
        }
    }

    /// Images have got other names; the position stays.
    void relist()
    {
        const int before = index;
        show();
        if (!list.isEmpty()) {
            chooseImage(std::min(before, static_cast<int>(list.size()) - 1));
        }
    }

    /// The program begins anew.
    void restart(const QDateTime &now)
    {
        film = Film::Closed;
        isCalendarOpen = false;
        chosenDay.clear();
        isTyped = false;
        reload(now);
    }

    // The image named, or another in its place, was deleted after a question.
    void deleted();

    // What the program does by itself.
    void stored(CameraAddress by, const QString &name);

    void changeAddress(CameraAddress of, const QString &url)
    {
        giveAddress(of, url);
        if (isGroup ? of.group == camera.group : of == camera) {
            rebuildInPlace();
        }
    }

    // The calendar.
    void openCalendar()
    {
        isCalendarOpen = true;
        chosenDay = days().isEmpty() ? QString() : days().last();
    }

    void clickDay(const QString &day)
    {
        chosenDay = day;
        goTo(day, QStringLiteral("120000"));
    }

    void clickHour(int hour)
    {
        if (!chosenDay.isEmpty()) {
            const QString text = QStringLiteral("%1").arg(hour, 2, 10, QLatin1Char('0'));
            goTo(chosenDay + u'_' + text, text + QStringLiteral("3000"));
        }
    }

    /// Those of the listed camera and those stored since, each counted once.
    [[nodiscard]] QStringList known() const
    {
        QStringList names = list + storedSince_;
        names.sort();
        names.removeDuplicates();
        return names;
    }

    [[nodiscard]] QStringList days() const;

    // What is to be seen.
    /// Native path of the image in each cell; empty for none.
    [[nodiscard]] QStringList cells() const;

    /// The framed cell; none is -1.
    [[nodiscard]] int frame() const;

    /// The camera whose list it is.
    [[nodiscard]] CameraAddress listed() const { return listOwner_; }

    /// The same folder is on show, in the same view.
    [[nodiscard]] bool isWhere(const ModesRule &other) const
    {
        return isGroup == other.isGroup && isListed(other);
    }

    [[nodiscard]] bool isListed(const ModesRule &other) const { return listed_ == other.listed_; }

    /// With the images of the group's cells as they were read on another road.
    [[nodiscard]] ModesRule withNewestOf(const ModesRule &other) const
    {
        ModesRule road = *this;
        road.newest = other.newest;
        road.followZoom();
        return road;
    }

    /// With the list as it was on another road: a group that is shown does not list it again.
    [[nodiscard]] ModesRule withListOf(const ModesRule &other) const
    {
        ModesRule road = *this;
        if (isGroup && row < 0 && isListed(other)) {
            road.list = other.list;
            road.isFilmEnabled = other.isFilmEnabled;
            road.storedSince_ = other.storedSince_;
        }
        return road;
    }

    /// The group view selects no row, beside a paused film.
    [[nodiscard]] bool isHeld() const { return isGroup && row < 0 && film == Film::Paused; }

    /// With the list of another road, which a paused film may have kept.
    [[nodiscard]] ModesRule withFilmOf(const ModesRule &other) const;

    /// With the list of the camera selected, which a paused film has too if it was overtaken.
    [[nodiscard]] ModesRule withOwnList() const;

    [[nodiscard]] QString selected() const
    {
        if (isGroup) {
            return row < 0 ? QString() : newest.at(static_cast<std::size_t>(row));
        }
        return pathOf(index);
    }

    /// The days of a month, each written in several ways, with the beginnings of their names.
    static const QHash<QString, QString> &writtenDays();

    /// The day in the box of the date, as messages name it.
    [[nodiscard]] QString dayFound() const
    {
        return QDate::fromString(dayTyped(), QStringLiteral("yyyyMMdd"))
            .toString(QStringLiteral("dd/MM/yyyy"));
    }

    void showNow(const QDateTime &now)
    {
        date = now.toString(QStringLiteral("dd/MM/yyyy"));
        time = now.toString(QStringLiteral("HH:mm:ss"));
        isTyped = false;
    }

    enum class Found { Nothing, Moment, Day, None, NoDate };

    CameraAddress camera;
    bool isGroup = false;
    bool isAuto = false;
    bool isScan = false;
    bool isLoaded = true;
    std::array<bool, kGroups> isActive{};
    Film film = Film::Closed;
    QStringList list; // names of LstDir's camera
    int index = -1;
    std::array<QString, kRows> newest; // paths
    int row = -1;                      // of the group view
    QString position;
    bool isFilmEnabled = false;
    bool isZoomed = false;
    QString zoomed;
    QString date;
    QString time;
    bool isTyped = false;
    Found found = Found::Nothing; // by the search that this event has led to
    int storedGroup = 0;
    int storedRow = 0;
    bool isCalendarOpen = false;
    QString chosenDay; // "20060307"

    bool operator==(const ModesRule &) const = default;

private:
    // A group that was chosen, or another view.
    void rebuild()
    {
        storedGroup = camera.group;
        hideZoom();
        show();
        restartFilm();
    }

    // A camera that was chosen, or the same again.
    void useCamera();

    void show();

    void rebuildInPlace();

    void fill();

    // A paused film keeps its list.
    void followGroup()
    {
        const QString &image = newest.at(static_cast<std::size_t>(camera.row));
        const bool isOther = listOwner_ != camera || listed_ != folderOf(camera) ||
                             (list.isEmpty() && !image.isEmpty());
        if (isGroup && film != Film::Paused && isOther) {
            read(camera);
        }
    }

    void takeRow(int of)
    {
        row = of;
        camera.row = of;
        followZoom();
    }

    void listCamera()
    {
        read(camera);
        position = QString::number(list.size());
    }

    void restartFilm()
    {
        if (film == Film::Playing && isGroup) {
            listCamera();
        }
    }

    void followZoom() { zoomed = isZoomed ? selected() : QString(); }

    [[nodiscard]] int nextGroup() const;

    void read(CameraAddress of);

    void countDays();

    // The file of the newest day that was written last, of those the first by name.
    [[nodiscard]] QString newestOf(CameraAddress of) const;

    [[nodiscard]] bool showsNoneOf(CameraAddress by) const;

    void noteStored(CameraAddress by, const QString &name)
    {
        if (isCalendarOpen && listed_ == folderOf(by)) {
            storedSince_.append(name);
            countDays();
        }
    }

    void goTo(const QString &begin, const QString &middle);

    static QString firstOf(const QStringList &names, const QString &begin);

    [[nodiscard]] QString nearest(const QString &moment) const;

    [[nodiscard]] QString pathOf(int at) const
    {
        return at < 0 || at >= list.size() ? QString() : listed_ + u'/' + list.at(at);
    }

    // The first of the ten.
    [[nodiscard]] int start() const;

    // The day that the box of the date holds, as in a name; empty for none.
    [[nodiscard]] QString dayTyped() const { return writtenDays().value(date); }

    QString storage_;
    QHash<int, QString> addresses_;
    QString listed_;                    // folder
    std::array<QString, kRows> looked_; // folders of the group's cameras
    CameraAddress listOwner_;
    QStringList storedSince_;
};

} // namespace velmora::test
