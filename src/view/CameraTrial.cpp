#include "view/CameraTrial.h"

#include "base/LinkedStop.h"
#include "capture/PictureRemark.h"
#include "capture/StoredMark.h"

#include <utility>

namespace velmora {
namespace {

QString newWhy(const Answer &answer)
{
    if (answer.dates.modified) {
        return QStringLiteral("new: date of the server");
    }
    if (!isCompared(answer)) {
        return QStringLiteral("new: the camera has no image yet. Without a date it would stay the "
                              "only one");
    }
    const std::optional<double> difference = differencePercent(answer.mark, answer.stored);
    return difference ? QStringLiteral("new: it differs by %1 %").arg(*difference, 0, 'f', 1)
                      : QStringLiteral("new: it differs");
}

QString inWords(const Answer &answer)
{
    switch (worthOf(answer)) {
    case Worth::New:
        return newWhy(answer);
    case Worth::NotDated:
        return QStringLiteral("not kept: it has no date. Choose to keep what differs");
    case Worth::Unchanged:
        break;
    }
    return isCompared(answer) ? QStringLiteral("unchanged")
                              : QStringLiteral("unchanged: date of the server");
}

// Why an answer would not be kept, or is a web page; empty when it may be a picture.
QString whyNoPicture(const HttpReply &reply)
{
    if (reply.outcome != FetchOutcome::Arrived) {
        return QStringLiteral("no picture: %1").arg(reply.failure);
    }
    const QString page = webPageRemark(reply.body.head());
    const bool isShort = page.isEmpty() && reply.body.size() < kLeastPictureBytes;
    return isShort ? QStringLiteral("too short for a picture") : page;
}

// What is no picture is kept all the same: it may be one of a kind that is not known here.
QString verdict(const QString &url, const HttpReply &reply, const Answer &answer)
{
    const QString why = whyNoPicture(reply);
    if (!why.isEmpty()) {
        return why;
    }
    const QString remark = contentRemark(url, reply.body.head(), reply.contentType);
    return remark.isEmpty() ? inWords(answer) : remark + QStringLiteral("; ") + inWords(answer);
}

} // namespace

CameraTrial::CameraTrial(const Uses &uses)
    : uses_(uses)
{
}

void CameraTrial::begin(const TrialRequest &request)
{
    giveUp();
    current_ = std::stop_source();
    uses_.scope.launch(run(request, current_));
}

void CameraTrial::giveUp()
{
    current_.request_stop();
}

QCoro::Task<> CameraTrial::run(TrialRequest request, std::stop_source abandon)
{
    const std::stop_token stop = abandon.get_token();
    const LinkedStop atEnd(uses_.scope.stopToken(), abandon);
    HttpRequest asked = uses_.requests.trial(request.address, request.login);
    HttpReply reply = co_await uses_.source.fetch(std::move(asked), stop);
    if (stop.stop_requested()) {
        co_return;
    }
    const TrialResult result = co_await judged(std::move(request), std::move(reply));
    if (!stop.stop_requested()) {
        Q_EMIT ended(result);
    }
}

QCoro::Task<TrialResult> CameraTrial::judged(TrialRequest request, HttpReply reply)
{
    TrialResult result;
    result.contentType = reply.contentType;
    result.lastModified = reply.lastModified;
    result.date = reply.date;
    result.duration = reply.duration;
    PictureMark mark;
    if (reply.outcome == FetchOutcome::Arrived) {
        mark = co_await markOf(&reply.body, MarkKind::DigestAndLook, &uses_.clock);
        result.picture = reply.body.whole().value_or(QByteArray());
    }
    const Answer picture = answer(request, reply, mark);
    result.differencePercent = differencePercent(picture.mark, picture.stored);
    result.verdict = verdict(request.address, reply, picture);
    co_return result;
}

Answer CameraTrial::answer(const TrialRequest &request, const HttpReply &reply,
                           const PictureMark &mark) const
{
    const QString folder = uses_.storage.folderOf(request.address);
    const QString stored = uses_.table.value(keys::kLastModified, request.camera);
    return {imageDates(reply.lastModified, stored, request.keep), request.keep, mark,
            storedMark(uses_.table.settings().snapshot(), request.camera), folderState(folder)};
}

} // namespace velmora
