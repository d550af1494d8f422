// A camera on 127.0.0.1 in the test's own process: it does for each path what the test has set, and
// remembers every request in order of arrival.
#pragma once

#include "loopback/Server.h"
#include "support/LoopbackCameraAnswers.h"
#include "support/Printers.h"

#include <QByteArray>
#include <QHash>
#include <QList>

#include <memory>

namespace velmora::test {

using CameraRequest = loopback::Request;

class LoopbackCamera : public loopback::Server
{
public:
    /// A QSslServer makes it an encrypted camera.
    explicit LoopbackCamera(std::unique_ptr<QTcpServer> listener = std::make_unique<QTcpServer>());

    /// What a path gives from now on; a path without an answer gives a 404 page.
    void answer(const QByteArray &path, const CameraAnswer &answer);

    [[nodiscard]] const QList<CameraRequest> &requests() const { return requests_; }

private:
    [[nodiscard]] CameraAnswer take(const CameraRequest &request);

    QHash<QByteArray, CameraAnswer> answers_;
    QList<CameraRequest> requests_;
};

/// "http://127.0.0.1:port" + path of a port on which nothing listens.
[[nodiscard]] QByteArray refusedUrl(const QByteArray &path);

} // namespace velmora::test
