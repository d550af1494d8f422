// Films and copies of a range of the images that the browser lists, as a window asks for them.
#pragma once

#include "base/Clock.h"
#include "base/TaskScope.h"
#include "browser/BrowserData.h"
#include "cameras/StorageFolder.h"
#include "tools/FilmExport.h"
#include "tools/RangeCopy.h"
#include "tools/Slideshow.h"

#include <QObject>

namespace velmora {

enum class FilmThinning {
    None,
    Every,  // every n-th image
    Seconds // so many that the film lasts so long
};

/// As the window's controls have it.
struct FilmWish
{
    QString from; // as filmSpan() reads it
    QString to;
    FilmHours hours;
    FilmThinning thinning = FilmThinning::None;
    int thinningNumber = 1;
    QSize size; // empty: that of the first picture
    int picturesPerSecond = 25;
    bool isStamped = false;
    FilmForm form = FilmForm::Mp4;
};

struct FilmForecast
{
    bool isRangeGood = false;
    qsizetype images = 0;
    double seconds = 0;
    qint64 bytes = 0;
};

/// Looks at the list as it was when take() was called, whatever the browser shows by now.
class FilmMaker : public QObject
{
    Q_OBJECT

public:
    /// What it takes; all of it outlives the object, and the scope is joined before it goes.
    struct Uses
    {
        const CameraTable &table;
        const StorageFolder &storage;
        const BrowserData &data;
        Slideshow &film;
        Clock &clock;
        TaskScope &scope;
    };

    explicit FilmMaker(const Uses &uses);

    /// The images that the browser lists now are those that it is about.
    void take();

    /// The whole list, or the range that the slideshow plays of it, as a wish has it.
    [[nodiscard]] FilmWish usualWish() const;

    /// The camera, for people.
    [[nodiscard]] const QString &camera() const { return camera_; }

    /// True while the browser, and with it the slideshow, is about the same camera.
    [[nodiscard]] bool isOfShownCamera() const;

    [[nodiscard]] bool hasImages() const { return names_->count() > 0; }

    [[nodiscard]] FilmForecast forecast(const FilmWish &wish) const;

    /// Native path of a picture of the film, from 0; empty behind the last.
    [[nodiscard]] QString picture(const FilmWish &wish, qsizetype at) const;

    /// The slideshow plays this range of the list from now on.
    void play(const FilmWish &wish);

    void makeFilm(const FilmWish &wish, const QString &target);
    void copyImages(const FilmWish &wish, const QString &folder);
    void cancel();

    [[nodiscard]] bool isBusy() const { return copying_ || film_.isRunning(); }

    /// How far it is, in images.
    [[nodiscard]] qint64 done() const;
    [[nodiscard]] qint64 all() const;

    /// Milliseconds that are about left; nothing while nobody knows.
    [[nodiscard]] std::optional<qint64> timeLeftMs() const;

    /// What was made last: native path of a film or of a folder; empty when it was not.
    [[nodiscard]] const QString &result() const { return result_; }

Q_SIGNALS:
    void advanced();

    /// text: how it ended, for people.
    void ended(const QString &text);

private:
    [[nodiscard]] FilmPicks picks(const FilmWish &wish) const;
    [[nodiscard]] QString momentAt(qsizetype position) const;
    [[nodiscard]] QString endText(FilmEnd end, const QString &text);
    QCoro::Task<> copy(CopyOrder order);
    [[nodiscard]] QString copyText() const;

    Uses uses_;
    FilmExport film_;
    RangeCopy copy_;
    std::stop_source stopCopy_;
    std::shared_ptr<const ImageNames> names_;
    QString folder_; // native path
    QString folderText_;
    QString camera_;
    QString target_;
    QString result_;
    std::chrono::milliseconds began_{};
    bool copying_ = false;
};

} // namespace velmora
