// The command line's options for managing cameras and settings.
#pragma once

#include "admin/AdminCommand.h"

#include <QCommandLineParser>

#include <optional>
#include <variant>

namespace velmora {

void addAdminOptions(QCommandLineParser &parser);

/// Those that may be given several times.
[[nodiscard]] QStringList repeatableOptions();

/// True for a value that was left out: an empty one, or the next option in its place. "-" is none.
[[nodiscard]] bool isLeftOut(const QString &value);

/// Nothing when none of these options was given; else the one command, or what is wrong with it.
[[nodiscard]] std::optional<std::variant<AdminCommand, QString>>
adminCommand(const QCommandLineParser &parser);

} // namespace velmora
