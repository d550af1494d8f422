// Where the cameras of a list would go in the table, before one of them is stored.
#pragma once

#include "admin/CameraList.h"
#include "cameras/CameraAddress.h"
#include "settings/SettingsFile.h"

#include <optional>
#include <vector>

namespace velmora {

enum class Fate {
    Added,
    Double, // the table or the list has this address already
    Wrong
};

struct PlannedCamera
{
    ListedCamera camera;
    Fate fate = Fate::Wrong;
    std::optional<CameraAddress> place; // where it goes; of a double, where its address stands
    QString remark;                     // in words, empty for one that is simply added

    bool operator==(const PlannedCamera &) const = default;
};

struct ListPlan
{
    std::vector<PlannedCamera> cameras; // in the order of the list
    QString fault;                      // of the whole list

    bool operator==(const ListPlan &) const = default;

    /// True when all of it can be stored, doubles left out.
    [[nodiscard]] bool isSound() const;

    /// What stands in the way: the first faults, a line each.
    [[nodiscard]] QString faults() const;
};

/// A camera with group and row goes there, one with a group into its first free row, any other into
/// the first free row of all. Places given in the list are taken before free rows are dealt out.
[[nodiscard]] ListPlan planList(CameraList list, const SettingsSnapshot &settings);

/// Stores what is to be added.
void carryOut(const ListPlan &plan, SettingsDraft &draft);

/// Makes a camera of a row that had none: its address, and nothing left of an earlier one.
void storeCamera(SettingsDraft &draft, CameraAddress camera, const QString &address,
                 const QString &name);

/// The first row without address, in a group or in all.
[[nodiscard]] std::optional<CameraAddress> firstFreeRow(const SettingsSnapshot &settings,
                                                        std::optional<int> group);

/// The cameras of the table as a list.
[[nodiscard]] std::vector<ListedCamera> tableAsList(const SettingsSnapshot &settings);

} // namespace velmora
