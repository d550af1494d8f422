// Remarks for the user about a camera whose answer is no picture or is odd.
#pragma once

#include "capture/NewImageRule.h"

#include <QByteArrayView>
#include <QString>

namespace velmora {

/// Why a camera gave no picture. For an address that names only a host, says what camera addresses
/// look like. url: as requested; reason: without credentials.
[[nodiscard]] QString failureRemark(const QString &url, const QString &reason);

/// Why a stream gave no picture: what it sends as one does not end.
[[nodiscard]] QString endlessPictureRemark();

/// What is odd about an answer that was accepted as a picture; empty for a good one. head: the
/// first 16 bytes of the body or more, fewer only if it is shorter; type: of the content, as sent.
[[nodiscard]] QString contentRemark(const QString &url, QByteArrayView head, const QString &type);

/// The same for an answer that is a web page, with the page's title; empty for any other.
[[nodiscard]] QString webPageRemark(QByteArrayView head);

/// What is odd about a picture's dates: that it has none.
[[nodiscard]] QString dateRemark(const ImageDates &dates);

} // namespace velmora
