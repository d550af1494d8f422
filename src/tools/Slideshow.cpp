#include "tools/Slideshow.h"

#include "settings/Keys.h"

#include <QFile>

#include <algorithm>

namespace velmora {
namespace {

constexpr int kDayLetters = 8;
constexpr int kStemLetters = 15;
constexpr int kSpread = 9; // positions between the ends when one slider pushes the other

QString ratio(int part, int whole)
{
    return QStringLiteral("%1 / %2").arg(part).arg(whole);
}

} // namespace

Slideshow::Slideshow(const SettingsFile &settings, EventLog &log, const BrowserData &data)
    : settings_(settings)
    , log_(log)
    , data_(data)
{
    timer_.setObjectName(QStringLiteral("cine"));
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &Slideshow::cine_Timer);
    connect(&data_.files, &QAbstractItemModel::modelReset, this, &Slideshow::followList);
}

bool Slideshow::isPlaying() const
{
    return open_ && !paused_;
}

void Slideshow::setPaused(bool paused)
{
    paused_ = paused;
    face_.PauseCine = paused_ ? QStringLiteral("Start") : QStringLiteral("Pause");
}

void Slideshow::startTimer()
{
    if (open_ && !held_) {
        timer_.start();
    }
}

void Slideshow::setHeld(bool held)
{
    held_ = held;
    if (held_) {
        timer_.stop();
    }
}

ImageFile Slideshow::fileAt(int position) const
{
    return data_.files.file(position - 1);
}

// The last speed used; without one, the fastest.
void Slideshow::load()
{
    const double stored = keys::kVitesse.read(settings_);
    face_.vitesse = static_cast<int>(std::clamp<double>(stored, kFastest, kSlowest));
    timer_.setInterval(face_.vitesse);
    setPaused(false);
    open_ = true;
    Q_EMIT opened();
}

// What is played is the browser's list, also when a paused show goes on after that has become
// another camera's.
void Slideshow::takeList()
{
    folder_ = data_.files.folder();
    if (camera_ != data_.files.camera()) {
        camera_ = data_.files.camera();
        Q_EMIT cameraChanged();
    }
}

void Slideshow::begin()
{
    if (!open_) {
        load();
    }
    face_.count = data_.files.count();
    takeList();
    current_ = 0;
    shownPosition_ = 0;
    face_.range = {1, face_.count};
    face_.tDebut = fileAt(1).name.left(kDayLetters);
    face_.tFin = fileAt(face_.count).name.left(kDayLetters);
    face_.progress = 0;
    face_.Compte.clear();
    face_.Compte0.clear();
    if (face_.count > 1) {
        showCounters();
    }
    timer_.setInterval(face_.vitesse);
    if (!paused_) {
        startTimer();
    }
    face_.image = fileAt(1);
    face_.nFich = face_.image.name.left(kStemLetters);
    Q_EMIT begun();
    Q_EMIT changed();
}

// A playing show restarts with the list of another folder; in its own it keeps range and place,
// whatever comes or goes, and its sliders reach what has come. A paused one keeps its place; new
// images lie beyond its end, and are included if it extended to the last one.
void Slideshow::followList()
{
    const int count = data_.files.count();
    const bool isSameFolder = data_.files.folder() == folder_;
    if (isPlaying() && !isSameFolder) {
        begin();
        return;
    }
    if (!open_ || !isSameFolder || count <= face_.count) {
        return;
    }
    if (paused_ && face_.range.end == face_.count) {
        face_.range.end = count;
    }
    face_.count = count;
    if (paused_) {
        keepPlace();
        showRange();
    } else {
        Q_EMIT changed();
    }
}

// The new images may stand before the one on show.
void Slideshow::keepPlace()
{
    const std::optional<int> shown = data_.files.find(face_.image);
    if (shown && shownPosition_ > 0) {
        current_ += *shown + 1 - shownPosition_;
        shownPosition_ = *shown + 1;
    }
}

void Slideshow::moveTo(int index)
{
    if (open_) {
        current_ = index + 1;
    }
}

void Slideshow::close()
{
    if (!open_) {
        return;
    }
    log_.trace(QStringLiteral("Cine Form_Unload"));
    Q_EMIT closing();
    timer_.stop();
    open_ = false;
    face_.image = {};
    Q_EMIT closed();
}

