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

/// Something that fetches pictures.
class PictureSource
{
public:
    PictureSource() = default;
    Q_DISABLE_COPY_MOVE(PictureSource)
    virtual ~PictureSource() = default;

    /// Completes when the picture is there, the transfer has failed, or a stop is requested.
    virtual QCoro::Task<HttpReply> fetch(HttpRequest request, std::stop_token stop) = 0;
};

/// Fetches with libcurl. Redirects are followed (10 at most, http and https only); user and
/// password are taken from the address and sent only when the server asks. A transfer fails on a
/// status outside 200 to 299, a body shorter than declared, of two declared lengths, or longer than
/// 64 MiB, endless headers, a transfer coding other than "chunked", or when its time runs out;
/// nothing is ever decompressed. A body too long for memory goes to the request's work folder as it
/// arrives. If the process may not open enough files for many fetches at once, some wait. No fetch
/// may be running when the client is destroyed.
class HttpClient final : public PictureSource
{
public:
    /// authorities: where the trusted certificates are; none for libcurl's own places.
    explicit HttpClient(std::optional<AuthorityPlaces> authorities = {});

    QCoro::Task<HttpReply> fetch(HttpRequest request, std::stop_token stop) override;

private:
    QCoro::Task<HttpReply> transfer(HttpRequest request, std::stop_token stop);
    QCoro::Task<std::optional<HttpReply>> tryTransfer(HttpRequest request, std::stop_token stop);

    std::shared_ptr<BodyStock> bodies_ = std::make_shared<BodyStock>();
    TransferSlots places_{[this] { return bodies_->descriptors() + loop_.spareDescriptors(); }};
    Authorities authorities_;
    TransferLoop loop_;
};

} // namespace velmora
