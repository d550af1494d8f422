#include "tools/FilmExport.h"

#include "base/FilePath.h"
#include "base/Folders.h"
#include "capture/Conformity.h"

#include <QFile>
#include <QFileInfo>
#include <QTimer>

#include <algorithm>
#include <array>
#include <unistd.h>
#include <utility>

namespace velmora {
namespace {

constexpr qint64 kAheadBytes = qint64{2} << 20; // of pictures read before ffmpeg has taken them

// For a film in 4K, H.264 takes 2 GB with the threads of two cores and 3.5 GB with 16 threads; VP9
// takes half of that.
constexpr qint64 kEnoughFor4K = qint64{4} << 30;

// How ffmpeg's complaints about the file begin; the system's reason is behind the last colon.
constexpr std::array kWritingFaults{"Could not write header", "av_interleaved_write_frame",
                                    "Error writing trailer", "Error closing file"};

// Of ffmpeg. Larger films may take more where there is more; a quarter of the machine's memory is
// left to other programs, and to the capture.
qint64 mostMemory()
{
    const qint64 all = qint64{::sysconf(_SC_PHYS_PAGES)} * ::sysconf(_SC_PAGESIZE);
    return std::max(kEnoughFor4K, all / 4 * 3);
}

QString reason(const std::error_code &error)
{
    return QString::fromStdString(error.message());
}

} // namespace

QString missingFolderText(const QString &folder)
{
    return FilmExport::tr("The folder of the images is not there: %1").arg(folder);
}

QString renamingText()
{
    return FilmExport::tr("The images are being renamed. Begin again when that is done.");
}

FilmExport::FilmExport(const Clock &clock)
    : clock_(clock)
    , slice_(clock)
{
}

void FilmExport::start(FilmOrder order)
{
    if (isRunning()) {
        return;
    }
    order_ = std::move(order);
    tally_ = {};
    tally_.all = order_.picks.count();
    step_ = Step::Asking;
    QMetaObject::invokeMethod(this, &FilmExport::begin, Qt::QueuedConnection);
}

void FilmExport::begin()
{
    if (step_ != Step::Asking) {
        return;
    }
    const auto form = filmForm(order_.target);
    if (!form) {
        fail(tr("The file name must end in %1.").arg(filmExtensions()));
    } else if (order_.names->readError()) {
        fail(tr("No film was made: %1").arg(unreadFolderText(order_.names->readError())));
    } else if (tally_.all == 0) {
        fail(tr("There are no images in this range."));
    } else {
        form_ = *form;
        ask();
    }
}

void FilmExport::ask()
{
    file_ = std::make_unique<HiddenFile>(order_.target);
    if (file_->error()) {
        fail(tr("%1 cannot be written: %2").arg(order_.target, reason(file_->error())));
        return;
    }
    makeFfmpeg();
    ffmpeg_->setStandardInputFile(QProcess::nullDevice());
    ffmpeg_->begin({QStringLiteral("-hide_banner"), QStringLiteral("-encoders")});
}

void FilmExport::makeFfmpeg()
{
    ffmpeg_ = std::make_unique<Ffmpeg>(mostMemory(), file_->descriptor());
    connect(ffmpeg_.get(), &Ffmpeg::ended, this, &FilmExport::follow);
}

void FilmExport::follow(FfmpegEnd end)
{
    if (step_ == Step::Ending) {
        leave();
    } else if (end == FfmpegEnd::NotInstalled) {
        fail(tr("ffmpeg is not installed; films are made with it."));
    } else if (end == FfmpegEnd::NotStarted) {
        fail(tr("ffmpeg cannot be started."));
    } else if (step_ == Step::Asking) {
        takeAnswer();
    } else {
        takeFilm(end);
    }
}

void FilmExport::takeAnswer()
{
    encoder_ = filmEncoder(form_, ffmpeg_->readAllStandardOutput());
    if (encoder_.isEmpty()) {
        fail(tr("This ffmpeg cannot write %1; choose another form.").arg(filmFormText(form_)));
        return;
    }
    ffmpeg_.release()->deleteLater();
    step_ = Step::Feeding;
    feed();
}

// As fast as ffmpeg takes them: a picture is read when there is room for it.
void FilmExport::feed()
{
    isQueued_ = false;
    if (step_ != Step::Feeding) {
        return;
    }
    slice_.begin();
    const auto hasRoom = [this] { return !ffmpeg_ || ffmpeg_->bytesToWrite() < kAheadBytes; };
    while (step_ == Step::Feeding && tally_.done < tally_.all && hasRoom() && !slice_.isOver()) {
        takeNext();
    }
    if (step_ != Step::Feeding) {
        return;
    }
    tally_.bytes = file_->bytes();
    Q_EMIT advanced();
    if (tally_.done == tally_.all) {
        closeInput();
    } else if (hasRoom()) {
        isQueued_ = true;
        QTimer::singleShot(0, this, &FilmExport::feed);
    }
}

void FilmExport::takeNext()
{
    const qsizetype position = order_.picks.position(tally_.done);
    const QString name = QFile::decodeName(order_.names->name(position));
    ++tally_.done;
    FilmPicture next = picture(name);
    if (next.state == FilmPictureState::Good && !ffmpeg_) {
        startEncoder(order_.size.isEmpty() ? next.size : order_.size);
        next = picture(name); // now that the film's size is known
    }
    if (next.state == FilmPictureState::Gone && !folderExists(order_.folder)) {
        fail(missingFolderText(order_.folder));
        return;
    }
    if (next.state == FilmPictureState::Gone &&
        Conformity::isRenamed(order_.folder, QFile::encodeName(name))) {
        fail(renamingText()); // by another program: those of this one wait
        return;
    }
    tally_.gone += next.state == FilmPictureState::Gone ? 1 : 0;
    tally_.broken += next.state == FilmPictureState::Broken ? 1 : 0;
    if (next.state == FilmPictureState::Good) {
        ++tally_.shown;
        ffmpeg_->write(next.jpeg);
    }
}

FilmPicture FilmExport::picture(const QString &name) const
{
    const QString path = filePath(order_.folder, name);
    return order_.isStamped && ffmpeg_
               ? stampedPicture(path, tally_.size, filmStamp(name, order_.camera))
               : filmPicture(path);
}

void FilmExport::startEncoder(QSize size)
{
    tally_.size = filmSize(size);
    makeFfmpeg();
    ffmpeg_->setStandardOutputFile(QProcess::nullDevice());
    connect(ffmpeg_.get(), &QProcess::bytesWritten, this, [this] {
        if (!isQueued_) {
            feed();
        }
    });
    ffmpeg_->begin(ffmpegArguments(form_, encoder_, order_.rate, tally_.size,
                                   QFile::decodeName(file_->pathForHeir())));
}

void FilmExport::closeInput()
{
    if (!ffmpeg_) {
        fail(tr("There is no picture in this range that could be read (%1 left out).")
                 .arg(tally_.leftOut()));
        return;
    }
    step_ = Step::Finishing;
    ffmpeg_->closeWriteChannel();
}

void FilmExport::takeFilm(FfmpegEnd end)
{
    const QString writing = writingComplaint();
    const QString said = ffmpeg_->lastLine();
    if (end == FfmpegEnd::Killed) {
        fail(tr("ffmpeg was ended before the film was whole."));
    } else if (!writing.isEmpty()) {
        fail(tr("%1 cannot be written: %2").arg(order_.target, writing));
    } else if (end != FfmpegEnd::Good || step_ != Step::Finishing || file_->bytes() == 0) {
        fail(tr("ffmpeg failed: %1").arg(said.isEmpty() ? tr("it does not say why") : said));
    } else if (const std::error_code error = file_->finish()) {
        fail(tr("%1 cannot be written: %2").arg(order_.target, reason(error)));
    } else {
        tally_.bytes = QFileInfo(order_.target).size();
        stop(FilmEnd::Made, {});
    }
}

// ffmpeg may end as if all were well when the disk had no room for the last piece.
QString FilmExport::writingComplaint() const
{
    for (const QByteArray &line : ffmpeg_->complaints().split('\n')) {
        const auto begins = [&line](const char *fault) { return line.startsWith(fault); };
        if (std::ranges::any_of(kWritingFaults, begins)) {
            return QString::fromLocal8Bit(line.sliced(line.lastIndexOf(": ") + 1)).trimmed();
        }
    }
    return {};
}

void FilmExport::cancel()
{
    if (isRunning() && step_ != Step::Ending) {
        stop(FilmEnd::Cancelled, {});
    }
}

void FilmExport::fail(const QString &text)
{
    stop(FilmEnd::Failed, text);
}

// Waits for whatever is still running, so that nothing writes any more when the end is reported.
void FilmExport::stop(FilmEnd end, const QString &text)
{
    end_ = end;
    text_ = text;
    step_ = Step::Ending;
    if (ffmpeg_ && ffmpeg_->state() != QProcess::NotRunning) {
        ffmpeg_->killAll();
    } else {
        leave();
    }
}

void FilmExport::leave()
{
    if (ffmpeg_) {
        ffmpeg_->disconnect(this);
        ffmpeg_.release()->deleteLater();
    }
    file_.reset();
    order_.names.reset();
    step_ = Step::Idle;
    Q_EMIT ended(end_, text_);
}

} // namespace velmora
