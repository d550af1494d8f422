// Makes films and copies of a range of the images that the browser lists, as a window requests.
#pragma once

#include "base/Clock.h"
#include "base/TaskScope.h"
#include "browser/BrowserData.h"
#include "cameras/StorageFolder.h"
#include "capture/Conformity.h"
#include "tools/FilmExport.h"
#include "tools/RangeCopy.h"
#include "tools/Slideshow.h"

#include <QObject>

namespace velmora {

enum class FilmThinning {
    None,
    Every,  // every n-th image
    Seconds // as many as make the film last so long; too few are shown longer each
};

/// What the window's controls are set to.
struct FilmWish
{
    QString from; // as filmSpan() reads it
    QString to;
    FilmHours hours;
    FilmThinning thinning = FilmThinning::None;
    int thinningNumber = 1;
    QSize size; // empty: the size of the first picture
    int picturesPerSecond = 25;
    bool isStamped = false;
    FilmForm form = FilmForm::Mp4;

    bool operator==(const FilmWish &) const = default;
};

struct FilmForecast
{
    bool isRangeGood = false;
    qsizetype images = 0;
    double seconds = 0;
    qint64 bytes = 0;
};

/// Works on the images of the camera that was on show when take() was called: those that the
/// browser lists, or last listed if it shows another camera now.
class FilmMaker : public QObject
{
    Q_OBJECT

public:
    /// What it uses; all of it outlives the object, and the scope is joined before it is destroyed.
    struct Uses
    {
        const CameraTable &table;
        const StorageFolder &storage;
        const BrowserData &data;
        Slideshow &film;
        Conformity &conformity;
        Clock &clock;
        TaskScope &scope;
    };

    explicit FilmMaker(const Uses &uses);

    /// From now on works on the camera whose images the browser lists now.
    void take();

    /// The whole list as a wish, or the range of it that the slideshow plays.
    [[nodiscard]] FilmWish usualWish() const;

    /// The camera, as shown to the user.
    [[nodiscard]] const QString &camera() const { return camera_; }

    /// True while the browser, and with it the slideshow, shows the same camera.
    [[nodiscard]] bool isOfShownCamera() const;

    [[nodiscard]] bool hasImages() const { return names()->count() > 0; }

    /// How many images the film will have, and about how large it will be.
    [[nodiscard]] FilmForecast forecast(const FilmWish &wish) const;

    /// Native path of a picture of the film, from 0; empty past the last.
    [[nodiscard]] QString picture(const FilmWish &wish, qsizetype at) const;

    /// Makes the slideshow play this range of the list from now on; a paused one stays paused.
    void play(const FilmWish &wish);

    /// Make a film of the images wished for, or copy them, while events are handled. Native paths.
    void makeFilm(const FilmWish &wish, const QString &target);
    void copyImages(const FilmWish &wish, const QString &folder);

    /// Ends either; images already copied remain.
    void cancel();

    [[nodiscard]] bool isBusy() const { return copying_ || film_.isRunning(); }

    /// Progress, in images.
    [[nodiscard]] qint64 done() const;
    [[nodiscard]] qint64 all() const;

    /// Estimated milliseconds left; nothing while that cannot be estimated.
    [[nodiscard]] std::optional<qint64> timeLeftMs() const;

    /// The last result: native path of a film or of a folder; empty if there is none.
    [[nodiscard]] const QString &result() const { return result_; }

    void forgetResult() { result_.clear(); }

Q_SIGNALS:
    /// Images of the camera have come or gone.
    void imagesChanged();

    void advanced();

    /// text: how it ended, for the user.
    void ended(const QString &text);

private:
    [[nodiscard]] std::shared_ptr<const ImageNames> names() const;

    /// What a film shows, and how fast.
    struct Plan
    {
        FilmPicks picks;
        FilmRate rate;
    };

    /// Of the last wish: the images of some hours of many days are not picked out again for each
    /// picture of a preview.
    struct LastPlan
    {
        std::shared_ptr<const ImageNames> names;
        FilmWish wish;
        Plan plan;
    };

    [[nodiscard]] static Plan newPlan(const ImageNames &names, const FilmWish &wish);
    [[nodiscard]] const Plan &plan(const FilmWish &wish) const;
    [[nodiscard]] QSize sizeOfFirst(const Plan &plan) const;
    [[nodiscard]] QString pathOf(const Plan &plan, qsizetype at) const;
    [[nodiscard]] QString momentAt(qsizetype position, int step) const;
    [[nodiscard]] bool begin(const QString &target);
    void end(FilmEnd end, const QString &text);
    [[nodiscard]] QString endText(FilmEnd end, const QString &text) const;
    QCoro::Task<> copy(CopyOrder order);
    [[nodiscard]] QString copyText() const;

    Uses uses_;
    FilmExport film_;
    RangeCopy copy_;
    std::stop_source stopCopy_;
    std::shared_ptr<const ImageNames> names_; // as last listed, once another camera is on show
    mutable LastPlan lastPlan_;               // without names before the first
    QString folder_;                          // native path
    QString folderText_;
    QString camera_;
    QString target_;
    QString result_;
    std::optional<NamesInUse> inUse_; // while busy
    std::chrono::milliseconds began_{};
    bool copying_ = false;
};

} // namespace velmora
