// How the program and its cameras are doing, for a person or a monitoring system.
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

/// A new field for cameras must be filled in by cameraStatus() and written by cameraObject().
struct CameraStatus
{
    CameraAddress camera;
    QString name;    // empty when it has none
    QString address; // in readable form
    bool on = false;
    CameraState state = CameraState::Unknown;
    std::optional<QString> failure; // if the camera is not well
    std::optional<QString> newest;  // UTC
    qint64 stored = 0;              // images in its folder, as far as it can be read
    std::optional<QString> unread;  // why its folder could not be read to its end
    std::optional<QString> late;    // since when nothing new has come for too long, UTC
};

/// A new field must be filled in by programStatus() and written by statusObject(); isWell() decides
/// what it means for the exit status.
struct ProgramStatus
{
    std::optional<qint64> pid; // of the program running on the folder; 0 when it does not say
    QString storage;           // native path
    bool storagePresent = false;
    std::optional<qint64> freeBytes;  // nothing when it cannot be determined
    std::optional<double> fullInDays; // at the last day's rate; nothing without one
    bool isDiskLow = false;           // less is free than should be
    std::vector<CameraStatus> cameras;
};

/// holder: the process running on the program folder; report: its answer, if any.
[[nodiscard]] ProgramStatus programStatus(const SettingsFile &settings, const NativePaths &paths,
                                          std::optional<qint64> holder,
                                          const std::optional<ProgramReport> &report);

/// True when nothing needs attention: the storage folder is there, no camera of an active group has
/// failed or is late, their folders can be read to the end, and the disk has room.
[[nodiscard]] bool isWell(const ProgramStatus &status);

/// The exit status is 0 when all is well, 1 when something is wrong, 2 when no program is running.
[[nodiscard]] CommandResult statusResult(const ProgramStatus &status, const StatusCommand &command);

} // namespace velmora
