// Fetches pictures over HTTP: many transfers at once on the one thread, driven by the event loop.
#pragma once

#include "capture/HttpRequest.h"
#include "net/Authorities.h"
#include "net/TransferLoop.h"
#include "net/TransferSlots.h"

#include <QCoro/QCoroTask>

#include <memory>
#include <optional>
#include <stop_token>

namespace velmora {

/// What fetches a picture.
class PictureSource
{
public:
    PictureSource() = default;
    Q_DISABLE_COPY_MOVE(PictureSource)
    virtual ~PictureSource() = default;

    /// Ends when the picture is there, when the transfer failed, or when a stop is requested.
    virtual QCoro::Task<HttpReply> fetch(HttpRequest request, std::stop_token stop) = 0;
};

/// Fetches with libcurl. Redirects are followed (10 at most, http and https only); user and
/// password are taken from the address and sent only when the server asks. A transfer fails on a
/// status outside 200 to 299, a body shorter than declared or longer than 64 MiB, endless headers,
/// a transfer coding other than "chunked", or past its time limit; nothing is ever inflated. A body
/// goes to the request's work folder as it arrives when it gets too long for memory. Of many
/// fetches at once some wait when the process may not open enough files. No fetch may run when the
/// client goes.
class HttpClient final : public PictureSource
{
public:
    /// authorities: where the certificates stand that are trusted.
    explicit HttpClient(AuthorityPlaces authorities = usualAuthorityPlaces());

    QCoro::Task<HttpReply> fetch(HttpRequest request, std::stop_token stop) override;

private:
    QCoro::Task<HttpReply> transfer(HttpRequest request, std::stop_token stop);
    QCoro::Task<std::optional<HttpReply>> tryTransfer(HttpRequest request, std::stop_token stop);

    std::shared_ptr<BodyStock> bodies_ = std::make_shared<BodyStock>();
    TransferSlots places_{[this] { return bodies_->files; }};
    Authorities authorities_;
    TransferLoop loop_;
};

} // namespace velmora
