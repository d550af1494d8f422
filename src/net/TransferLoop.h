// Runs libcurl's transfers on the event loop, for everything that talks to servers. Only the code
// that sets up a transfer needs to know libcurl.
#pragma once

#include <QCoro/QCoroTask>

#include <memory>
#include <optional>
#include <stop_token>

namespace velmora {

/// Cleans a libcurl easy handle up.
struct EasyCleanUp
{
    void operator()(void *easy) const;
};

/// A libcurl easy handle (CURL *) and its owner.
using EasyHandle = std::unique_ptr<void, EasyCleanUp>;

/// Runs any number of transfers concurrently on the one thread. A run still going when the loop is
/// destroyed ends as stopped.
class TransferLoop
{
public:
    TransferLoop();
    Q_DISABLE_COPY_MOVE(TransferLoop)
    ~TransferLoop();

    /// A new handle with the options that every transfer of the program needs, to be set up and run
    /// by the caller. Throws std::bad_alloc, or NoCurl.
    [[nodiscard]] static EasyHandle newTransfer();

    /// Runs an easy handle, which must outlive the run. Gives its code (CURLcode), or nothing when
    /// a stop was requested.
    QCoro::Task<std::optional<int>> run(void *easy, std::stop_token stop);

    /// The same for a transfer that is only to connect (CURLOPT_CONNECT_ONLY). If that succeeds, it
    /// stays connected until disconnect(), which must come before the loop is destroyed.
    QCoro::Task<std::optional<int>> connect(void *easy, std::stop_token stop);

    /// For a transfer's body callback: true when the transfer has had its share of this turn, and
    /// the callback is to return CURL_WRITEFUNC_PAUSE. It gets the same bytes again in a later
    /// turn.
    [[nodiscard]] bool pausesNow();

    /// Descriptors kept for a short while for coming transfers, each of which takes two of them.
    [[nodiscard]] int spareDescriptors() const;

    /// Closes a connection without a word to the server; does nothing when there is none.
    void disconnect(void *easy);

private:
    class Transfers;
    struct Transfer;
    enum class AtEnd { Close, StayConnected };

    QCoro::Task<std::optional<int>> runUntil(AtEnd atEnd, void *easy, std::stop_token stop);

    std::unique_ptr<Transfers> transfers_;
};

} // namespace velmora
