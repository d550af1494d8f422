// The slideshow: plays the images that the browser lists, one after another and in a loop, between
// a first and a last position.
#pragma once

#include "browser/BrowserData.h"
#include "browser/Projector.h"
#include "settings/EventLog.h"
#include "settings/SettingsFile.h"

#include <QObject>
#include <QTimer>

namespace velmora {

/// Positions in the browser's list, counted from 1.
struct PlayRange
{
    int start = 0; // first position played
    int end = 0;   // last position played; 0: nothing to play

    bool operator==(const PlayRange &) const = default;
};

/// What the window shows.
struct FilmFace
{
    QString PauseCine = QStringLiteral("Pause"); // the button's caption: what pressing it does
    PlayRange range;
    int count = 0;   // images in the list
    int vitesse = 0; // ms for each image
    int progress = 0;
    QString tDebut; // "20060307", the day of the first image played
    QString tFin;
    QString Compte;  // "5 / 30"
    QString Compte0; // "1 / 26": rank in the range
    QString nFich;   // date and time of the image shown
    ImageFile image;
};

class Slideshow : public Projector
{
    Q_OBJECT

public:
    /// Bounds of the speed, ms.
    static constexpr int kFastest = 10;
    static constexpr int kSlowest = 1000;

    Slideshow(const SettingsFile &settings, EventLog &log, const BrowserData &data);

    [[nodiscard]] const FilmFace &face() const { return face_; }

    /// `cine`: advances the show.
    [[nodiscard]] QTimer &timer() { return timer_; }

    [[nodiscard]] bool isOpen() const override { return open_; }

    /// The camera whose images are played.
    [[nodiscard]] CameraAddress camera() const { return camera_; }

    /// False for a paused show once the browser lists another folder's images.
    [[nodiscard]] bool isOfList() const { return open_ && folder_ == data_.files.folder(); }

    [[nodiscard]] bool isPlaying() const override;

    [[nodiscard]] bool isRunning() const override { return timer_.isActive(); }

    void stopTimer() override { timer_.stop(); }

    void startTimer() override;
    void setHeld(bool held) override;
    void begin() override;
    void moveTo(int index) override;
    void close() override;

    /// Position of the next image.
    [[nodiscard]] int current() const { return current_; }

    /// One tick of the slideshow.
    void cine_Timer();

    /// Play or pause was pressed.
    void PauseCine_MouseDown();

    /// The slider of the first image was moved.
    void sDebut_Change(int value);

    /// The slider of the last image was moved.
    void sFin_Change(int value);

    /// Another range was chosen elsewhere. Unlike a slider this lets no paused show run on.
    void setRange(const PlayRange &range);

    /// The slider of the speed was moved.
    void vitesse_Change(int value);

    /// Selects the first image in the browser's list whose name begins with a text.
    void find(const QString &begin);

    /// The slideshow's picture was clicked: the image last shown becomes the browser's selected
    /// one.
    void iCine_Click();

Q_SIGNALS:
    void opened();

    /// It has begun with the whole list.
    void begun();

    /// It plays another camera's images from now on.
    void cameraChanged();
    void closing();

    /// The face has changed.
    void changed();

private:
    void load();
    void setPaused(bool paused);
    void takeList();
    void followList();
    void keepPlace();
    void showRange();
    void showCounters();
    void showNumbers(int position);
    [[nodiscard]] ImageFile fileAt(int position) const;

    const SettingsFile &settings_;
    EventLog &log_;
    const BrowserData &data_;
    QTimer timer_;
    FilmFace face_;
    CameraAddress camera_;
    QString folder_; // whose images are played
    int current_ = 0;
    int shownPosition_ = 0; // in the counters: of the image on show, once it plays
    bool open_ = false;
    bool paused_ = false;
    bool held_ = false;
};

} // namespace velmora
