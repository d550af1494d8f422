// Transfers under way for cameras that are waiting for their turn.
#pragma once

#include "base/TaskScope.h"
#include "cameras/CameraAddress.h"
#include "capture/HttpClient.h"

#include <QCoro/QCoroTask>

#include <map>
#include <memory>

namespace velmora {

/// A pass starts the transfers of the cameras that it expects to load, and each camera takes its
/// own at its turn. So any number of dead cameras costs one time-out, while what follows from the
/// pictures still happens strictly in the order of the table.
class ReadAhead
{
public:
    /// source and scope outlive this object; the scope is joined before it goes.
    ReadAhead(PictureSource &source, TaskScope &scope);

    /// Starts a transfer that nobody waits for yet.
    void begin(CameraAddress camera, const HttpRequest &request);

    /// The picture of a camera: from the transfer under way when that has the same request, else
    /// from one started now.
    QCoro::Task<HttpReply> fetch(CameraAddress camera, HttpRequest request);

    /// Gives up every transfer; a fetch that waits ends with FetchOutcome::Stopped.
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
