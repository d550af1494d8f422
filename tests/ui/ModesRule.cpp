#include "ModesRule.h"

#include <QDir>

#include <algorithm>
#include <filesystem>

namespace velmora::test {

QString ModesRule::folderOf(CameraAddress of) const
{
    QString name;
    for (const char c : address(of).toLatin1()) {
        name += QChar::isLetter(static_cast<uint>(c))
                    ? QString(QLatin1Char(c))
                    : QStringLiteral("%%1")
                          .arg(static_cast<uint>(c), 2, 16, QLatin1Char('0'))
                          .toUpper();
    }
    return name.isEmpty() ? storage_ : storage_ + u'/' + name;
}

void ModesRule::takeRowAlong(int of)
{
    const bool isSelected = row >= 0;
    camera.row = of;
    show();
    if (isGroup && isSelected) {
        chooseRow(of);
    } else {
        restartFilm();
    }
}

void ModesRule::clickCell(int cell)
{
    const int at = start() + cell;
    leave();
    if (isGroup) {
        chooseRow(cell);
    } else if (at < list.size()) {
        chooseImage(at);
    }
}

void ModesRule::zoomCell(int cell)
{
    const QString image = cells().at(cell);
    leave();
    if (isZoomed) {
        return;
    }
    isZoomed = !image.isEmpty();
    zoomed = image;
    if (isGroup) {
        chooseRow(cell);
    }
}

void ModesRule::refresh()
{
    if (isGroup) {
        fill();
        takeRow(camera.row);
        listCamera();
    } else {
        show();
    }
}

void ModesRule::walk()
{
    if (film != Film::Closed) {
        return;
    }
    const bool isLast = camera.row == kRows - 1;
    if (isGroup || isLast) {
        hideZoom();
        camera.group = nextGroup();
    }
    if (isGroup) {
        fill();
    } else {
        chooseCamera(isLast ? 0 : camera.row + 1);
    }
}

void ModesRule::search()
{
    isTyped = false;
    found = Found::NoDate;
    const QString day = dayTyped();
    if (day.isEmpty()) {
        return;
    }
    const auto first = [this](const QString &key) {
        const auto is = [&key](const QString &name) { return name.contains(key); };
        const auto at = std::ranges::find_if(list, is);
        return at == list.end() ? -1 : static_cast<int>(at - list.begin());
    };
    const int ofMoment = first(day + u'_' + QString(time).remove(u':'));
    const int ofDay = first(day);
    found = ofMoment >= 0 ? Found::Moment : ofDay >= 0 ? Found::Day : Found::None;
    if (ofDay >= 0) {
        chooseImage(ofMoment >= 0 ? ofMoment : ofDay);
    }
}

void ModesRule::pressFilm()
{
    if (isFilmEnabled) {
        pressEnabledFilm();
    }
}

void ModesRule::pressEnabledFilm()
{
    if (isGroup) {
        listCamera();
    }
    if (!list.isEmpty() && film == Film::Closed) {
        film = Film::Playing;
    } else {
        hideZoom();
        closeFilm();
    }
}

void ModesRule::closeFilm()
{
    if (film != Film::Closed) {
        film = Film::Closed;
        hideZoom();
        followGroup();
        if (isGroup && row >= 0) {
            position = QString::number(list.size());
        }
    }
}

void ModesRule::reload(const QDateTime &now)
{
    camera = {storedGroup, storedRow};
    useCamera();
    hideZoom();
    showNow(now);
    if (isGroup) {
        rebuild();
        chooseRow(camera.row);
    }
}

void ModesRule::deleted()
{
    useCamera();
    if (isGroup) {
        fill();
        chooseRow(camera.row);
    }
}

void ModesRule::stored(CameraAddress by, const QString &name)
{
    noteStored(by, name);
    const bool isShown = isGroup ? by.group == camera.group : by == camera;
    if (isAuto && isShown) {
        isGroup ? (fill(), chooseRow(by.row)) : useCamera();
    } else if (showsNoneOf(by)) {
        const bool hadNone = listed_ == folderOf(by) && list.isEmpty();
        rebuildInPlace();
        hadNone ? restartFilm() : void();
    }
}

QStringList ModesRule::days() const
{
    QStringList days;
    for (const QString &name : known()) {
        days.append(name.left(8));
    }
    days.removeDuplicates();
    return days;
}

QStringList ModesRule::cells() const
{
    QStringList paths;
    for (int cell = 0; cell < kRows; ++cell) {
        paths.append(isGroup ? newest.at(static_cast<std::size_t>(cell)) : pathOf(start() + cell));
    }
    return paths;
}

int ModesRule::frame() const
{
    if (isGroup || index < 0) {
        return isGroup ? row : -1;
    }
    const bool isCentred = start() > 0 && list.size() - index > 5;
    return isCentred ? 4 : index - start();
}

ModesRule ModesRule::withFilmOf(const ModesRule &other) const
{
    ModesRule road = *this;
    road.list = other.list;
    road.index = other.index;
    road.isFilmEnabled = other.isFilmEnabled;
    road.listed_ = other.listed_;
    road.listOwner_ = other.listOwner_;
    road.storedSince_ = other.storedSince_;
    return road;
}

ModesRule ModesRule::withOwnList() const
{
    ModesRule road = *this;
    road.read(camera);
    return road;
}

const QHash<QString, QString> &ModesRule::writtenDays()
{
    static const QHash<QString, QString> days = [] {
        QHash<QString, QString> written;
        for (int day = 1; day <= 31; ++day) {
            const QDate date(2006, 3, day);
            for (const char *const form :
                 {"dd/MM/yyyy", "d/M/yy", "d.M.yyyy", "dd-MM-yy", "yyyy-MM-dd", "yyyyMMdd",
                  "d 'mars' yyyy", "'Mar' d, yyyy"}) {
                written.insert(date.toString(QLatin1String(form)),
                               date.toString(QStringLiteral("yyyyMMdd")));
            }
        }
        return written;
    }();
    return days;
}

void ModesRule::useCamera()
{
    storedRow = camera.row;
    show();
    if (isGroup) {
        chooseRow(camera.row);
    }
}

void ModesRule::show()
{
    if (isGroup) {
        fill();
        return;
    }
    read(camera);
    position = QString::number(list.size());
    if (!list.isEmpty()) {
        chooseImage(static_cast<int>(list.size()) - 1);
    }
    followZoom();
}

void ModesRule::rebuildInPlace()
{
    const int before = row;
    show();
    if (isGroup && before >= 0) {
        chooseRow(before);
    }
}

void ModesRule::fill()
{
    row = -1;
    position.clear();
    for (int i = 0; i < kRows; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const CameraAddress of{camera.group, i};
        newest.at(at) = newestOf(of);
        looked_.at(at) = address(of).isEmpty() ? QString() : folderOf(of);
    }
    followGroup();
    followZoom();
}

int ModesRule::nextGroup() const
{
    int next = camera.group;
    do {
        next = (next + 1) % kGroups;
    } while (next != camera.group && !isActive.at(static_cast<std::size_t>(next)));
    return next;
}

void ModesRule::read(CameraAddress of)
{
    listOwner_ = of;
    listed_ = folderOf(of);
    list = QDir(listed_).entryList({QStringLiteral("20*")}, QDir::Files, QDir::NoSort);
    list.sort();
    index = -1;
    isFilmEnabled = !list.isEmpty();
    storedSince_.clear();
    countDays();
}

void ModesRule::countDays()
{
    if (days().isEmpty()) {
        chosenDay.clear();
    } else if (chosenDay.isEmpty()) {
        chosenDay = days().last();
    }
}

QString ModesRule::newestOf(CameraAddress of) const
{
    if (address(of).isEmpty()) {
        return {};
    }
    QStringList names =
        QDir(folderOf(of)).entryList({QStringLiteral("2*")}, QDir::Files, QDir::NoSort);
    names.sort();
    QString latest;
    std::filesystem::file_time_type at;
    for (const QString &name : names) {
        const QString path = folderOf(of) + u'/' + name;
        const auto written = std::filesystem::last_write_time(path.toStdString());
        if (name.left(8) == names.last().left(8) && (latest.isEmpty() || written > at)) {
            latest = path;
            at = written;
        }
    }
    return latest;
}

bool ModesRule::showsNoneOf(CameraAddress by) const
{
    if (!isGroup) {
        return listed_ == folderOf(by) ? list.isEmpty() : by == camera;
    }
    bool isAny = false;
    for (int i = 0; i < kRows; ++i) {
        isAny = isAny || (newest.at(static_cast<std::size_t>(i)).isEmpty() &&
                          folderOf({camera.group, i}) == folderOf(by));
    }
    return isAny;
}

void ModesRule::goTo(const QString &begin, const QString &middle)
{
    if (isGroup) {
        const CameraAddress owner = listOwner_;
        if (owner.group != camera.group) {
            chooseGroup(owner.group);
        }
        if (owner.row != camera.row) {
            chooseCamera(owner.row);
        }
        setGroupView(false);
    } else if (const QString first = firstOf(known(), begin);
               !first.isEmpty() && !list.contains(first)) {
        refresh();
    }
    if (!list.isEmpty()) {
        const QString first = firstOf(list, begin);
        chooseImage(static_cast<int>(
            list.indexOf(first.isEmpty() ? nearest(begin.left(8) + u'_' + middle) : first)));
    }
}

QString ModesRule::nearest(const QString &moment) const
{
    const auto seconds = [](const QString &name) {
        QDateTime at = QDateTime::fromString(name.left(15), QStringLiteral("yyyyMMdd_HHmmss"));
        at.setTimeSpec(Qt::UTC);
        return at.toSecsSinceEpoch();
    };
    return *std::ranges::min_element(
        list, {}, [&](const QString &name) { return std::abs(seconds(name) - seconds(moment)); });
}

int ModesRule::start() const
{
    const int count = static_cast<int>(list.size());
    const int early = index - 6;
    if (count <= 10) {
        return 0;
    }
    if (early + 13 > count) {
        return count - 10;
    }
    return early < -1 ? 0 : index - 4;
}

QString ModesRule::firstOf(const QStringList &names, const QString &begin)
{
    const auto is = [&begin](const QString &name) { return name.startsWith(begin); };
    const auto at = std::ranges::find_if(names, is);
    return at == names.end() ? QString() : *at;
}

} // namespace velmora::test
