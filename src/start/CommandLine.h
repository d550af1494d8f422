// What the program was asked to do when it was started.
#pragma once

#include "admin/AdminCommand.h"
#include "start/FilmCommand.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

namespace velmora {

/// Start with windows, or capture without any.
struct RunRequest
{
    QString programFolder; // as given, empty for the default
    bool headless = false;
    std::optional<int> passes; // stop after this many
};

/// Manage cameras and settings, without windows and beside any running program.
struct AdminRequest
{
    QString programFolder; // as given, empty for the default
    AdminCommand command;
};

/// Print a text on standard output and exit.
struct PrintRequest
{
    QString text;
};

/// The options were wrong: say why and exit with status 2.
struct UsageError
{
    QString text;
};

using StartRequest = std::variant<RunRequest, AdminRequest, FilmRequest, PrintRequest, UsageError>;

/// What main() got, in the user's encoding.
[[nodiscard]] QStringList argumentList(int argc, char **argv);

/// arguments: the program's, its name first. Options of the windowing toolkit ("-platform
/// offscreen", "-style fusion" and the like) are left to it.
[[nodiscard]] StartRequest parseCommandLine(const QStringList &arguments);

} // namespace velmora
