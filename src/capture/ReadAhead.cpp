#include "capture/ReadAhead.h"

#include <exception>
#include <utility>

namespace velmora {

ReadAhead::ReadAhead(PictureSource &source, TaskScope &scope)
    : source_(source)
    , scope_(scope)
{
}

void ReadAhead::begin(CameraAddress camera, const HttpRequest &request)
{
    auto transfer = std::make_shared<Transfer>();
    transfer->request = request;
    if (const auto &old = std::exchange(transfers_[camera], transfer)) {
        old->stop.request_stop();
    }
    scope_.launch(run(std::move(transfer)));
}

QCoro::Task<> ReadAhead::run(std::shared_ptr<Transfer> transfer)
{
    HttpReply reply;
    try {
        reply = co_await source_.fetch(transfer->request, transfer->stop.get_token());
    } catch (const std::exception &error) { // the waiter gets an answer in every case
        reply.failure = QString::fromUtf8(error.what());
    }
    transfer->reply.set(std::move(reply));
}

QCoro::Task<HttpReply> ReadAhead::fetch(CameraAddress camera, HttpRequest request)
{
    const auto found = transfers_.find(camera);
    if (found == transfers_.end() || found->second->request != request) {
        begin(camera, request);
    }
    const std::shared_ptr<Transfer> transfer = transfers_.at(camera);
    HttpReply reply = co_await transfer->reply;
    const auto current = transfers_.find(camera);
    if (current != transfers_.end() && current->second == transfer) {
        transfers_.erase(current);
    }
    co_return reply;
}

void ReadAhead::drop()
{
    for (const auto &[camera, transfer] : std::exchange(transfers_, {})) {
        transfer->stop.request_stop();
    }
}

} // namespace velmora
