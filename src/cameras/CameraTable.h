// The table of the hundred cameras as the settings file holds it: addresses, options and counters.
#pragma once

#include "cameras/BestTime.h"
#include "cameras/CameraAddress.h"
#include "cameras/LampColour.h"
#include "settings/Keys.h"

#include <QString>

namespace velmora {

/// What a row of the main window shows about a camera.
struct CameraRow
{
    QString url;
    bool automatic = false; // the period follows the measured best time
    bool deleteOld = false; // images older than a month are deleted
    BestTime bestTime;
    LampColour lamp = LampColour::None;
    int loadSeconds = 0; // duration of the last download
    int newImages = 0;   // since the last reset

    /// What its lamp shows while nothing is fetched: without a camera it is red.
    [[nodiscard]] LampColour lampAtRest() const { return url.isEmpty() ? LampColour::Red : lamp; }
};

/// What the scheduler needs to know about a camera.
struct CameraSchedule
{
    QString url;
    bool automatic = false;
    BestTime bestTime;
    QString lastImage; // local date of the last good download, as text

    /// Automatic, and its best time is known: it does not wait for the fixed period.
    [[nodiscard]] bool hasOwnPeriod() const { return automatic && !bestTime.isUnknown(); }
};

/// What the image store needs to know about a camera.
struct CameraRecord
{
    QString lastModified; // date of the last image kept, as text
    QString bestTime;     // as stored
    int newImages = 0;
    bool automatic = false; // true only if its switch is exactly 1
};

/// Section of a group's addresses ("Liste3"), and that of its options and counters ("Groupe3").
[[nodiscard]] QString listSection(int group);
[[nodiscard]] QString groupSection(int group);

/// Key of a row ("AutoDelai7").
[[nodiscard]] QString rowKey(QStringView word, int row);

/// Stores a camera's address along with other changes.
void setUrl(SettingsDraft &draft, CameraAddress camera, QStringView url);

/// Removes everything that a row has gathered in its group's section: options, counters, dates.
void forgetRow(SettingsDraft &draft, CameraAddress camera);

/// Reads and writes straight through to the settings file.
class CameraTable
{
public:
    CameraTable(const SettingsFile &settings, Problems &problems);

    [[nodiscard]] const SettingsFile &settings() const { return settings_; }

    [[nodiscard]] QString url(CameraAddress camera) const;

    /// The camera folder name, "\…\", of the stored address; empty for an empty row.
    [[nodiscard]] QString CameraFolderName(CameraAddress camera) const;

    /// True when the group takes part in capture: its switch is exactly 1.
    [[nodiscard]] bool isGroupActive(int group) const;

    [[nodiscard]] CameraRow row(CameraAddress camera) const;
    [[nodiscard]] CameraRow row(const SettingsSnapshot &settings, CameraAddress camera) const;

    [[nodiscard]] static QString url(const SettingsSnapshot &settings, CameraAddress camera);
    [[nodiscard]] static bool isGroupActive(const SettingsSnapshot &settings, int group);
    [[nodiscard]] static CameraSchedule schedule(const SettingsSnapshot &settings,
                                                 CameraAddress camera);

    /// True when the camera's images are to be deleted after a month.
    [[nodiscard]] static bool deletesOld(const SettingsSnapshot &settings, CameraAddress camera);

    [[nodiscard]] CameraRecord record(const SettingsSnapshot &settings, CameraAddress camera) const;

    /// True when a camera's last download left its lamp in that colour.
    [[nodiscard]] static bool hasLamp(const SettingsSnapshot &settings, CameraAddress camera,
                                      LampColour colour);

    /// True when the row has recorded a download, be it one of an earlier address.
    [[nodiscard]] static bool wasLoaded(const SettingsSnapshot &settings, CameraAddress camera);

    /// A row's value as stored.
    [[nodiscard]] QString value(RowKey key, CameraAddress camera) const;
    void setValue(RowKey key, CameraAddress camera, QStringView value) const;

    /// The same to be written along with others.
    [[nodiscard]] static SettingsValue valueToSet(RowKey key, CameraAddress camera, QString value);

    /// The condition that the row still has this address, for changes that belong to its camera.
    [[nodiscard]] static SettingsValue whileUrlIs(CameraAddress camera, QString url);

    void setUrl(CameraAddress camera, QStringView url) const;
    void setGroupActive(int group, bool active) const;

    /// A lamp's colour as stored.
    [[nodiscard]] static QString lampText(LampColour colour);

    /// Resets the stored counters to those of a row without a camera: red, no time, nothing loaded.
    void clearRow(CameraAddress camera) const;

private:
    [[nodiscard]] int number(const SettingsSnapshot &settings, RowKey key,
                             CameraAddress camera) const;

    const SettingsFile &settings_;
    Problems &problems_;
};

} // namespace velmora
