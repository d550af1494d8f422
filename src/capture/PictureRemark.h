// What is said, for people, of a camera whose answer is no picture or is odd.
#pragma once

#include <QByteArrayView>
#include <QString>

namespace velmora {

/// Why a camera gave no picture. An address that names a host and nothing else gets a word on what
/// such addresses look like. url: as requested; reason: without credentials.
[[nodiscard]] QString failureRemark(const QString &url, const QString &reason);

/// What is odd about an answer that was taken for a picture; empty for a good one. head: the first
/// bytes of the body, 16 at least unless there are fewer; type: of the content, as sent.
[[nodiscard]] QString contentRemark(const QString &url, QByteArrayView head, const QString &type);

/// What is odd about the date of a picture (the header "Last-Modified", empty for none).
[[nodiscard]] QString dateRemark(const QString &lastModified);

} // namespace velmora
