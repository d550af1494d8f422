#include "capture/CameraTrial.h"

#include "base/DateText.h"
#include "base/Folders.h"
#include "base/OneLine.h"
#include "cameras/FolderName.h"
#include "capture/CameraUrl.h"
#include "capture/HttpDate.h"
#include "capture/KeepRule.h"
#include "capture/NewImageRule.h"
#include "capture/StoredMark.h"

#include <QRegularExpression>

#include <utility>

namespace velmora {
namespace {

constexpr qint64 kMinBodyBytes = 1000;
constexpr qsizetype kMostTitle = 80;

QString newWhy(const KeepChoice &keep, const std::optional<double> &difference)
{
    if (keep.keep == Keep::Dated) {
        return QStringLiteral("new: the camera has no image yet. Without a date it would stay the "
                              "only one");
    }
    return difference ? QStringLiteral("new: it differs by %1 %").arg(*difference, 0, 'f', 1)
                      : QStringLiteral("new: it differs");
}

} // namespace

std::optional<QString> webPageTitle(QByteArrayView head)
{
    const QString text = QString::fromUtf8(head);
    static const QRegularExpression page(QStringLiteral("^\\s*(<!doctype html|<html|<head)"),
                                         QRegularExpression::CaseInsensitiveOption);
    if (!page.match(text).hasMatch()) {
        return std::nullopt;
    }
    static const QRegularExpression title(QStringLiteral("<title[^>]*>(.*?)</title>"),
                                          QRegularExpression::CaseInsensitiveOption |
                                              QRegularExpression::DotMatchesEverythingOption);
    return onOneLine(title.match(text).captured(1)).simplified().left(kMostTitle);
}

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
    const std::stop_callback atEnd(uses_.scope.stopToken(), [&abandon] { abandon.request_stop(); });
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
    result.differencePercent =
        differencePercent(mark, storedMark(uses_.table.settings().snapshot(), request.camera));
    result.verdict = verdict(request, reply, mark);
    co_return result;
}

QString CameraTrial::verdict(const TrialRequest &request, const HttpReply &reply,
                             const PictureMark &mark) const
{
    if (reply.outcome != FetchOutcome::Arrived) {
        return QStringLiteral("no picture: %1").arg(reply.failure);
    }
    if (const auto title = webPageTitle(reply.body.head())) {
        return title->isEmpty()
                   ? QStringLiteral("not a picture: a web page")
                   : QStringLiteral("not a picture: a web page titled \"%1\"").arg(*title);
    }
    if (reply.body.size() < kMinBodyBytes) {
        return QStringLiteral("too short for a picture");
    }
    const SettingsSnapshot settings = uses_.table.settings().snapshot();
    const QString folder =
        uses_.storage.native(uses_.storage.folderText(encodeFolderName(request.address)));
    const FolderState state =
        folderHoldsFile(folder) ? FolderState::HoldsFiles : FolderState::Empty;
    if (!reply.lastModified.isEmpty()) {
        const ImageDates dates{
            reply.lastModified, CalculDate(reply.lastModified),
            dateFromText(uses_.table.record(settings, request.camera).lastModified)};
        return isNewImage(dates, state) ? QStringLiteral("new: date of the server")
                                        : QStringLiteral("unchanged: date of the server");
    }
    const PictureMark stored = storedMark(settings, request.camera);
    if (request.keep.keep == Keep::Dated && state == FolderState::HoldsFiles) {
        return QStringLiteral("not kept: it has no date. Choose to keep what differs");
    }
    return request.keep.keep == Keep::Dated || isNewUndated({request.keep, mark, stored}, state)
               ? newWhy(request.keep, differencePercent(mark, stored))
               : QStringLiteral("unchanged");
}

} // namespace velmora
