// A camera on 127.0.0.1 in the test's own process: it does for each path what the test has set, and
// remembers every request in order of arrival.
#pragma once

#include "support/LoopbackCameraAnswers.h"
#include "support/Printers.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QTcpServer>

#include <memory>
#include <utility>

namespace velmora::test {

/// A request as received.
struct CameraRequest
{
    QByteArray method;
    QByteArray path;
    QByteArray version; // "HTTP/1.0"
    QList<std::pair<QByteArray, QByteArray>> headers;

    /// The value of a header, ignoring the case of its name; empty when it was not sent.
    [[nodiscard]] QByteArray header(QByteArrayView name) const;
};

class LoopbackCamera : public QObject
{
public:
    /// A QSslServer makes it an encrypted camera.
    explicit LoopbackCamera(std::unique_ptr<QTcpServer> server = std::make_unique<QTcpServer>());

    /// What a path gives from now on; a path without an answer gives a 404 page.
    void answer(const QByteArray &path, const CameraAnswer &answer);

    [[nodiscard]] quint16 port() const { return server_->serverPort(); }

    /// "http://127.0.0.1:port" + path, or "https://…"; userInfo precedes the host
    /// ("user:password@").
    [[nodiscard]] QByteArray url(const QByteArray &path, const QByteArray &userInfo = {}) const;

    /// "127.0.0.1:port".
    [[nodiscard]] QByteArray host() const;

    [[nodiscard]] const QList<CameraRequest> &requests() const { return requests_; }

    /// The most requests that were being answered at the same time.
    [[nodiscard]] int mostAtOnce() const { return mostAtOnce_; }

    /// The longest time that a request waited for the first byte of its answer.
    [[nodiscard]] std::chrono::milliseconds longestHeld() const { return longestHeld_; }

    /// Connections now open.
    [[nodiscard]] int openConnections() const { return open_; }

private:
    class Connection;

    void accept();
    [[nodiscard]] CameraAnswer take(const CameraRequest &request);

    std::unique_ptr<QTcpServer> server_;
    QHash<QByteArray, CameraAnswer> answers_;
    QList<CameraRequest> requests_;
    int open_ = 0;
    int mostAtOnce_ = 0;
    std::chrono::milliseconds longestHeld_{0};
};

/// "http://127.0.0.1:port" + path of a port on which nothing listens.
[[nodiscard]] QByteArray refusedUrl(const QByteArray &path);

} // namespace velmora::test
