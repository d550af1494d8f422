#include "demo/HttpResponder.h"

#include "demo/Pages.h"
#include "demo/Picture.h"

#include <QRegularExpression>

namespace velmora::demo {
namespace {

constexpr int kSlowCamera = 6;
constexpr int kDrippingCamera = 7;
constexpr int kMissingCamera = 8;
constexpr int kDeadCamera = 9;

QByteArray reasonOf(Status status)
{
    switch (status) {
    case Status::Ok:
        return QByteArrayLiteral("OK");
    case Status::BadRequest:
        return QByteArrayLiteral("Bad Request");
    case Status::NotFound:
        return QByteArrayLiteral("Not Found");
    case Status::MethodNotAllowed:
        return QByteArrayLiteral("Method Not Allowed");
    case Status::RequestTimeout:
        return QByteArrayLiteral("Request Timeout");
    case Status::HeaderTooLarge:
        return QByteArrayLiteral("Request Header Fields Too Large");
    }
    Q_UNREACHABLE();
}

// more: additional header lines, each with its line end.
QByteArray headOf(Status status, const QByteArray &type, const QByteArray &body,
                  const QByteArray &more = {})
{
    return "HTTP/1.1 " + QByteArray::number(static_cast<int>(status)) + ' ' + reasonOf(status) +
           "\r\nContent-Type: " + type + "\r\nContent-Length: " + QByteArray::number(body.size()) +
           "\r\n" + more + "Cache-Control: no-cache\r\nConnection: close\r\n\r\n";
}

Answer pageAnswer(Status status, const QByteArray &page)
{
    return {.head = headOf(status, "text/html; charset=utf-8", page), .body = page};
}

Answer pictureAnswer(int camera, const QDateTime &now)
{
    const Picture picture = takePicture(camera, now);
    return {.head = headOf(Status::Ok, "image/jpeg", picture.jpeg,
                           "Last-Modified: " + picture.lastModified + "\r\n"),
            .body = picture.jpeg};
}

Answer cameraAnswer(int camera, const QDateTime &now)
{
    if (camera == kDeadCamera) {
        return {.delivery = Delivery::Never, .head = {}, .body = {}};
    }
    if (camera == kMissingCamera) {
        return pageAnswer(Status::NotFound, missingCameraPage());
    }
    Answer answer = pictureAnswer(camera, now);
    if (camera == kSlowCamera) {
        answer.delivery = Delivery::Late;
    } else if (camera == kDrippingCamera) {
        answer.delivery = Delivery::Dripped;
    }
    return answer;
}

Answer resource(const QString &path, const QDateTime &now)
{
    static const QRegularExpression cameraPath(QStringLiteral("\\A/camera([0-9])\\.jpg\\z"));
    if (const QRegularExpressionMatch match = cameraPath.match(path); match.hasMatch()) {
        return cameraAnswer(match.capturedView(1).toInt(), now);
    }
    if (path == u"/" || path == u"/index.html") {
        return pageAnswer(Status::Ok, indexPage());
    }
    return errorAnswer(Status::NotFound);
}

} // namespace

Answer answerTo(const std::optional<RequestHead> &request, const QDateTime &now)
{
    if (!request) {
        return errorAnswer(Status::BadRequest);
    }
    if (request->method != "GET" && request->method != "HEAD") {
        return errorAnswer(Status::MethodNotAllowed);
    }
    Answer answer = resource(request->path, now);
    if (request->method == "HEAD") {
        answer.body.clear();
    }
    return answer;
}

Answer errorAnswer(Status status)
{
    const QByteArray body = reasonOf(status) + '\n';
    const QByteArray allowed = status == Status::MethodNotAllowed
                                   ? QByteArrayLiteral("Allow: GET, HEAD\r\n")
                                   : QByteArray();
    return {.head = headOf(status, "text/plain; charset=utf-8", body, allowed), .body = body};
}

} // namespace velmora::demo
