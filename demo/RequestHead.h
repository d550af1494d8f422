// The head of an HTTP request: its first line and header lines, read no further than the cameras
// need.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace velmora::demo {

struct RequestHead
{
    QByteArray method; // as sent: methods are told apart by case
    QString path;      // decoded, without the query; begins with "/"
};

/// Length of the head at the begin of bytes, with the empty line that ends it. Nothing while that
/// line has not arrived. Line ends may be CR LF or LF.
[[nodiscard]] std::optional<qsizetype> headLength(const QByteArray &bytes);

/// head: a whole head, as headLength measures it. Nothing when it is not a proper request of
/// HTTP/1.0 or 1.1 (RFC 9112), such as one of HTTP/1.1 without its Host.
[[nodiscard]] std::optional<RequestHead> parseRequestHead(const QByteArray &head);

} // namespace velmora::demo
