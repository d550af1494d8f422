// The head of an HTTP request: its first line and its header lines.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <optional>
#include <utility>

namespace velmora::loopback {

/// A request as received.
struct Request
{
    QByteArray method;  // methods are case-sensitive
    QByteArray target;  // path and query; a proxy is sent a whole address
    QByteArray version; // "HTTP/1.0" or "HTTP/1.1"
    QList<std::pair<QByteArray, QByteArray>> headers;

    /// The value of a header, ignoring the case of its name; empty when it was not sent.
    [[nodiscard]] QByteArray header(QByteArrayView name) const;
};

/// head: the lines before the empty one, each but the last with its end, LF or CR LF. Nothing when
/// it is not a valid request of HTTP/1.0 or 1.1 (RFC 9112), such as one of HTTP/1.1 without a Host.
[[nodiscard]] std::optional<Request> parsedRequest(const QByteArray &head);

} // namespace velmora::loopback
