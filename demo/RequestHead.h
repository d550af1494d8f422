// The head of an HTTP request: its first line and header lines, parsed no further than the cameras
// need.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace velmora::demo {

struct RequestHead
{
    QByteArray method; // as sent: methods are case-sensitive
    QString path;      // decoded, without the query; begins with "/"
};

/// Length of the head at the start of bytes, with the empty line at its end. Nothing until that
/// line has arrived. Line ends may be CR LF or LF.
[[nodiscard]] std::optional<qsizetype> headLength(const QByteArray &bytes);

/// head: a whole head, as measured by headLength. Nothing when it is not a valid request of
/// HTTP/1.0 or 1.1 (RFC 9112), such as one of HTTP/1.1 without a Host.
[[nodiscard]] std::optional<RequestHead> parseRequestHead(const QByteArray &head);

} // namespace velmora::demo
