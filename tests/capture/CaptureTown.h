// Cameras behind a real client: what each address gives is known to a model, and a transfer takes
// as long as the test's clock says.
#pragma once

#include "CaptureRules.h"
#include "capture/HttpClient.h"
#include "support/FakeClock.h"
#include "support/LoopbackCamera.h"

#include <QCoreApplication>
#include <QHash>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace velmora::test {

/// What a path gives: the bytes, and what is to be known of them.
struct TownAnswer
{
    CameraAnswer bytes;
    ServerAnswer rule;
};

class CaptureTown final : public PictureSource
{
public:
    explicit CaptureTown(FakeClock &clock)
        : clock_(clock)
    {
    }

    /// From now on, also for transfers that have begun and not yet got their answer.
    void answer(const QString &path, const TownAnswer &answer)
    {
        server_.answer(path.toLatin1(), answer.bytes);
        rules_.insert(path, answer.rule);
    }

    /// What a path gives besides, as the target of a redirect.
    void answerBehind(const QByteArray &path, const CameraAnswer &answer)
    {
        server_.answer(path, answer);
    }

    [[nodiscard]] QString url(const QString &path) const
    {
        return QString::fromLatin1(server_.url(path.toLatin1()));
    }

    /// By the address of a request.
    [[nodiscard]] ServerAnswer rule(const QString &url) const
    {
        return rules_.value(url.mid(this->url({}).size()));
    }

    /// Lets everything happen that needs no more time on the test's clock.
    void settle()
    {
        for (clock_.advance(std::chrono::milliseconds{0}); inNetwork_ > 0;
             clock_.advance(std::chrono::milliseconds{0})) {
            while (inNetwork_ > 0) {
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            }
        }
    }

    QCoro::Task<HttpReply> fetch(HttpRequest request, std::stop_token stop) override
    {
        const std::chrono::milliseconds delay =
            std::chrono::seconds{rule(QString::fromLatin1(request.url)).delay};
        HttpReply reply;
        reply.duration = std::min(delay, request.limit);
        if (delay.count() > 0) {
            const Wake wake = co_await clock_.sleep(reply.duration, stop);
            Q_UNUSED(wake);
        }
        if (stop.stop_requested()) {
            reply.outcome = FetchOutcome::Stopped;
        } else if (delay > request.limit) {
            reply.failure = QStringLiteral("time-out");
        } else {
            ++inNetwork_;
            reply = co_await client_.fetch(request, stop);
            --inNetwork_;
            reply.duration = delay;
        }
        co_return reply;
    }

private:
    FakeClock &clock_;
    LoopbackCamera server_;
    HttpClient client_;
    QHash<QString, ServerAnswer> rules_;
    int inNetwork_ = 0;
};

} // namespace velmora::test
