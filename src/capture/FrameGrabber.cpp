#include "capture/FrameGrabber.h"

#include "base/OneLine.h"
#include "base/OneShot.h"
#include "cameras/Credentials.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QTimer>

#include <algorithm>
#include <csignal>
#include <deque>
#include <new>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

namespace velmora {
namespace {

constexpr qint64 kMostBody = qint64{64} * 1024 * 1024;
constexpr qsizetype kMostError = 4096; // of the end of ffmpeg's output
constexpr QByteArrayView kJpegBegin("\xFF\xD8\xFF");
constexpr int kReapMs = 1000;                   // for a killed process to end
constexpr rlim_t kMostMemory = rlim_t{1} << 30; // of ffmpeg; a frame of 8K takes 50 MB

enum class GrabEnd { Finished, TimeOut, Stopped, TooLong, NotStarted };

// Allows everything that a stream may lead to, and nothing that reads files of this machine.
QStringList arguments()
{
    return QStringLiteral(
               "-hide_banner -loglevel error -threads 1 -f concat -safe 0 -protocol_whitelist "
               "pipe,fd,rtsp,rtsps,rtp,srtp,tcp,udp,tls,crypto -i pipe:0 -map 0:v:0 "
               "-frames:v 1 -f image2pipe -c:v mjpeg -q:v 2 pipe:1")
        .split(u' ');
}

// ffmpeg's own syntax for a list of inputs; a quote within quotes interrupts them.
QByteArray inputList(QByteArray url)
{
    url.replace("'", "'\\''");
    return "ffconcat version 1.0\nfile '" + url + "'\noption rtsp_flags prefer_tcp\n";
}

QByteArray withLogin(const HttpRequest &request)
{
    if (request.user.isEmpty()) {
        return request.url;
    }
    const qsizetype host = request.url.indexOf("://") + 3;
    const qsizetype end = request.url.indexOf('/', host);
    const qsizetype at = request.url.lastIndexOf('@', end < 0 ? -1 : end);
    return request.url.first(host) + request.user.toUtf8().toPercentEncoding() + ':' +
           request.password.toUtf8().toPercentEncoding() + '@' +
           request.url.sliced(at < host ? host : at + 1);
}

// Makes its children die with it, and it with this program. How large the pictures of a stream are
// is for its server to say, so the memory is bounded. Runs in the new process.
void becomeGroup()
{
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    const rlimit memory{kMostMemory, kMostMemory};
    ::setrlimit(RLIMIT_DATA, &memory);
}

QString lastLine(const QByteArray &text)
{
    const QList<QByteArray> lines = text.trimmed().split('\n');
    return onOneLine(withoutCredentials(QString::fromUtf8(lines.last().trimmed())));
}

} // namespace

/// Room for as many processes as there are cores; others queue.
class FrameGrabber::Places
{
public:
    QCoro::Task<bool> enter(std::stop_token stop)
    {
        if (running_ < most()) {
            ++running_;
            co_return true;
        }
        OneShot<bool> turn;
        waiting_.push_back(&turn);
        const std::stop_callback onStop(std::move(stop), [this, &turn] {
            if (std::erase(waiting_, &turn) > 0) {
                turn.set(false);
            }
        });
        const bool mine = co_await turn;
        co_return mine;
    }

    // The place passes to the next in the queue.
    void leave()
    {
        if (waiting_.empty()) {
            --running_;
            return;
        }
        OneShot<bool> *const next = waiting_.front();
        waiting_.pop_front();
        next->set(true);
    }

private:
    static int most() { return std::max(1, static_cast<int>(std::thread::hardware_concurrency())); }

