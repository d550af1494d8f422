#include "capture/FrameGrabber.h"

#include "base/Ffmpeg.h"
#include "base/OneLine.h"
#include "base/OneShot.h"
#include "base/PictureFormat.h"
#include "cameras/Credentials.h"
#include "capture/PictureRemark.h"

#include <QElapsedTimer>
#include <QScopeGuard>
#include <QTimer>

#include <algorithm>
#include <new>
#include <thread>

namespace velmora {
namespace {

constexpr qint64 kMostBody = qint64{64} * 1024 * 1024;

// How large the pictures of a stream are is for its server to say; a frame of 8K takes 50 MB.
constexpr qint64 kMostMemory = qint64{1} << 30;

enum class GrabEnd { Ended, TimeOut, Stopped, TooLong };

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
// ffmpeg knows the names of protocols in small letters only.
QByteArray inputList(QByteArray url)
{
    const qsizetype scheme = std::max<qsizetype>(0, url.indexOf(':'));
    url.replace(0, scheme, url.first(scheme).toLower());
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

bool hasFreeCore(int running)
{
    return running < std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
}

} // namespace

/// One run of ffmpeg.
class FrameGrabber::Grab : public QObject
{
public:
    Grab(const HttpRequest &request, std::shared_ptr<BodyStock> bodies)
        : body_(emptyBody(request, std::move(bodies)))
    {
        connect(&ffmpeg_, &QProcess::readyReadStandardOutput, this, [this] { takeBody(); });
        connect(&ffmpeg_, &Ffmpeg::ended, this, [this](FfmpegEnd end) {
            ffmpegEnd_ = end;
            end_.set(GrabEnd::Ended);
        });
        timer_.setSingleShot(true);
        connect(&timer_, &QTimer::timeout, this, [this] { end_.set(GrabEnd::TimeOut); });
        ffmpeg_.begin(arguments());
        ffmpeg_.write(inputList(withLogin(request)));
        ffmpeg_.closeWriteChannel();
        timer_.start(request.limit);
        elapsed_.start();
    }

    OneShot<GrabEnd> &end() { return end_; }

    HttpReply reply(GrabEnd end)
    {
        HttpReply reply;
        reply.duration = std::chrono::milliseconds{elapsed_.elapsed()};
        const bool good =
            end == GrabEnd::Ended && ffmpegEnd_ == FfmpegEnd::Good && !body_.isEmpty();
        if (end == GrabEnd::Stopped) {
            reply.outcome = FetchOutcome::Stopped;
        } else if (good && pictureFormat(body_.head()) != kJpegFormat) {
            reply.failure = QStringLiteral("what ffmpeg gave is no JPEG picture");
        } else if (good) {
            reply.outcome = FetchOutcome::Arrived;
            reply.contentType = QStringLiteral("image/jpeg");
            reply.body = std::move(body_);
        } else {
            reply.failure = end == GrabEnd::TimeOut
                                ? QStringLiteral("the stream gave no picture in time")
                            : end == GrabEnd::TooLong ? endlessPictureRemark()
                                                      : complaint();
        }
        return reply;
    }

private:
    // An exception must not pass through the event loop.
    void takeBody()
    {
        try {
            const QByteArray bytes = ffmpeg_.readAllStandardOutput();
            if (body_.size() + bytes.size() > kMostBody) {
                end_.set(GrabEnd::TooLong);
            } else {
                body_.append(bytes);
            }
        } catch (const std::bad_alloc &) {
            end_.set(GrabEnd::TooLong);
        }
    }

    [[nodiscard]] QString complaint() const
    {
        switch (ffmpegEnd_) {
        case FfmpegEnd::NotInstalled:
            return QStringLiteral("a stream needs ffmpeg, which is not installed");
        case FfmpegEnd::NotStarted:
            return QStringLiteral("ffmpeg cannot be started");
        case FfmpegEnd::Killed:
            return QStringLiteral("ffmpeg was ended by a signal");
        case FfmpegEnd::Good:
        case FfmpegEnd::Failed:
            break;
        }
        const QString said = onOneLine(withoutCredentials(ffmpeg_.lastLine()));
        return said.isEmpty() ? QStringLiteral("the stream gave no picture") : said;
    }

    ReplyBody body_;
    OneShot<GrabEnd> end_;
    FfmpegEnd ffmpegEnd_ = FfmpegEnd::NotStarted;
    QTimer timer_;
    QElapsedTimer elapsed_;
    Ffmpeg ffmpeg_{kMostMemory};
};

FrameGrabber::FrameGrabber()
    : places_(hasFreeCore)
{
}

QCoro::Task<HttpReply> FrameGrabber::fetch(HttpRequest request, std::stop_token stop)
{
    HttpReply reply;
    const bool entered = co_await places_.enter(stop);
    if (!entered || stop.stop_requested()) {
        if (entered) {
            places_.leave();
        }
        reply.outcome = FetchOutcome::Stopped;
        co_return reply;
    }
    const auto leave = qScopeGuard([this] { places_.leave(); });
    reply = co_await grab(std::move(request), std::move(stop));
    co_return reply;
}

QCoro::Task<HttpReply> FrameGrabber::grab(HttpRequest request, std::stop_token stop)
{
    Grab run(request, bodies_);
    const std::stop_callback onStop(std::move(stop), [&run] { run.end().set(GrabEnd::Stopped); });
    const GrabEnd end = co_await run.end();
    co_return run.reply(end);
}

} // namespace velmora
