#include "demo/HttpResponder.h"

#include "demo/Pages.h"
#include "demo/Picture.h"

#include <QRegularExpression>
#include <QUrl>

#include <chrono>
#include <optional>

namespace velmora::demo {
namespace {

using namespace std::chrono_literals;
using loopback::Answer;

constexpr int kSlowCamera = 6;
constexpr int kDrippingCamera = 7;
constexpr int kMissingCamera = 8;
constexpr int kDeadCamera = 9;

constexpr std::chrono::milliseconds kSlowPause = 2s;
constexpr std::chrono::milliseconds kDripInterval = 100ms;
constexpr qsizetype kDripPieces = 30;

// more: additional header lines, each with its line end.
Answer content(const QByteArray &status, const QByteArray &type, const QByteArray &body,
               const QByteArray &more = {})
{
    return loopback::response(status,
                              "Content-Type: " + type + "\r\n" + more +
                                  "Cache-Control: no-cache\r\nConnection: close\r\n",
                              body);
}

Answer pageAnswer(const QByteArray &status, const QByteArray &page)
{
    return content(status, "text/html; charset=utf-8", page);
}

// Says only what went wrong.
Answer errorAnswer(const QByteArray &status, const QByteArray &more = {})
{
    return content(status, "text/plain; charset=utf-8", status + '\n', more);
}

Answer pictureAnswer(int camera, const QDateTime &now)
{
    const Picture picture = takePicture(camera, now);
    return content("200 OK", "image/jpeg", picture.jpeg,
                   "Last-Modified: " + picture.lastModified + "\r\n");
}

Answer cameraAnswer(int camera, const QDateTime &now)
{
    if (camera == kDeadCamera) {
        return loopback::silence();
    }
    if (camera == kMissingCamera) {
        return pageAnswer("404 Not Found", missingCameraPage());
    }
    Answer answer = pictureAnswer(camera, now);
    if (camera == kSlowCamera) {
        answer.delay = kSlowPause;
    } else if (camera == kDrippingCamera) {
        answer.pieceBytes = answer.bytes.size() / kDripPieces + 1;
        answer.pause = kDripInterval;
    }
    return answer;
}

// The path of "/camera0.jpg?x" or, as a proxy requests it, of "http://host/camera0.jpg".
std::optional<QString> pathOf(const QByteArray &target)
{
    const bool absolute = target.startsWith("http://");
    if (!absolute && !target.startsWith('/')) {
        return std::nullopt;
    }
    const QByteArray address = absolute ? target : "http://127.0.0.1" + target;
    const QUrl url = QUrl::fromEncoded(address, QUrl::StrictMode);
    if (!url.isValid()) {
        return std::nullopt;
    }
    return url.path().isEmpty() ? QStringLiteral("/") : url.path();
}

Answer resource(const QString &path, const QDateTime &now)
{
    static const QRegularExpression cameraPath(QStringLiteral("\\A/camera([0-9])\\.jpg\\z"));
    if (const QRegularExpressionMatch match = cameraPath.match(path); match.hasMatch()) {
        return cameraAnswer(match.capturedView(1).toInt(), now);
    }
    if (path == u"/" || path == u"/index.html") {
        return pageAnswer("200 OK", indexPage());
    }
    return errorAnswer("404 Not Found");
}

} // namespace

Answer answerTo(const loopback::Request &request, const QDateTime &now)
{
    const std::optional<QString> path = pathOf(request.target);
    if (!path) {
        return errorAnswer("400 Bad Request");
    }
    if (request.method != "GET" && request.method != "HEAD") {
        return errorAnswer("405 Method Not Allowed", "Allow: GET, HEAD\r\n");
    }
    Answer answer = resource(*path, now);
    if (request.method == "HEAD") {
        answer.bytes.truncate(answer.bytes.indexOf("\r\n\r\n") + 4);
    }
    return answer;
}

} // namespace velmora::demo
