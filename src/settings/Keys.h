// Every key of the settings file, in one table: where its value is, what kind of value it is, and
// its default. No section and no key is spelled out anywhere else.
#pragma once

#include "base/LeadingNumber.h"
#include "settings/Problems.h"
#include "settings/SettingsFile.h"

#include <array>

namespace velmora {

/// A text and its default. As for all keys, `settings` is a SettingsFile, a SettingsSnapshot or a
/// SettingsDraft; only a SettingsFile or a SettingsDraft can be written.
struct TextKey
{
    QStringView section;
    QStringView key;
    QStringView usual = {};

    template <typename Settings>
    [[nodiscard]] QString read(const Settings &settings) const
    {
        const QString stored = settings.read(section, key);
        return stored.isEmpty() ? usual.toString() : stored;
    }

    template <typename Settings>
    void write(Settings &settings, QStringView value) const
    {
        settings.write(section, key, value);
    }

    void remove(SettingsDraft &draft) const { draft.remove(section, key); }
};

/// 1 or 0; any number other than 0 is on.
struct SwitchKey
{
    QStringView section;
    QStringView key;
    bool usual = false;

    template <typename Settings>
    [[nodiscard]] bool read(const Settings &settings) const
    {
        const QString stored = settings.read(section, key);
        return stored.isEmpty() ? usual : leadingNumber(stored) != 0;
    }

    template <typename Settings>
    void write(Settings &settings, bool on) const
    {
        settings.write(section, key, on ? u"1" : u"0");
    }
};

/// A number; any value is accepted.
struct NumberKey
{
    QStringView section;
    QStringView key;

    template <typename Settings>
    [[nodiscard]] double read(const Settings &settings) const
    {
        return leadingNumber(settings.read(section, key));
    }

    template <typename Settings>
    void write(Settings &settings, int value) const
    {
        settings.write(section, key, QString::number(value));
    }
};

/// A 16-bit number. One that does not fit gives a warning and counts as 0.
struct Int16Key
{
    QStringView section;
    QStringView key;

    [[nodiscard]] int read(const SettingsFile &settings, Problems &problems) const
    {
        return problems.orDefault([&] { return settings.int16(section, key); }, 0);
    }