void Slideshow::cine_Timer()
{
    const PlayRange &range = face_.range;
    if (!paused_ && range.start == range.end) {
        timer_.stop();
        return;
    }
    if (current_ > range.end) {
        current_ = range.start;
    }
    if (range.end == 0) {
        timer_.stop();
        return;
    }
    takeList();
    face_.image = fileAt(current_ > 0 ? current_ : range.start); // there is no image 0
    face_.nFich = face_.image.name.left(kStemLetters);
    current_ = std::max(current_, range.start);
    face_.progress = current_ - range.start + 1;
    showCounters();
    ++current_;
    if (timer_.interval() != face_.vitesse) {
        timer_.setInterval(face_.vitesse); // setting it again would restart the period
    }
    Q_EMIT changed();
}

void Slideshow::PauseCine_MouseDown()
{
    if (!open_) {
        return;
    }
    if (timer_.isActive()) {
        setPaused(true);
        timer_.stop();
    } else {
        setPaused(false);
        startTimer();
    }
    Q_EMIT changed();
}

void Slideshow::sDebut_Change(int value)
{
    PlayRange &range = face_.range;
    range.start = value;
    if (range.start < data_.files.count() - kSpread && range.start > range.end) {
        range.end = range.start + kSpread;
    } else if (range.start > range.end) {
        range.end = range.start;
    }
    current_ = std::max(current_, range.start);
    shownPosition_ = current_;
    showRange();
}

// Moving the last position lets even a paused show run on.
void Slideshow::sFin_Change(int value)
{
    PlayRange &range = face_.range;
    range.end = value;
    if (range.end < range.start) {
        range.start = range.end > kSpread ? range.end - kSpread : range.end;
    }
    if (current_ > range.end) {
        current_ = range.start;
    }
    if (!paused_ && range.start == range.end) {
        timer_.stop();
    } else {
        startTimer();
    }
    shownPosition_ = current_;
    showRange();
}

void Slideshow::setRange(const PlayRange &range)
{
    if (range == face_.range) {
        return;
    }
    face_.range = range;
    if (current_ < range.start || current_ > range.end) {
        current_ = range.start;
    }
    if (shownPosition_ < range.start || shownPosition_ > range.end) {
        shownPosition_ = current_;
    }
    if (isPlaying() && range.start == range.end) {
        timer_.stop();
    } else if (isPlaying() && !timer_.isActive()) {
        startTimer();
    }
    showRange();
}

void Slideshow::showRange()
{
    showNumbers(shownPosition_);
    if (face_.range.start >= 1) {
        face_.tDebut = fileAt(face_.range.start).name.left(kDayLetters);
    }
    if (face_.range.end >= 1) {
        face_.tFin = fileAt(face_.range.end).name.left(kDayLetters);
    }
    Q_EMIT changed();
}

void Slideshow::showCounters()
{
    shownPosition_ = current_;
    showNumbers(shownPosition_);
}

void Slideshow::showNumbers(int position)
{
    const PlayRange &range = face_.range;
    face_.Compte = ratio(position, range.end);
    face_.Compte0 = ratio(position - range.start + 1, range.end - range.start + 1);
}

void Slideshow::vitesse_Change(int value)
{
    face_.vitesse = value;
    keys::kVitesse.write(settings_, value);
    Q_EMIT changed();
}

void Slideshow::find(const QString &begin)
{
    const auto found = data_.files.names().firstBeginningWith(QFile::encodeName(begin));
    if (found) {
        Q_EMIT fileChosen(static_cast<int>(*found));
    }
}

void Slideshow::iCine_Click()
{
    if (data_.state.view() == View::Group || data_.files.ListIndex() < 2) {
        return;
    }
    log_.trace(QStringLiteral("Cine iCine_Click"));
    const bool active = data_.state.CineActif();
    if (active) {
        timer_.stop();
    }
    if (current_ >= data_.files.count()) {
        current_ = 0;
    }
    Q_EMIT fileChosen(current_ < 2 ? 0 : current_ - 2);
    if (active && isPlaying()) {
        startTimer();
    }
    log_.trace(QStringLiteral("Cine iCine_Click Fin"));
}

} // namespace velmora
