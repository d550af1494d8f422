#include "tools/FilmMaker.h"

#include "cameras/CameraChoices.h"

#include <QDateTime>
#include <QFile>

#include <algorithm>

namespace velmora {
namespace {

constexpr qsizetype kMomentLetters = 15;
constexpr qint64 kEnoughToTell = 20; // images, before the remaining time is more than a guess
constexpr QSize kUsualSize{640, 480};

} // namespace

FilmMaker::FilmMaker(const Uses &uses)
    : uses_(uses)
    , film_(uses.clock)
    , copy_(uses.clock)
    , names_(std::make_shared<const ImageNames>())
{
    connect(&film_, &FilmExport::advanced, this, &FilmMaker::advanced);
    connect(&copy_, &RangeCopy::advanced, this, &FilmMaker::advanced);
    connect(&film_, &FilmExport::ended, this,
            [this](FilmEnd end, const QString &text) { Q_EMIT ended(endText(end, text)); });
    connect(&uses_.data.files, &QAbstractItemModel::modelAboutToBeReset, this,
            [this] { names_ = names(); });
    connect(&uses_.data.files, &QAbstractItemModel::modelReset, this, [this] {
        if (isOfShownCamera()) {
            Q_EMIT imagesChanged();
        }
    });
}

std::shared_ptr<const ImageNames> FilmMaker::names() const
{
    return isOfShownCamera() ? uses_.data.files.shared() : names_;
}

void FilmMaker::take()
{
    names_ = uses_.data.files.shared();
    folderText_ = uses_.data.files.folder();
    folder_ = uses_.storage.native(folderText_);
    camera_ = cameraLabel(uses_.table.settings().snapshot(), uses_.data.files.camera());
    result_.clear();
}

bool FilmMaker::isOfShownCamera() const
{
    return uses_.data.files.folder() == folderText_;
}

// A paused film may extend beyond what is left of the list.
QString FilmMaker::momentAt(qsizetype position) const
{
    const std::shared_ptr<const ImageNames> names = this->names();
    if (names->count() == 0) {
        return {};
    }
    const qsizetype listed = std::clamp<qsizetype>(position, 0, names->count() - 1);
    const QString name = QFile::decodeName(names->name(listed).left(kMomentLetters));
    const QDateTime moment = QDateTime::fromString(name, QStringLiteral("yyyyMMdd_HHmmss"));
    return moment.isValid() ? moment.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) : QString();
}

FilmWish FilmMaker::usualWish() const
{
    FilmWish wish;
    const PlayRange range = uses_.film.isOpen() && isOfShownCamera()
                                ? uses_.film.face().range
                                : PlayRange{1, static_cast<int>(names()->count())};
    wish.from = momentAt(range.start - 1);
    wish.to = momentAt(range.end - 1);
    return wish;
}

FilmPicks FilmMaker::picks(const FilmWish &wish) const
{
    const auto span = filmSpan(wish.from, wish.to);
    if (!span) {
        return {};
    }
    FilmPicks picks = filmPicks(*names(), *span, wish.hours);
    if (wish.thinning == FilmThinning::Every) {
        picks.keepEvery(wish.thinningNumber);
    } else if (wish.thinning == FilmThinning::Seconds) {
        picks.keepAtMost(qsizetype{wish.thinningNumber} * wish.picturesPerSecond);
    }
    return picks;
}

FilmForecast FilmMaker::forecast(const FilmWish &wish) const
{
    FilmForecast forecast;
    forecast.isRangeGood = filmSpan(wish.from, wish.to).has_value();
    forecast.images = picks(wish).count();
    forecast.seconds = static_cast<double>(forecast.images) / wish.picturesPerSecond;
    const QSize size = filmSize(wish.size.isEmpty() ? kUsualSize : wish.size);
    forecast.bytes = filmBytes(wish.form, size, forecast.images);
    return forecast;
}

QString FilmMaker::picture(const FilmWish &wish, qsizetype at) const
{
    const FilmPicks picked = picks(wish);
    return at < picked.count()
               ? folder_ + u'/' + QFile::decodeName(names()->name(picked.position(at)))
               : QString();
}

void FilmMaker::play(const FilmWish &wish)
{
    const auto span = filmSpan(wish.from, wish.to);
    if (!uses_.film.isOpen() || !span || !isOfShownCamera()) {
        return;
    }
    const ImageNames &names = uses_.data.files.names();
    const auto first = static_cast<int>(names.countBefore(span->first)) + 1;
    const auto last = static_cast<int>(names.countBefore(span->behind));
    if (first <= last) {
        uses_.film.setRange({first, last});
    }
}

void FilmMaker::makeFilm(const FilmWish &wish, const QString &target)
{
    if (isBusy()) {
        return;
    }
    began_ = uses_.clock.monotonicNow();
    target_ = target;
    result_.clear();
    film_.start({folder_,
                 names(),
                 picks(wish),
                 {wish.picturesPerSecond, 1},
                 wish.size,
                 wish.isStamped,
                 camera_,
                 target});
}

QString FilmMaker::endText(FilmEnd end, const QString &text)
{
    if (end != FilmEnd::Made) {
        return end == FilmEnd::Cancelled ? tr("Cancelled; no film was made.") : text;
    }
    result_ = target_;
    const FilmTally &tally = film_.tally();
    return tally.leftOut() == 0
               ? tr("The film is ready: %1 images.").arg(tally.shown)
               : tr("The film is ready: %1 images, %2 left out (%3 not pictures, %4 deleted).")
                     .arg(tally.shown)
                     .arg(tally.leftOut())
                     .arg(tally.broken)
                     .arg(tally.gone);
}

void FilmMaker::copyImages(const FilmWish &wish, const QString &folder)
{
    if (isBusy()) {
        return;
    }
    began_ = uses_.clock.monotonicNow();
    target_ = folder;
    result_.clear();
    copying_ = true;
    stopCopy_ = std::stop_source();
    uses_.scope.launch(copy({folder_, names(), picks(wish), folder}));
}

QCoro::Task<> FilmMaker::copy(CopyOrder order)
{
    const std::stop_callback atEnd(uses_.scope.stopToken(), [this] { stopCopy_.request_stop(); });
    co_await copy_.run(std::move(order), stopCopy_.get_token());
    copying_ = false;
    result_ = copy_.tally().error ? QString() : target_;
    Q_EMIT ended(copyText());
}

QString FilmMaker::copyText() const
{
    const CopyTally &tally = copy_.tally();
    QString text = tr("%1 images copied").arg(tally.copied);
    if (tally.there > 0) {
        text += tr(", %1 were there").arg(tally.there);
    }
    if (tally.gone > 0) {
        text += tr(", %1 deleted meanwhile").arg(tally.gone);
    }
    if (tally.error) {
        text += tr("; then: %1").arg(QString::fromStdString(tally.error.message()));
    } else if (tally.done < tally.all) {
        text += tr("; cancelled");
    }
    return text + u'.';
}

void FilmMaker::cancel()
{
    stopCopy_.request_stop();
    film_.cancel();
}

qint64 FilmMaker::done() const
{
    return copying_ ? copy_.tally().done : film_.tally().done;
}

qint64 FilmMaker::all() const
{
    return copying_ ? copy_.tally().all : film_.tally().all;
}

std::optional<qint64> FilmMaker::timeLeftMs() const
{
    if (!isBusy() || done() < kEnoughToTell) {
        return std::nullopt;
    }
    const qint64 passed = (uses_.clock.monotonicNow() - began_).count();
    return passed * (all() - done()) / done();
}

} // namespace velmora