    void write(const SettingsFile &settings, int value) const
    {
        settings.write(section, key, value);
    }
};

/// A position in a list of ten, stored as a 16-bit number. One beyond the list counts as 0.
struct PositionKey : Int16Key
{
    [[nodiscard]] int read(const SettingsFile &settings, Problems &problems) const
    {
        constexpr int kPositions = 10;
        const int stored = Int16Key::read(settings, problems);
        return stored >= 0 && stored < kPositions ? stored : 0;
    }
};

/// Kept for each camera in its group's section: the row number follows the word.
struct RowKey
{
    QStringView word;
};

/// Chosen for a single camera, in a section of its own.
struct CameraKey
{
    QStringView key;
};

namespace keys {

inline constexpr QStringView kControl = u"Control";
inline constexpr QStringView kHealth = u"Health";
inline constexpr QStringView kMail = u"Mail";
inline constexpr QStringView kVelmora = u"Velmora";

// The program as a whole.
inline constexpr TextKey kStRep{kControl, u"StRep", u"C:\\in"};
inline constexpr TextKey kTakenFrom{kVelmora, u"TakenFrom"}; // the former file, if still there
inline constexpr TextKey kStorageBefore{kVelmora, u"StorageBefore"}; // while the box is empty
inline constexpr SwitchKey kDebug{kControl, u"Debug"};
inline constexpr TextKey kTempo{kControl, u"Tempo"};
inline constexpr TextKey kTIO{kControl, u"TIO"};
inline constexpr PositionKey kSelecteur{{kControl, u"Selecteur"}};
inline constexpr QStringView kMemSource = u"MemSource"; // the group's number follows it
inline constexpr Int16Key kPlancheTop{kControl, u"Planche.Top"};
inline constexpr Int16Key kPlancheLeft{kControl, u"Planche.Left"};
inline constexpr Int16Key kFilmTop{kControl, u"fCine.Top"};
inline constexpr Int16Key kFilmLeft{kControl, u"fCine.left"};

// The image browser and its tools.
inline constexpr SwitchKey kAuto{kControl, u"Auto"};
inline constexpr SwitchKey kCamera{kControl, u"Camera"};
inline constexpr SwitchKey kScan{kControl, u"Scan"};
inline constexpr PositionKey kBrowserGroup{{kControl, u"lstP"}};
inline constexpr PositionKey kBrowserRow{{kControl, u"lstImg"}};
inline constexpr NumberKey kVitesse{kControl, u"Vitesse"};
inline constexpr PositionKey kImportGroup{{kControl, u"ICam"}};
inline constexpr PositionKey kImportRow{{kControl, u"ILien"}};
inline constexpr TextKey kImportFolder{kControl, u"Dir"};
inline constexpr TextKey kImportDrive{kControl, u"Drive"};
inline constexpr TextKey kImportFilter{kControl, u"Patern", u"*.jpg"};

// The cameras: addresses in the group's list, options and counters in the group. The group's number
// follows the word of either section.
inline constexpr QStringView kListWord = u"Liste";
inline constexpr QStringView kGroupWord = u"Groupe";
inline constexpr RowKey kUrl{u"lst"};
inline constexpr QStringView kGroupSwitch = u"LstAct";
inline constexpr RowKey kAutoDelai{u"AutoDelai"};
inline constexpr RowKey kEffM{u"EffM"};
inline constexpr RowKey kBestTime{u"BestTime"};
inline constexpr RowKey kSB{u"SB"};
inline constexpr RowKey kTimeLoad{u"TimeLoad"};
inline constexpr RowKey kNewImages{u"lNew"};
inline constexpr RowKey kLastModified{u"LastModified"};
inline constexpr RowKey kLocalTime{u"LocalTime"};
inline constexpr std::array kValuesOfARow{kAutoDelai, kEffM,      kBestTime,     kSB,
                                          kTimeLoad,  kNewImages, kLastModified, kLocalTime};

// A single camera; digest and look are those of the last picture kept. Group and row follow the
// section's word.
inline constexpr QStringView kCameraWord = u"Camera";
inline constexpr CameraKey kName{u"Name"};
inline constexpr CameraKey kKeep{u"Keep"};
inline constexpr CameraKey kUser{u"User"};
inline constexpr CameraKey kPassword{u"Password"};
inline constexpr CameraKey kDigest{u"Digest"};
inline constexpr CameraKey kLook{u"Look"};
inline constexpr std::array kCameraChoices{kName, kKeep, kUser, kPassword, kDigest, kLook};

// Camera health; each camera has a key that says it is never late.
inline constexpr SwitchKey kNotices{kHealth, u"Notices", true};
inline constexpr SwitchKey kNoticeMail{kHealth, u"Mail"};
inline constexpr SwitchKey kDeleteOldest{kHealth, u"DeleteOldest"};
inline constexpr SwitchKey kStopWhenFull{kHealth, u"StopWhenFull"};
inline constexpr QStringView kNever = u"Never"; // group and row follow it
inline constexpr NumberKey kLateTimes{kHealth, u"LateTimes"};
inline constexpr NumberKey kLimitMegabytes{kHealth, u"LimitMB"};

// The account that mails are sent from.
inline constexpr TextKey kMailServer{kMail, u"Server"};
inline constexpr TextKey kMailTo{kMail, u"To"};
inline constexpr TextKey kMailFrom{kMail, u"From"};
inline constexpr TextKey kMailUser{kMail, u"User"};
inline constexpr TextKey kMailPassword{kMail, u"Password"};

} // namespace keys

} // namespace velmora
