// Transfers under way for cameras that wait for their turn.
#pragma once

#include "base/TaskScope.h"
#include "cameras/CameraAddress.h"
#include "capture/HttpClient.h"

#include <QCoro/QCoroTask>

#include <map>
#include <memory>

namespace velmora {

/// A pass starts the transfers of the cameras that it expects to load, and each camera takes its
/// own when its turn comes. So any number of dead cameras costs one time-out, while the pictures
/// still take effect strictly in the order of the table.
class ReadAhead
{
public:
    /// source and scope outlive this object; the scope is joined before it is destroyed.
    ReadAhead(PictureSource &source, TaskScope &scope);

    /// Starts a transfer that nothing waits for yet.
    void begin(CameraAddress camera, const HttpRequest &request);

    /// The picture of a camera: from the transfer under way if it is for the same request, else
    /// from a new one.
    QCoro::Task<HttpReply> fetch(CameraAddress camera, HttpRequest request);

    /// Gives up every transfer; a waiting fetch ends with FetchOutcome::Stopped.
    void drop();

private:
    struct Transfer
    {
        HttpRequest request;
        std::stop_source stop;
        OneShot<HttpReply> reply;
    };

    QCoro::Task<> run(std::shared_ptr<Transfer> transfer);

    PictureSource &source_;
    TaskScope &scope_;
    std::map<CameraAddress, std::shared_ptr<Transfer>> transfers_;
};

} // namespace velmora
