// What the table accepts as a camera's address, and the words for what it does not.
#pragma once

#include <QString>

#include <optional>

namespace velmora {

/// Why an address cannot be stored; the row (0-based) keeps its old one. Nothing when it can.
[[nodiscard]] std::optional<QString> addressRefusal(QStringView url, int row);

/// What the settings file would lose of an address. Nothing when it keeps all of it.
[[nodiscard]] std::optional<QString> addressLoss(QStringView url, int row);

/// An address without the blanks and quotes around it, none of which the settings file gives back.
[[nodiscard]] QString bareAddress(const QString &text);

} // namespace velmora
