// The settings file: the program's only store. Every value is read when it is needed and written
// the moment it changes; what one step changes can be gathered and written together.
#pragma once

#include "base/ProfileCache.h"
#include "base/ProfileText.h"
#include "settings/GatheredValues.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <span>

namespace velmora {

/// Reads a value of the settings file: the stored text, cut to 254 characters, empty when section,
/// key or file is missing.
[[nodiscard]] QString ReadINI(QStringView section, QStringView key, const QString &file);

/// Writes a value of the settings file: of a text of several lines, the first. Section and file are
/// made as needed. A write that fails is silent.
void WriteINI(QStringView section, QStringView key, QStringView value, const QString &file);

/// The settings at one moment, for a step that reads many values and waits for nothing.
class SettingsSnapshot
{
public:
    explicit SettingsSnapshot(QByteArray bytes)
        : text_(std::make_shared<const ProfileText>(std::move(bytes)))
    {
    }

    explicit SettingsSnapshot(std::shared_ptr<const ProfileText> text)
        : text_(std::move(text))
    {
    }

    /// Same result as ReadINI at that moment.
    [[nodiscard]] QString read(QStringView section, QStringView key) const;

    /// The value's leading number.
    [[nodiscard]] double number(QStringView section, QStringView key) const;

    /// The value as a whole number; throws OverflowError, which names section, key and value.
    [[nodiscard]] qint32 int32(QStringView section, QStringView key) const;

private:
    std::shared_ptr<const ProfileText> text_;
};

/// Settings that are being changed together: reading gives what has been written so far.
class SettingsDraft
{
public:
    explicit SettingsDraft(QByteArray bytes)
        : text_(std::move(bytes))
    {
    }

    /// Same result as ReadINI would give.
    [[nodiscard]] QString read(QStringView section, QStringView key) const;

    [[nodiscard]] SettingsSnapshot snapshot() const { return SettingsSnapshot(text_.bytes()); }

    /// Of a text of several lines, writes the first.
    void write(QStringView section, QStringView key, QStringView value);

    /// Removes a key.
    void remove(QStringView section, QStringView key);

    [[nodiscard]] const QByteArray &bytes() const { return text_.bytes(); }

private:
    void apply(const ProfileEdit &edit);

    ProfileText text_;
};

enum class SettingsChange {
    Made, // also when there was nothing to change
    Failed
};

/// A value that is to be stored.
struct SettingsValue
{
    QString section;
    QString key;
    QString value;
};

class SettingsFile
{
public:
    /// programFolder: native path of the folder that holds Velmora.ini.
    explicit SettingsFile(QString programFolder);

    [[nodiscard]] const QString &programFolder() const { return programFolder_; }

    /// Native path of the file.
    [[nodiscard]] QString path() const;

    [[nodiscard]] QString read(QStringView section, QStringView key) const;

    /// The value's leading number, 0 when there is none.
    [[nodiscard]] double number(QStringView section, QStringView key) const;

    /// The value as a whole number; throws OverflowError, which names section, key and value.
    [[nodiscard]] qint16 int16(QStringView section, QStringView key) const;
    [[nodiscard]] qint32 int32(QStringView section, QStringView key) const;

    void write(QStringView section, QStringView key, QStringView value) const;
    void write(QStringView section, QStringView key, qint64 value) const;

    /// Writes values of different keys in one go. only: what the file must still hold when they
    /// reach it, for values that are of no use after another program has changed that.
    SettingsChange write(std::span<const SettingsValue> values,
                         const std::optional<SettingsValue> &only = std::nullopt) const;

    [[nodiscard]] SettingsSnapshot snapshot() const;

    /// Reads, decides and writes as one step that no other program can interrupt: all that `change`
    /// writes is stored together or not at all. What was gathered is settled before.
    [[nodiscard]] SettingsChange
    change(const std::function<void(SettingsDraft &draft)> &change) const;

    /// True for a file that has grown too large to be read or changed quickly.
    [[nodiscard]] bool isLarge() const;

    /// Values written from here on are gathered until settle() stores them together, so that a step
    /// that changes many of them replaces the file once. Reading gives them at once. Not for longer
    /// than a turn of the event loop, since a kill loses them. False, without effect, while values
    /// are being gathered already and for a file that has grown large.
    bool gather() const;

    [[nodiscard]] bool isGathering() const { return gathered_.has_value(); }

    /// Stores what was gathered, unless change() has done so; tells whether it is stored. Does
    /// nothing when nothing was gathered.
    SettingsChange settle() const;

private:
    QString programFolder_;
    mutable ProfileCache cache_;
    mutable std::optional<GatheredValues> gathered_;
    mutable SettingsChange early_ = SettingsChange::Made; // of what change() had to settle
};

} // namespace velmora