    std::deque<OneShot<bool> *> waiting_;
    int running_ = 0;
};

/// One run of ffmpeg.
class FrameGrabber::Grab : public QObject
{
public:
    Grab(const HttpRequest &request, std::shared_ptr<BodyStock> bodies)
        : limit_(request.limit)
        , input_(inputList(withLogin(request)))
        , body_(emptyBody(request, std::move(bodies)))
    {
        connect(&process_, &QProcess::readyReadStandardOutput, this, [this] { takeBody(); });
        connect(&process_, &QProcess::readyReadStandardError, this, [this] { takeError(); });
        connect(&process_, &QProcess::finished, this, [this] { end_.set(GrabEnd::Finished); });
        connect(&process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart) {
                end_.set(GrabEnd::NotStarted);
            }
        });
        timer_.setSingleShot(true);
        connect(&timer_, &QTimer::timeout, this, [this] { end_.set(GrabEnd::TimeOut); });
    }

    Q_DISABLE_COPY_MOVE(Grab)

    ~Grab() override { kill(); }

    void start(const QString &program)
    {
        process_.setChildProcessModifier(&becomeGroup);
        process_.start(program, arguments());
        group_ = static_cast<pid_t>(process_.processId());
        process_.write(input_);
        process_.closeWriteChannel();
        timer_.start(limit_);
        elapsed_.start();
    }

    OneShot<GrabEnd> &end() { return end_; }

    // Kills its children too, whether or not it has ended itself, so that nothing of it is left.
    void kill()
    {
        timer_.stop();
        if (group_ > 0) {
            ::kill(-group_, SIGKILL);
            group_ = 0;
        }
        if (process_.state() != QProcess::NotRunning) {
            process_.kill();
            process_.waitForFinished(kReapMs);
        }
    }

    HttpReply reply(GrabEnd end)
    {
        HttpReply reply;
        reply.duration = std::chrono::milliseconds{elapsed_.elapsed()};
        if (end == GrabEnd::Stopped) {
            reply.outcome = FetchOutcome::Stopped;
            return reply;
        }
        const bool good = end == GrabEnd::Finished &&
                          process_.exitStatus() == QProcess::NormalExit &&
                          process_.exitCode() == 0 && !body_.isEmpty();
        if (good && !body_.head().startsWith(kJpegBegin)) {
            reply.failure = QStringLiteral("what ffmpeg gave is no JPEG picture");
        } else if (good) {
            reply.outcome = FetchOutcome::Arrived;
            reply.contentType = QStringLiteral("image/jpeg");
            reply.body = std::move(body_);
        } else {
            reply.failure = failure(end);
        }
        return reply;
    }

private:
    // An exception must not pass through the event loop.
    void takeBody()
    {
        try {
            const QByteArray bytes = process_.readAllStandardOutput();
            if (body_.size() + bytes.size() > kMostBody) {
                end_.set(GrabEnd::TooLong);
            } else {
                body_.append(bytes);
            }
        } catch (const std::bad_alloc &) {
            end_.set(GrabEnd::TooLong);
        }
    }

    void takeError()
    {
        try {
            errors_ = (errors_ + process_.readAllStandardError()).right(kMostError);
        } catch (const std::bad_alloc &) {
            errors_.clear();
        }
    }

    [[nodiscard]] QString failure(GrabEnd end) const
    {
        switch (end) {
        case GrabEnd::TimeOut:
            return QStringLiteral("the stream gave no picture in time");
        case GrabEnd::TooLong:
            return QStringLiteral("the stream sends more than a picture can have");
        case GrabEnd::NotStarted:
            return QStringLiteral("ffmpeg cannot be started");
        case GrabEnd::Finished:
        case GrabEnd::Stopped:
            break;
        }
        if (process_.exitStatus() == QProcess::CrashExit) {
            return QStringLiteral("ffmpeg was ended by a signal");
        }
        const QString said = lastLine(errors_);
        return said.isEmpty() ? QStringLiteral("the stream gave no picture") : said;
    }

    QProcess process_;
    QTimer timer_;
    QElapsedTimer elapsed_;
    OneShot<GrabEnd> end_;
    std::chrono::milliseconds limit_;
    QByteArray input_;
    QByteArray errors_;
    ReplyBody body_;
    pid_t group_ = 0;
};

FrameGrabber::FrameGrabber()
    : places_(std::make_unique<Places>())
{
}

FrameGrabber::~FrameGrabber() = default;

QCoro::Task<HttpReply> FrameGrabber::fetch(HttpRequest request, std::stop_token stop)
{
    HttpReply reply;
    const bool entered = co_await places_->enter(stop);
    if (!entered || stop.stop_requested()) {
        if (entered) {
            places_->leave();
        }
        reply.outcome = FetchOutcome::Stopped;
        co_return reply;
    }
    const auto leave = qScopeGuard([this] { places_->leave(); });
    reply = co_await grab(std::move(request), std::move(stop));
    co_return reply;
}

QCoro::Task<HttpReply> FrameGrabber::grab(HttpRequest request, std::stop_token stop)
{
    HttpReply reply;
    const QString program = QStandardPaths::findExecutable(QStringLiteral("ffmpeg"));
    if (program.isEmpty()) {
        reply.failure = QStringLiteral("a stream needs ffmpeg, which is not installed");
        co_return reply;
    }
    Grab run(request, bodies_);
    run.start(program);
    const std::stop_callback onStop(std::move(stop), [&run] { run.end().set(GrabEnd::Stopped); });
    const GrabEnd end = co_await run.end();
    run.kill();
    reply = run.reply(end);
    co_return reply;
}

} // namespace velmora
