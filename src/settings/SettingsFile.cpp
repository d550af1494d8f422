#include "settings/SettingsFile.h"

#include "base/AnsiText.h"
#include "base/LeadingNumber.h"
#include "base/ProfileFile.h"
#include "settings/Numbers.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace velmora {
namespace {

// Values are read into a buffer of 255 characters, including the terminating one.
constexpr qsizetype kBufferSize = 255;

template <typename Settings, typename Convert>
auto wholeNumber(const Settings &settings, QStringView section, QStringView key, Convert convert)
{
    const QString value = settings.read(section, key);
    try {
        return convert(leadingNumber(value));
    } catch (const OverflowError &) {
        throw OverflowError(
            QStringLiteral("Overflow: [%1] %2=%3 in the settings file is out of range")
                .arg(section, key, value));
    }
}

// Text after a line end would become lines of the file, and might be anything.
QStringView firstLine(QStringView value)
{
    const auto *const end =
        std::ranges::find_if(value, [](QChar c) { return c == u'\r' || c == u'\n' || c == u'\0'; });
    return value.first(end - value.begin());
}

ProfileValue profileValue(QStringView section, QStringView key, QStringView value)
{
    return {toAnsi(section), toAnsi(key), toAnsi(firstLine(value))};
}

std::optional<ProfileCondition> conditionOf(const SettingsValue &value)
{
    return ProfileCondition{toAnsi(value.section), toAnsi(value.key), toAnsi(value.value),
                            kBufferSize};
}

SettingsChange changeOf(ProfileWrite written)
{
    return written == ProfileWrite::Failed ? SettingsChange::Failed : SettingsChange::Made;
}

QString readFrom(const ProfileText &text, QStringView section, QStringView key)
{
    const QByteArrayView value =
        text.value(toAnsi(section), toAnsi(key)).value_or(QByteArrayView());
    return fromAnsi(value.first(qMin(value.size(), kBufferSize - 1)));
}

} // namespace

QString ReadINI(QStringView section, QStringView key, const QString &file)
{
    return fromAnsi(readProfileValue(file, toAnsi(section), toAnsi(key), {}, kBufferSize));
}

void WriteINI(QStringView section, QStringView key, QStringView value, const QString &file)
{
    // Deliberately unchecked: a setting that cannot be stored must not disturb the user.
    static_cast<void>(
        writeProfileValue(file, toAnsi(section), toAnsi(key), toAnsi(firstLine(value))));
}

QString SettingsSnapshot::read(QStringView section, QStringView key) const
{
    return readFrom(*text_, section, key);
}

double SettingsSnapshot::number(QStringView section, QStringView key) const
{
    return leadingNumber(read(section, key));
}

qint32 SettingsSnapshot::int32(QStringView section, QStringView key) const
{
    return wholeNumber(*this, section, key, toInt32);
}

QString SettingsDraft::read(QStringView section, QStringView key) const
{
    return readFrom(text_, section, key);
}

void SettingsDraft::write(QStringView section, QStringView key, QStringView value)
{
    const QByteArray stored = toAnsi(firstLine(value));
    apply(text_.edit(toAnsi(section), toAnsi(key), QByteArrayView(stored)));
}

void SettingsDraft::remove(QStringView section, QStringView key)
{
    apply(text_.edit(toAnsi(section), toAnsi(key), std::nullopt));
}

void SettingsDraft::apply(const ProfileEdit &edit)
{
    if (!edit.isEmpty()) {
        QByteArray bytes = text_.bytes();
        text_ = ProfileText(bytes.replace(edit.offset, edit.removed, edit.inserted));
    }
}

SettingsFile::SettingsFile(QString programFolder)
    : programFolder_(std::move(programFolder))
    , cache_(path())
{
}

QString SettingsFile::path() const
{
    return programFolder_ + QStringLiteral("/Velmora.ini");
}

QString SettingsFile::read(QStringView section, QStringView key) const
{
    return gathered_ ? readFrom(*gathered_->text(), section, key)
                     : fromAnsi(cache_.value(toAnsi(section), toAnsi(key), kBufferSize));
}

double SettingsFile::number(QStringView section, QStringView key) const
{
    return leadingNumber(read(section, key));
}

qint16 SettingsFile::int16(QStringView section, QStringView key) const
{
    return wholeNumber(*this, section, key, toInt16);
}

qint32 SettingsFile::int32(QStringView section, QStringView key) const
{
    return wholeNumber(*this, section, key, toInt32);
}

void SettingsFile::write(QStringView section, QStringView key, QStringView value) const
{
    if (gathered_) {
        gathered_->add(profileValue(section, key, value));
    } else {
        WriteINI(section, key, value, path());
    }
}

void SettingsFile::write(QStringView section, QStringView key, qint64 value) const
{
    write(section, key, QString::number(value));
}

SettingsChange SettingsFile::write(std::span<const SettingsValue> values,
                                   const std::optional<SettingsValue> &only) const
{
    const std::optional<ProfileCondition> condition = only ? conditionOf(*only) : std::nullopt;
    std::vector<ProfileValue> stored;
    for (const SettingsValue &value : values) {
        stored.push_back(profileValue(value.section, value.key, value.value));
        stored.back().only = condition;
    }
    if (!gathered_) {
        return changeOf(writeProfileValues(path(), stored));
    }
    for (ProfileValue &value : stored) {
        gathered_->add(std::move(value));
    }
    return SettingsChange::Made;
}

bool SettingsFile::gather() const
{
    if (gathered_ || isLarge()) {
        return false;
    }
    gathered_.emplace(cache_.text());
    return true;
}

SettingsChange SettingsFile::settle() const
{
    const std::optional<GatheredValues> gathered = std::exchange(gathered_, std::nullopt);
    const SettingsChange early = std::exchange(early_, SettingsChange::Made);
    const SettingsChange last = gathered && !gathered->values().empty()
                                    ? changeOf(writeProfileValues(path(), gathered->values()))
                                    : SettingsChange::Made;
    return early == SettingsChange::Failed ? early : last;
}

SettingsSnapshot SettingsFile::snapshot() const
{
    return SettingsSnapshot(gathered_ ? gathered_->text() : cache_.text());
}

bool SettingsFile::isLarge() const
{
    if (gathered_) { // which only a small one allows
        return false;
    }
    const std::optional<FileStamp> stamp = fileStamp(path());
    return stamp && stamp->bytes > ProfileCache::kLargeBytes;
}

SettingsChange SettingsFile::change(const std::function<void(SettingsDraft &)> &change) const
{
    early_ = settle();
    return changeOf(changeProfile(path(), [&change](const QByteArray &bytes) {
        SettingsDraft draft(bytes);
        change(draft);
        return draft.bytes();
    }));
}

} // namespace velmora
