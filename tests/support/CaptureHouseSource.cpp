#include "support/CaptureHouseSource.h"

#include <algorithm>

namespace velmora::test {

void ScriptedSource::answer(const QString &url, const ScriptedReply &reply)
{
    answers_.insert(url.toUtf8(), reply);
}

QCoro::Task<HttpReply> ScriptedSource::fetch(HttpRequest request, std::stop_token stop)
{
    requested_.append(request.url);
    ++underWay_;
    HttpReply reply = co_await this->reply(request, stop);
    --underWay_;
    if (reply.outcome == FetchOutcome::Stopped) {
        stopped_.append(request.url);
    }
    co_return reply;
}

ReplyBody ScriptedSource::bodyOf(const ScriptedReply &script, HttpRequest request)
{
    if (script.workFolder.isEmpty()) {
        return script.body;
    }
    request.workFolder = script.workFolder;
    ReplyBody body = emptyBody(request, stock_);
    body.append(script.body);
    return body;
}

QCoro::Task<HttpReply> ScriptedSource::reply(HttpRequest request, std::stop_token stop)
{
    const ScriptedReply script =
        answers_.value(request.url, {{}, {}, {}, {}, QStringLiteral("no such camera")});
    if (script.delay.count() > 0) {
        const Wake wake = co_await clock_.sleep(std::min(script.delay, request.limit), stop);
        Q_UNUSED(wake);
    } else {
        co_await clock_.yield();
    }
    HttpReply reply;
    reply.duration = std::min(script.delay, request.limit);
    if (stop.stop_requested()) {
        reply.outcome = FetchOutcome::Stopped;
    } else if (script.delay > request.limit) {
        reply.failure = QStringLiteral("time-out");
    } else if (!script.failure.isEmpty()) {
        reply.failure = script.failure;
    } else {
        reply.outcome = FetchOutcome::Arrived;
        reply.body = bodyOf(script, request);
        reply.lastModified = script.lastModified;
        reply.contentType = script.contentType;
    }
    co_return reply;
}

} // namespace velmora::test
