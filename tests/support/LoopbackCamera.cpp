#include "support/LoopbackCamera.h"

#include <stdexcept>

namespace velmora::test {

LoopbackCamera::LoopbackCamera(std::unique_ptr<QTcpServer> listener)
    : Server([this](const CameraRequest &request) { return take(request); }, std::move(listener))
{
    if (!listen(0)) {
        throw std::runtime_error("the loopback camera cannot listen");
    }
}

void LoopbackCamera::answer(const QByteArray &path, const CameraAnswer &answer)
{
    answers_.insert(path, answer);
}

CameraAnswer LoopbackCamera::take(const CameraRequest &request)
{
    requests_.append(request);
    const auto found = answers_.constFind(request.target);
    if (found == answers_.constEnd()) {
        return response("404 Not Found", "Content-Type: text/html\r\n", QByteArray(5000, 'n'));
    }
    const bool open = opens(found->lock, request.header("Authorization"), request.target);
    CameraAnswer answer = open ? *found : askForUser(found->lock.kind);
    answer.isHeld = [this, company = answer.company] { return requests_.size() < company; };
    return answer;
}

QByteArray refusedUrl(const QByteArray &path)
{
    const LoopbackCamera gone;
    return gone.url(path);
}

} // namespace velmora::test
