// Where the cameras of a list would go in the table, before any of them is stored.
#pragma once

#include "admin/CameraList.h"
#include "cameras/CameraAddress.h"
#include "settings/SettingsFile.h"

#include <optional>
#include <vector>

namespace velmora {

enum class Fate {
    Added,
    Double, // this address is already in the table or the list
    Wrong
};

struct PlannedCamera
{
    ListedCamera camera;
    Fate fate = Fate::Wrong;
    std::optional<CameraAddress> place; // where it goes; for a double, where its address already is
    QString remark;                     // in words, empty for one that is simply added

    bool operator==(const PlannedCamera &) const = default;
};

struct ListPlan
{
    std::vector<PlannedCamera> cameras; // in the order of the list
    QString fault;                      // concerns the whole list

    bool operator==(const ListPlan &) const = default;

    /// True when all of it can be stored, doubles left out.
    [[nodiscard]] bool isSound() const;

    /// What prevents it: the first faults, one a line.
    [[nodiscard]] QString faults() const;
};

/// A camera with group and row goes there, one with only a group into its first free row, any other
/// into the first free row of all. Places given in the list are reserved before free rows are
/// assigned.
[[nodiscard]] ListPlan planList(CameraList list, const SettingsSnapshot &settings);

/// Stores what is to be added.
void applyPlan(const ListPlan &plan, SettingsDraft &draft);

/// Makes a camera in a row that has none. Nothing is left of an earlier one; what was chosen for a
/// row that never had one is meant for this, except for its name if one is given.
void storeCamera(SettingsDraft &draft, CameraAddress camera, const QString &address,
                 const QString &name);

/// The first row without an address.
[[nodiscard]] std::optional<CameraAddress> firstFreeRow(const SettingsSnapshot &settings);

/// The cameras of the table as a list.
[[nodiscard]] std::vector<ListedCamera> tableAsList(const SettingsSnapshot &settings);

} // namespace velmora
