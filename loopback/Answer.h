// What a camera sends in answer to a request, and how: at once or late, whole or in pieces, with or
// without an end.
#pragma once

#include <QByteArray>

#include <chrono>
#include <functional>

namespace velmora::loopback {

/// What becomes of the connection once everything is sent.
enum class AtEnd { Close, KeepOpen };

/// Bytes to send, and how.
struct Answer
{
    QByteArray bytes;                   // status line, headers and body
    QByteArray repeated;                // then sent again and again, until the client goes away
    std::chrono::milliseconds delay{0}; // before the first byte
    int turns = 0;                      // of the event loop, after the delay
    std::function<bool()> isHeld;       // then asked once a turn: nothing is sent while it is true
    qsizetype pieceBytes = 0;           // how many to send at a time; 0: all
    std::chrono::milliseconds pause{0}; // between pieces, at least a turn of the event loop
    AtEnd atEnd = AtEnd::Close;
};

/// status: such as "200 OK"; headers: whole lines that end with CR LF. The length of the body is
/// declared behind them.
[[nodiscard]] Answer response(const QByteArray &status, const QByteArray &headers,
                              const QByteArray &body);

/// Accepts the request and says nothing.
[[nodiscard]] Answer silence();

} // namespace velmora::loopback
