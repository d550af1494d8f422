// The settings file: the only store of the program. Every value is read when it is needed and
// written the moment it changes.
#pragma once

#include "base/ProfileText.h"

#include <QString>

namespace velmora {

/// The stored text, empty when section, key or file is missing, cut to 254 characters.
[[nodiscard]] QString ReadINI(QStringView section, QStringView key, const QString &file);

/// Stores a text, of several lines the first; section and file are made as needed. A write that
/// fails is silent.
void WriteINI(QStringView section, QStringView key, QStringView value, const QString &file);

/// The settings as they stand at one moment, for a step that reads many values and waits for
/// nothing.
class SettingsSnapshot
{
public:
    explicit SettingsSnapshot(QByteArray bytes)
        : text_(std::move(bytes))
    {
    }

    /// Same result as ReadINI at that moment.
    [[nodiscard]] QString read(QStringView section, QStringView key) const;

    /// The value's leading number.
    [[nodiscard]] double number(QStringView section, QStringView key) const;

    /// The value as a whole number; throws OverflowError, which names section, key and value.
    [[nodiscard]] qint32 int32(QStringView section, QStringView key) const;

private:
    ProfileText text_;
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

    [[nodiscard]] SettingsSnapshot snapshot() const;

private:
    QString programFolder_;
};

} // namespace velmora
