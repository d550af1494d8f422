// Transfers of libcurl on the event loop, for all that speaks to servers. Who sets up a transfer
// knows libcurl; who runs it need not.
#pragma once

#include <QCoro/QCoroTask>

#include <memory>
#include <optional>
#include <stop_token>

namespace velmora {

/// Runs any number of transfers side by side on the one thread. A run that has not ended when the
/// loop goes ends as stopped.
class TransferLoop
{
public:
    TransferLoop();
    Q_DISABLE_COPY_MOVE(TransferLoop)
    ~TransferLoop();

    /// A new easy handle of libcurl with what every transfer of the program needs, to be set up,
    /// run and cleaned up by the caller. Throws std::bad_alloc.
    [[nodiscard]] static void *newTransfer();

    /// Runs an easy handle, which must outlive the run and is done with when it ends: its code
    /// (CURLcode), or nothing when a stop was requested.
    QCoro::Task<std::optional<int>> run(void *easy, std::stop_token stop);

    /// The same for a transfer that is only to connect (CURLOPT_CONNECT_ONLY). After a success it
    /// is connected until disconnect(), which must come before the loop goes.
    QCoro::Task<std::optional<int>> connect(void *easy, std::stop_token stop);

    /// For the callback that is given the bytes of a transfer's body: true when the transfer has
    /// had its part of this turn, and the callback is to answer CURL_WRITEFUNC_PAUSE. It is given
    /// the same bytes again in a later turn.
    [[nodiscard]] bool pausesNow();

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
