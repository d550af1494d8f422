#include "tools/FilmMaker.h"

#include "base/DateText.h"
#include "base/FilePath.h"
#include "base/Folders.h"
#include "base/ImagesText.h"
#include "base/LinkedStop.h"
#include "base/NameStamp.h"
#include "cameras/CameraChoices.h"

#include <QFile>
#include <QImageReader>

#include <algorithm>

namespace velmora {
namespace {

constexpr qint64 kEnoughToTell = 20; // images, before the remaining time is more than a guess
constexpr QSize kUsualSize{640, 480};
constexpr int kMostLooked = 1000; // names without a date

// "2006-03-07 14:05:09", as a user would type it.
QString typedMoment(WallTime moment)
{
    return isoDayText(moment) + u' ' + timeText(moment);
}

} // namespace

FilmMaker::FilmMaker(const Uses &uses)
    : uses_(uses)
    , film_(uses.clock)
    , copy_(uses.clock)
    , names_(std::make_shared<const ImageNames>())
{
    connect(&film_, &FilmExport::advanced, this, &FilmMaker::advanced);
    connect(&copy_, &RangeCopy::advanced, this, &FilmMaker::advanced);
    connect(&film_, &FilmExport::ended, this, &FilmMaker::end);
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
}

bool FilmMaker::isOfShownCamera() const
{
    return uses_.data.files.folder() == folderText_;
}

// A paused film may extend beyond what is left of the list. Beside the images there may be files
// that are named like one, but without a date: then it is that of the next in the direction of the
// step.
QString FilmMaker::momentAt(qsizetype position, int step) const
{
    const std::shared_ptr<const ImageNames> names = this->names();
    qsizetype at = std::clamp<qsizetype>(position, 0, names->count() - 1);
    for (int looked = 0; looked < kMostLooked && at >= 0 && at < names->count(); ++looked) {
        if (const auto moment = momentOfName(names->name(at))) {
            return typedMoment(*moment);
        }
        at += step;
    }
    return {};
}

FilmWish FilmMaker::usualWish() const
{
    FilmWish wish;
    if (!hasImages()) {
        return wish;
    }
    const PlayRange range = uses_.film.isOfList() && isOfShownCamera()
                                ? uses_.film.face().range
                                : PlayRange{1, static_cast<int>(names()->count())};
    wish.from = momentAt(range.start - 1, 1);
    wish.to = momentAt(range.end - 1, -1);
    return wish;
}

const FilmMaker::Plan &FilmMaker::plan(const FilmWish &wish) const
{
    const std::shared_ptr<const ImageNames> names = this->names();
    if (lastPlan_.names != names || lastPlan_.wish != wish) {
        lastPlan_ = {names, wish, newPlan(*names, wish)};
    }
    return lastPlan_.plan;
}

FilmMaker::Plan FilmMaker::newPlan(const ImageNames &names, const FilmWish &wish)
{
    Plan plan{{}, {wish.picturesPerSecond, 1}};
    const auto span = filmSpan(wish.from, wish.to);
    if (!span) {
        return plan;
    }
    plan.picks = filmPicks(names, *span, wish.hours);
    if (wish.thinning == FilmThinning::Every) {
        plan.picks.keepEvery(wish.thinningNumber);
    } else if (wish.thinning == FilmThinning::Seconds) {
        plan.rate = fillSeconds(plan.picks, wish.thinningNumber, plan.rate, false);
    }
    return plan;
}

FilmForecast FilmMaker::forecast(const FilmWish &wish) const
{
    const Plan &plan = this->plan(wish);
    FilmForecast forecast;
    forecast.isRangeGood = filmSpan(wish.from, wish.to).has_value();
    forecast.images = plan.picks.count();
    forecast.seconds = static_cast<double>(forecast.images) / plan.rate.perSecond();
    const QSize size = filmSize(wish.size.isEmpty() ? sizeOfFirst(plan) : wish.size);
    forecast.bytes = filmBytes(wish.form, size, forecast.images);
    return forecast;
}

// From its header alone.
QSize FilmMaker::sizeOfFirst(const Plan &plan) const
{
    const QString path = pathOf(plan, 0);
    const QSize size = path.isEmpty() ? QSize() : QImageReader(path).size();
    return size.isEmpty() ? kUsualSize : size;
}

QString FilmMaker::pathOf(const Plan &plan, qsizetype at) const
{
    return at < plan.picks.count()
               ? filePath(folder_, QFile::decodeName(names()->name(plan.picks.position(at))))
               : QString();
}

QString FilmMaker::picture(const FilmWish &wish, qsizetype at) const
{
    return pathOf(plan(wish), at);
}

void FilmMaker::play(const FilmWish &wish)
{
    const auto span = filmSpan(wish.from, wish.to);
    if (!uses_.film.isOfList() || !span || !isOfShownCamera()) {
        return;
    }
    const ImageNames &names = uses_.data.files.names();
    const auto first = static_cast<int>(names.countBefore(span->first)) + 1;
    const auto last = static_cast<int>(names.countBefore(span->behind));
    if (first <= last) {
        uses_.film.setRange({first, last});
    }
}

// A disk that is away has lost no images, nor have those been deleted that get other names: false
// then, and the end has been reported.
bool FilmMaker::begin(const QString &target)
{
    result_.clear();
    if (!folderExists(folder_)) {
        Q_EMIT ended(missingFolderText(folderText_));
        return false;
    }
    if (uses_.conformity.isRunning()) {
        Q_EMIT ended(renamingText());
        return false;
    }
    inUse_.emplace(uses_.conformity);
    began_ = uses_.clock.monotonicNow();
    target_ = target;
    return true;
}

void FilmMaker::makeFilm(const FilmWish &wish, const QString &target)
{
    if (isBusy() || !begin(target)) {
        return;
    }
    const Plan &plan = this->plan(wish);
    film_.start(
        {folder_, names(), plan.picks, plan.rate, wish.size, wish.isStamped, camera_, target});
}

void FilmMaker::end(FilmEnd end, const QString &text)
{
    inUse_.reset();
    if (end == FilmEnd::Made) {
        result_ = target_;
    }
    Q_EMIT ended(endText(end, text));
}

QString FilmMaker::endText(FilmEnd end, const QString &text) const
{
    if (end != FilmEnd::Made) {
        return end == FilmEnd::Cancelled ? tr("Cancelled; no film was made.") : text;
    }
    const FilmTally &tally = film_.tally();
    return tally.leftOut() == 0
               ? tr("The film is ready: %1.").arg(imagesText(tally.shown))
               : tr("The film is ready: %1, %2 left out (%3 not pictures, %4 deleted).")
                     .arg(imagesText(tally.shown))
                     .arg(tally.leftOut())
                     .arg(tally.broken)
                     .arg(tally.gone);
}

void FilmMaker::copyImages(const FilmWish &wish, const QString &folder)
{
    if (isBusy() || !begin(folder)) {
        return;
    }
    copying_ = true;
    stopCopy_ = std::stop_source();
    uses_.scope.launch(copy({folder_, names(), plan(wish).picks, folder}));
}

QCoro::Task<> FilmMaker::copy(CopyOrder order)
{
    const LinkedStop atEnd(uses_.scope.stopToken(), stopCopy_);
    co_await copy_.run(std::move(order), stopCopy_.get_token());
    copying_ = false;
    inUse_.reset();
    const CopyTally &tally = copy_.tally();
    const bool hasCopies = !tally.error && !tally.readError && tally.copied + tally.there > 0;
    result_ = hasCopies ? target_ : QString();
    Q_EMIT ended(copyText());
}

QString FilmMaker::copyText() const
{
    const CopyTally &tally = copy_.tally();
    QString text = tr("%1 copied").arg(imagesText(tally.copied));
    if (tally.there > 0) {
        text += tr(", %1 were there").arg(tally.there);
    }
    if (tally.gone > 0) {
        text += tr(", %1 deleted meanwhile").arg(tally.gone);
    }
    if (tally.isRenaming) {
        return text + QStringLiteral(". ") + renamingText();
    }
    if (tally.error) {
        text += tr("; then: %1").arg(QString::fromStdString(tally.error.message()));
    } else if (tally.done < tally.all) {
        text += tr("; cancelled");
    } else if (tally.readError) {
        text += tr("; there may be more: %1").arg(unreadFolderText(tally.readError));
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
