#include "tools/FilmExport.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTimer>

#include <algorithm>
#include <array>
#include <csignal>
#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>
#include <utility>

namespace velmora {
namespace {

constexpr qint64 kAheadBytes = qint64{2} << 20; // of pictures read before ffmpeg has taken them
constexpr int kPipeBytes = 1 << 20;
constexpr qsizetype kMostErrorBytes = 4096;

// How ffmpeg's complaints about the file begin; the system's reason is behind the last colon.
constexpr std::array kWritingFaults{"Could not write header", "av_interleaved_write_frame",
                                    "Error writing trailer", "Error closing file"};

// Runs in the child that is about to become ffmpeg: it dies with us, however we end, leaves a
// terminal's interrupt to us, and inherits the file that has no name.
void prepareChild(int descriptor)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    ::setsid();
    ::fcntl(STDIN_FILENO, F_SETPIPE_SZ, kPipeBytes);
    if (descriptor >= 0) {
        ::fcntl(descriptor, F_SETFD, 0);
    }
}

QString reason(const std::error_code &error)
{
    return QString::fromStdString(error.message());
}

} // namespace

FilmExport::FilmExport(const Clock &clock)
    : clock_(clock)
    , slice_(clock)
{
}

FilmExport::~FilmExport()
{
    if (process_) {
        process_->disconnect(this);
        process_->kill();
        process_->waitForFinished();
    }
}

void FilmExport::start(FilmOrder order)
{
    if (isRunning()) {
        return;
    }
    order_ = std::move(order);
    tally_ = {};
    tally_.all = order_.picks.count();
    errors_.clear();
    step_ = Step::Asking;
    QMetaObject::invokeMethod(this, &FilmExport::begin, Qt::QueuedConnection);
}

void FilmExport::begin()
{
    if (step_ != Step::Asking) {
        return;
    }
    const auto form = filmForm(order_.target);
    program_ = QStandardPaths::findExecutable(QStringLiteral("ffmpeg"));
    if (!form) {
        fail(tr("The file name must end in .mp4, .webm, .webp or .gif."));
    } else if (tally_.all == 0) {
        fail(tr("There are no images in this range."));
    } else if (program_.isEmpty()) {
        fail(tr("ffmpeg is not installed; films are made with it."));
    } else {
        form_ = *form;
        ask();
    }
}

void FilmExport::ask()
{
    file_ = std::make_unique<HiddenFile>(QFileInfo(order_.target).path());
    if (file_->error()) {
        fail(tr("%1 cannot be written: %2").arg(order_.target, reason(file_->error())));
        return;
    }
    process_ = std::make_unique<QProcess>();
    process_->setChildProcessModifier([] { prepareChild(-1); });
    process_->setStandardInputFile(QProcess::nullDevice());
    connect(process_.get(), &QProcess::finished, this, &FilmExport::takeAnswer);
    connect(process_.get(), &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            fail(tr("ffmpeg cannot be started."));
        }
    });
    process_->start(program_, {QStringLiteral("-hide_banner"), QStringLiteral("-encoders")});
}

void FilmExport::takeAnswer()
{
    if (step_ != Step::Asking) {
        leave();
        return;
    }
    encoder_ = filmEncoder(form_, process_->readAllStandardOutput());
    if (encoder_.isEmpty()) {
        fail(tr("This ffmpeg cannot write %1; choose another form.").arg(filmFormText(form_)));
        return;
    }
    process_.release()->deleteLater();
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
    const auto hasRoom = [this] { return !process_ || process_->bytesToWrite() < kAheadBytes; };
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
    if (next.state == FilmPictureState::Good && !process_) {
        if (!startEncoder(order_.size.isEmpty() ? next.size : order_.size)) {
            return;
        }
        next = picture(name); // now that the film's size is known
    }
    tally_.gone += next.state == FilmPictureState::Gone ? 1 : 0;
    tally_.broken += next.state == FilmPictureState::Broken ? 1 : 0;
    if (next.state == FilmPictureState::Good) {
        ++tally_.shown;
        process_->write(next.jpeg);
    }
}

FilmPicture FilmExport::picture(const QString &name) const
{
    const QString path = order_.folder + u'/' + name;
    return order_.isStamped && process_
               ? stampedPicture(path, tally_.size, filmStamp(name, order_.camera))
               : filmPicture(path);
}

bool FilmExport::startEncoder(QSize size)
{
    tally_.size = filmSize(size);
    process_ = std::make_unique<QProcess>();
    process_->setStandardOutputFile(QProcess::nullDevice());
    process_->setChildProcessModifier([file = file_->descriptor()] { prepareChild(file); });
    connect(process_.get(), &QProcess::bytesWritten, this, [this] {
        if (!isQueued_) {
            feed();
        }
    });
    connect(process_.get(), &QProcess::readyReadStandardError, this, [this] {
        errors_ = (errors_ + process_->readAllStandardError()).right(kMostErrorBytes);
    });
    connect(process_.get(), &QProcess::finished, this, &FilmExport::follow);
    process_->start(program_, ffmpegArguments(form_, encoder_, order_.rate, tally_.size,
                                              QFile::decodeName(file_->pathForHeir())));
    if (!process_->waitForStarted()) {
        process_.reset();
        fail(tr("ffmpeg cannot be started."));
        return false;
    }
    return true;
}

void FilmExport::closeInput()
{
    if (!process_) {
        fail(tr("There is no picture in this range that could be read (%1 left out).")
                 .arg(tally_.leftOut()));
        return;
    }
    step_ = Step::Finishing;
    process_->closeWriteChannel();
}

void FilmExport::follow(int exitCode, QProcess::ExitStatus status)
{
    if (step_ == Step::Ending) {
        leave();
        return;
    }
    const QString writing = writingComplaint();
    if (status == QProcess::CrashExit) {
        fail(tr("ffmpeg was ended before the film was whole."));
    } else if (!writing.isEmpty()) {
        fail(tr("%1 cannot be written: %2").arg(order_.target, writing));
    } else if (exitCode != 0 || step_ != Step::Finishing || file_->bytes() == 0) {
        fail(tr("ffmpeg failed: %1").arg(complaint()));
    } else if (const std::error_code error = file_->finish(QFile::encodeName(order_.target))) {
        fail(tr("%1 cannot be written: %2").arg(order_.target, reason(error)));
    } else {
        tally_.bytes = QFileInfo(order_.target).size();
        stop(FilmEnd::Made, {});
    }
}

// ffmpeg may end as if all were well when the disk had no room for the last piece.
QString FilmExport::writingComplaint()
{
    errors_ += process_->readAllStandardError();
    for (const QByteArray &line : errors_.split('\n')) {
        const auto begins = [&line](const char *fault) { return line.startsWith(fault); };
        if (std::ranges::any_of(kWritingFaults, begins)) {
            return QString::fromLocal8Bit(line.sliced(line.lastIndexOf(": ") + 1)).trimmed();
        }
    }
    return {};
}

QString FilmExport::complaint()
{
    const QList<QByteArray> lines = errors_.trimmed().split('\n');
    const QString last = QString::fromLocal8Bit(lines.last()).trimmed();
    return last.isEmpty() ? tr("it does not say why") : last;
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
    if (process_ && process_->state() != QProcess::NotRunning) {
        process_->kill();
    } else {
        leave();
    }
}

void FilmExport::leave()
{
    if (process_) {
        process_->disconnect(this);
        process_.release()->deleteLater();
    }
    file_.reset();
    order_.names.reset();
    step_ = Step::Idle;
    Q_EMIT ended(end_, text_);
}

} // namespace velmora
