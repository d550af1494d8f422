// The program running on a program folder, seen from a command beside it.
#pragma once

#include "cameras/CameraAddress.h"
#include "health/CameraHealth.h"

#include <QString>

#include <map>
#include <optional>

namespace velmora {

/// What a running program knows about its cameras that is in no file.
struct ProgramReport
{
    std::map<CameraAddress, QString> failures; // the last one of each camera, in this run
    std::optional<CameraAddress> loading;
    std::optional<std::map<CameraAddress, Moment>> late; // since when; nothing: it does not say
};

/// Tells the program running on this folder (native path without links), if any, that its settings
/// have changed, and waits until it has taken them over, for two seconds at most. False if none has
/// answered.
bool tellChange(const QString &programFolder);

/// "process 4711"; a number of 0 is one that cannot be told from here.
[[nodiscard]] QString processText(qint64 number);

/// Nothing if no program answers.
[[nodiscard]] std::optional<ProgramReport> askProgram(const QString &programFolder);

} // namespace velmora
