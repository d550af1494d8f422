// What the command line may ask to be done with cameras and settings, without windows.
#pragma once

#include "cameras/CameraAddress.h"
#include "cameras/KeepChoice.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

namespace velmora {

enum class ListForm { Plain, Json };

struct AddCommand
{
    QString address;
    std::optional<CameraAddress> camera; // none: the first free row
    QString name;                        // empty: the one chosen for the row, if any
    std::optional<KeepChoice> keep;      // none: the same
};

struct RemoveCommand
{
    CameraAddress camera;
};

struct ListCommand
{
    ListForm form = ListForm::Plain;
};

struct StatusCommand
{
    ListForm form = ListForm::Plain;
};

/// file: native path, "-" for standard input or output.
struct ImportListCommand
{
    QString file;
};

struct ExportListCommand
{
    QString file;
};

struct SetCommand
{
    QStringList assignments; // KEY=VALUE
};

struct GetCommand
{
    QStringList keys;
};

using AdminCommand = std::variant<AddCommand, RemoveCommand, ListCommand, StatusCommand,
                                  ImportListCommand, ExportListCommand, SetCommand, GetCommand>;

inline constexpr int kDone = 0;
inline constexpr int kRefused = 1;
inline constexpr int kMalformed = 2;

/// What a command did, for standard output, standard error and the exit status.
struct CommandResult
{
    int status = kDone;
    QString out;
    QString error;        // sentences, one a line; empty for none
    bool changed = false; // the settings have changed

    static CommandResult refused(const QString &why) { return {kRefused, {}, why, false}; }

    static CommandResult malformed(const QString &why) { return {kMalformed, {}, why, false}; }
};

} // namespace velmora
