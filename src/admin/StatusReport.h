// How the program and its cameras are, for a person or a monitoring system.
#pragma once

#include "admin/AdminCommand.h"
#include "admin/RunningProgram.h"
#include "base/NativePaths.h"
#include "cameras/CameraAddress.h"
#include "settings/SettingsFile.h"

#include <QString>

#include <optional>
#include <vector>

namespace velmora {

enum class CameraState { Good, Failed, Loading, Unknown };

/// A further field of a camera is filled in by cameraStatus() and written by cameraObject().
struct CameraStatus
{
    CameraAddress camera;
    QString name;    // empty when it has none
    QString address; // as people read it
    bool on = false;
    CameraState state = CameraState::Unknown;
    std::optional<QString> failure; // of a camera that is not well
    std::optional<QString> newest;  // universal time
    qint64 stored = 0;              // images in its folder
    std::optional<QString> late;    // since when nothing new came for too long, universal time
};

/// A further field is filled in by programStatus() and written by statusObject(); what it means for
/// the exit status is said in isWell().
struct ProgramStatus
{
    std::optional<qint64> pid; // of the program that runs on the folder; 0 when it does not say
    QString storage;           // native path
    bool storagePresent = false;
    std::optional<qint64> freeBytes;  // nothing when it cannot be asked
    std::optional<double> fullInDays; // at the rate of the last day; nothing without one
    bool isDiskLow = false;           // less is free than is to be
    std::vector<CameraStatus> cameras;
};

/// holder: the process that runs on the program folder; report: what it says, if it answers.
[[nodiscard]] ProgramStatus programStatus(const SettingsFile &settings, const NativePaths &paths,
                                          std::optional<qint64> holder,
                                          const std::optional<ProgramReport> &report);

/// True when nothing needs looking after: the storage is there and no camera of a group that is on
/// has failed or is late, and the disk has room.
[[nodiscard]] bool isWell(const ProgramStatus &status);

/// The exit status is 0 when all is well, 1 when something is wrong, 2 when nothing runs.
[[nodiscard]] CommandResult statusResult(const ProgramStatus &status, const StatusCommand &command);

} // namespace velmora
