#include "browser/BrowserModes.h"

#include "base/DateText.h"
#include "settings/Keys.h"

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr auto kScanStep = 10s;

const SwitchKey &keyOf(Mode mode)
{
    switch (mode) {
    case Mode::Auto:
        return keys::kAuto;
    case Mode::Camera:
        return keys::kCamera;
    case Mode::Scan:
        break;
    }
    return keys::kScan;
}

} // namespace

BrowserModes::BrowserModes(const Uses &uses, const BrowserData &data, CameraFolders &folders,
                           Selection &selection, BrowserLists &lists)
    : uses_(uses)
    , data_(data)
    , folders_(folders)
    , selection_(selection)
    , lists_(lists)
{
    timer_.setObjectName(QStringLiteral("TimerScan"));
    timer_.setInterval(kScanStep);
    connect(&timer_, &QTimer::timeout, this, &BrowserModes::scanDue);
    connect(&uses_.storage, &StorageFolder::checked, this, &BrowserModes::runScan);
    connect(&uses_.storage, &StorageFolder::checked, this, &BrowserModes::runFilm);
    connect(&uses_.scheduler, &Scheduler::timersStopped, this, &BrowserModes::stopTimers);
}

void BrowserModes::takeStored(Mode mode)
{
    const bool stored = keyOf(mode).read(uses_.settings);
    if (stored != isOn(mode)) {
        set(mode, stored);
    }
}

QCoro::Task<> BrowserModes::load()
{
    showNow();
    for (const Mode mode : {Mode::Auto, Mode::Camera, Mode::Scan}) {
        takeStored(mode);
    }
    cScan_Click();
    uses_.sheet.hideZoom();
    const bool wasGroup = data_.state.view() == View::Group;
    if (isOn(Mode::Camera) || wasGroup) {
        co_await cCamera_Click();
    }
    if (isOn(Mode::Camera)) {
        co_await lists_.LstDirCam_Click(data_.state.camera().row);
    } else if (isOn(Mode::Auto)) {
        co_await cAuto_Click();
    }
}

void BrowserModes::open()
{
    unloaded_ = false;
}

void BrowserModes::unload()
{
    unloaded_ = true;
    forgetFilm();
    timer_.stop();
}

void BrowserModes::set(Mode mode, bool on)
{
    on_.at(static_cast<std::size_t>(mode)) = on;
    keyOf(mode).write(uses_.settings, on);
    if (mode == Mode::Camera && on) {
        showNow(); // at once: the group may be left again before its turn has come
    }
    Q_EMIT changed();
}

void BrowserModes::showNow()
{
    const WallTime now = uses_.clock.localNow();
    Q_EMIT searchTextsChanged(dayText(now), timeText(now));
}

QCoro::Task<> BrowserModes::cAuto_Click()
{
    if (data_.state.view() == View::Camera) {
        co_await lists_.lstCam_MouseUp();
    } else {
        co_await lists_.DirImage();
    }
}

QCoro::Task<> BrowserModes::cCamera_Click()
{
    selection_.setView(isOn(Mode::Camera) ? View::Group : View::Camera);
    if (isOn(Mode::Camera)) {
        uses_.sheet.hideZoom();
    }
    co_await lists_.lstGroupe_MouseUp();
}

// A missing storage folder does not matter here: the walk waits for it. The window may have been
// closed while its modes waited for a folder to be read.
void BrowserModes::cScan_Click()
{
    if (isOn(Mode::Scan) && !unloaded_) {
        timer_.start();
    } else {
        timer_.stop();
    }
}

bool BrowserModes::isFollowing(CameraAddress camera) const
{
    const CameraAddress shown = data_.state.camera();
    return isOn(Mode::Auto) &&
           (data_.state.view() == View::Group ? shown.group == camera.group : shown == camera);
}

QCoro::Task<> BrowserModes::refreshAfter(CameraAddress camera)
{
    if (!isFollowing(camera)) {
        co_return;
    }
    if (data_.state.view() == View::Camera) {
        co_await lists_.lstCam_MouseUp();
    } else {
        co_await lists_.DirImage();
        co_await lists_.LstDirCam_Click(camera.row);
    }
}

// Here any number but 0 is on, while a group is captured only with a 1.
ActiveGroups BrowserModes::activeGroups() const
{
    const SettingsSnapshot now = uses_.settings.snapshot();
    ActiveGroups active{};
    for (int group = 0; group < kGroups; ++group) {
        active.at(static_cast<std::size_t>(group)) =
            now.number(listSection(group), keys::kGroupSwitch) != 0;
    }
    return active;
}

QCoro::Task<> BrowserModes::TimerScan_Timer()
{
    if (data_.state.CineActif()) {
        co_return;
    }
    folders_.settleStorage();
    if (!uses_.storage.isUsable()) {
        co_return;
    }
    const CameraAddress camera = data_.state.camera();
    if (data_.state.view() == View::Group) {
        uses_.sheet.hideZoom();
        selection_.setGroup(nextGroup(camera.group, activeGroups()));
        co_await lists_.DirCam();
    } else {
        const CameraAddress next = nextCamera(camera, activeGroups());
        if (next.group != camera.group) {
            uses_.sheet.hideZoom();
        }
        selection_.setGroup(next.group);
        selection_.setCamera(next.row);
        lists_.forgetChoice(); // whose folder may be the next row's too
        co_await lists_.lstCam_MouseUp();
    }
    if (uses_.film.isOpen()) {
        co_await lists_.ResetCine();
    }
}

QCoro::Task<> BrowserModes::bFilm_MouseDown()
{
    co_await listForFilm();
    if (filmPresses_ == 0) {
        co_return;
    }
    const int later = --filmPresses_;
    if (data_.files.count() > 0 && !uses_.film.isOpen()) {
        lists_.beginFilm(); // at once: it could be closed again during another reading
    } else {
        closeFilm();
        filmPresses_ = later; // these still count
    }
}

// Another row that is selected meanwhile has its own turn, which restarts the film: the press
// counts for the list on show.
QCoro::Task<> BrowserModes::listForFilm()
{
    const QString folder = folders_.of(data_.state.camera());
    try {
        if (data_.state.view() == View::Group) {
            co_await lists_.LitDir();
        }
    } catch (const Superseded &) {
        if (folder == folders_.of(data_.state.camera())) {
            throw;
        }
    }
}

void BrowserModes::closeFilm()
{
    uses_.film.stopTimer();
    uses_.sheet.hideZoom();
    uses_.film.close();
}

// A check of the storage folder stops the timers while it is missing and restarts each whose own
// switch is on.
void BrowserModes::runScan(const StorageState &state)
{
    const bool walks = isOn(Mode::Scan) && state.captureEnabled && !unloaded_;
    if (!walks) {
        timer_.stop();
    } else if (!timer_.isActive()) {
        timer_.start();
    }
}

void BrowserModes::runFilm(const StorageState &state)
{
    uses_.film.setHeld(!state.captureEnabled);
    if (state.captureEnabled && uses_.film.isPlaying() && !uses_.film.isRunning()) {
        uses_.film.startTimer();
    }
}

void BrowserModes::stopTimers()
{
    timer_.stop();
    uses_.film.setHeld(true);
}

} // namespace velmora
