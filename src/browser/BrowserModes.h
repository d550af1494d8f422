// How the browser follows events: its views, the refresh after a capture, the walk through the
// groups, and opening the slideshow.
#pragma once

#include "browser/BrowserLists.h"
#include "browser/Mode.h"
#include "browser/ScanWalk.h"

#include <QTimer>

namespace velmora {

class BrowserModes : public QObject
{
    Q_OBJECT

public:
    /// What it uses besides the browser's lists and selection.
    struct Uses
    {
        Sheet &sheet;
        const SettingsFile &settings;
        StorageFolder &storage;
        Scheduler &scheduler;
        const Clock &clock;
        Projector &film;
    };

    /// Everything passed in outlives the object.
    BrowserModes(const Uses &uses, const BrowserData &data, CameraFolders &folders,
                 Selection &selection, BrowserLists &lists);

    /// `TimerScan`: runs exactly while the scan is on and the storage folder can be used.
    [[nodiscard]] QTimer &timer() { return timer_; }

    [[nodiscard]] bool isOn(Mode mode) const { return on_.at(static_cast<std::size_t>(mode)); }

    /// The window is about to be shown. At once, while loading waits for its turn.
    void open();

    /// Loads the stored modes, each as if it had been clicked, and shows today's date.
    QCoro::Task<> load();

    /// The window was closed: the walk ends.
    void unload();

    /// A mode was switched: stores it, and shows the present time with the group, at once. Acting
    /// on it is left to the box's own function.
    void set(Mode mode, bool on);

    /// The box that follows new images was clicked.
    QCoro::Task<> cAuto_Click();

    /// The box that switches to group view was clicked.
    QCoro::Task<> cCamera_Click();

    /// The box of the automatic walk was clicked.
    void cScan_Click();

    /// A new image of this camera was stored: shows it, if new images are followed and its camera
    /// or group is on show.
    QCoro::Task<> refreshAfter(CameraAddress camera);

    /// True when that refresh would show something.
    [[nodiscard]] bool isFollowing(CameraAddress camera) const;

    /// One step of the automatic walk.
    QCoro::Task<> TimerScan_Timer();

    /// The film button was pressed; what it does then comes in its turn.
    void pressFilm() { ++filmPresses_; }

    /// The film was closed by other means: what was pressed before that opens it no more.
    void forgetFilm() { filmPresses_ = 0; }

    /// The film button: opens the slideshow, or closes it.
    QCoro::Task<> bFilm_MouseDown();

Q_SIGNALS:
    void changed();

    /// Texts for the boxes of the search.
    void searchTextsChanged(const QString &lDate, const QString &lTime);

    /// The walk's timer fired.
    void scanDue();

private:
    void takeStored(Mode mode);
    [[nodiscard]] ActiveGroups activeGroups() const;
    void showNow();
    QCoro::Task<> listForFilm();
    void closeFilm();
    void runScan(const StorageState &state);
    void runFilm(const StorageState &state);
    void stopTimers();

    static constexpr std::size_t kModes = 3;

    Uses uses_;
    const BrowserData &data_;
    CameraFolders &folders_;
    Selection &selection_;
    BrowserLists &lists_;
    QTimer timer_;
    std::array<bool, kModes> on_{};
    int filmPresses_ = 0;   // whose turn has not come
    bool unloaded_ = false; // the window is closed
};

} // namespace velmora
