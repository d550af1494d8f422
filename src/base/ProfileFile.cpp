#include "base/ProfileFile.h"

#include "base/FileReader.h"
#include "base/FileWriter.h"
#include "base/ProfileLock.h"
#include "base/SystemCalls.h"
#include "base/UniqueFd.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace velmora {
namespace {

// A write within one page of the page cache is all there or not there at all, even after a kill or
// on a full disk. Replacing the file costs a hundred times as much, and a pass writes several
// values for each camera.
constexpr qsizetype kPageBytes = 4096;
constexpr mode_t kAnyWriter = 0222;

// An open settings file, or none.
struct OpenProfile
{
    UniqueFd file;
    bool missing = false;
    mode_t mode = 0;
    std::optional<QByteArray> bytes; // nothing when there is a file that cannot be read
    std::error_code error;           // why, unless it is no regular file or too large
};

OpenProfile tryToOpen(const QString &path, int access)
{
    // Without O_NONBLOCK, opening a pipe of that name would wait for a writer.
    OpenProfile profile{.file = UniqueFd(::open(QFile::encodeName(path).constData(),
                                                access | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)),
                        .missing = false,
                        .mode = 0,
                        .bytes = std::nullopt,
                        .error = {}};
    if (!profile.file) {
        profile.error = lastError();
        profile.missing =
            profile.error == std::errc::no_such_file_or_directory && isProfileMissing(path);
        return profile;
    }
    struct stat info = {};
    if (::fstat(profile.file.get(), &info) == 0 && S_ISREG(info.st_mode)) {
        profile.mode = info.st_mode;
        if (info.st_size > (access == O_RDONLY ? kMostReadBytes : kMostProfileBytes)) {
            return profile;
        }
        WholeFile read = readExactly(profile.file.get(), info.st_size);
        profile.bytes = std::move(read.bytes);
        profile.error = read.error;
    }
    return profile;
}

// A passing error must not make the settings look empty: counters restarted from zero would be
// written back.
OpenProfile openProfile(const QString &path, int access)
{
    OpenProfile profile = tryToOpen(path, access);
    return profile.bytes || profile.missing ? std::move(profile) : tryToOpen(path, access);
}

bool fitsInPlace(const ProfileEdit &edit, qsizetype fileSize)
{
    const qsizetype length = edit.inserted.size();
    const bool keepsLength = length == edit.removed && length > 0;
    const bool appends = edit.removed == 0 && edit.offset == fileSize && fileSize > 0;
    return (keepsLength || appends) &&
           edit.offset / kPageBytes == (edit.offset + length - 1) / kPageBytes;
}

// A partial write is undone, as far as the system allows.
bool writeInPlace(int file, const ProfileEdit &edit, QByteArrayView before)
{
    if (!writeAllAt(file, edit.inserted, edit.offset)) {
        return true;
    }
    static_cast<void>(writeAllAt(file, before.sliced(edit.offset, edit.removed), edit.offset));
    static_cast<void>(::ftruncate(file, before.size()));
    return false;
}

// Does not copy the text, which may be large.
bool replaceBy(const QString &path, const ProfileEdit &edit, QByteArrayView before)
{
    const std::array pieces = {before.first(edit.offset), QByteArrayView(edit.inserted),
                               before.sliced(edit.offset + edit.removed)};
    return !replaceFile(path, pieces);
}

// Text that could not be read must not be overwritten.
bool mayWrite(const OpenProfile &profile)
{
    return profile.missing || (profile.bytes && (profile.mode & kAnyWriter) != 0);
}

// Another program may have changed the file since the values were decided upon.
std::vector<ProfileValue> stillWanted(const ProfileText &text, std::span<const ProfileValue> values)
{
    std::vector<ProfileValue> wanted;
    std::ranges::copy_if(values, std::back_inserter(wanted), [&text](const ProfileValue &value) {
        return !value.only || text.meets(*value.only);
    });
    return wanted;
}

QByteArrayView withoutTrailingBlanks(QByteArrayView text)
{
    while (!text.isEmpty() && text.back() == ' ') {
        text.chop(1);
    }
    return text;
}

} // namespace

bool isProfileMissing(const QString &path)
{
    struct stat info = {};
    return ::lstat(QFile::encodeName(path).constData(), &info) != 0 && errno == ENOENT;
}

std::optional<QByteArray> readProfile(const QString &path)
{
    OpenProfile profile = openProfile(path, O_RDONLY);
    return profile.missing ? QByteArray() : std::move(profile.bytes);
}

std::error_code profileFault(const QString &path)
{
    const OpenProfile profile = openProfile(path, O_RDONLY);
    return profile.missing ? std::error_code() : profile.error;
}

bool isProfileMounted(const QString &path)
{
    struct statx info = {};
    return ::statx(AT_FDCWD, QFile::encodeName(path).constData(), 0, STATX_TYPE, &info) == 0 &&
           (info.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
}

QByteArray readProfileValue(const QString &path, QByteArrayView section, QByteArrayView key,
                            QByteArrayView fallback, qsizetype size)
{
    const QByteArray bytes = readProfile(path).value_or(QByteArray());
    const QByteArrayView value =
        findProfileValue(bytes, section, key).value_or(withoutTrailingBlanks(fallback));
    return value.first(qMin(value.size(), size - 1)).toByteArray();
}

ProfileWrite writeProfileValue(const QString &path, QByteArrayView section, QByteArrayView key,
                               std::optional<QByteArrayView> value)
{
    const ProfileLock lock(path);
    OpenProfile profile = openProfile(path, O_RDWR);
    if (!mayWrite(profile)) {
        return ProfileWrite::Failed;
    }
    const ProfileText text(std::move(profile.bytes).value_or(QByteArray()));
    const ProfileEdit edit = text.edit(section, key, value);
    if (edit.isEmpty()) {
        return ProfileWrite::Unchanged;
    }
    const bool written = fitsInPlace(edit, text.bytes().size())
                             ? writeInPlace(profile.file.get(), edit, text.bytes())
                             : replaceBy(path, edit, text.bytes());
    return written ? ProfileWrite::Written : ProfileWrite::Failed;
}

ProfileWrite writeProfileValues(const QString &path, std::span<const ProfileValue> values)
{
    const ProfileLock lock(path);
    OpenProfile profile = openProfile(path, O_RDWR);
    if (!mayWrite(profile)) {
        return ProfileWrite::Failed;
    }
    const ProfileText text(std::move(profile.bytes).value_or(QByteArray()));
    const std::vector<ProfileValue> wanted = stillWanted(text, values);
    const std::vector<ProfileEdit> edits = text.edits(wanted);
    if (edits.empty()) {
        return ProfileWrite::Unchanged;
    }
    const QByteArray &before = text.bytes();
    const auto isInPlace = [&before](const ProfileEdit &edit) {
        return edit.removed > 0 && fitsInPlace(edit, before.size());
    };
    const auto write = [&profile, &before](const ProfileEdit &edit) {
        return writeInPlace(profile.file.get(), edit, before);
    };
    const bool written = std::ranges::all_of(edits, isInPlace)
                             ? std::ranges::all_of(edits, write)
                             : !replaceFile(path, text.with(wanted));
    return written ? ProfileWrite::Written : ProfileWrite::Failed;
}

ProfileWrite changeProfile(const QString &path,
                           const std::function<QByteArray(const QByteArray &)> &change)
{
    const ProfileLock lock(path);
    const OpenProfile profile = openProfile(path, O_RDWR);
    if (!mayWrite(profile)) {
        return ProfileWrite::Failed;
    }
    const QByteArray before = profile.bytes.value_or(QByteArray());
    const QByteArray after = change(before);
    if (after == before) {
        return ProfileWrite::Unchanged;
    }
    return replaceFile(path, after) ? ProfileWrite::Failed : ProfileWrite::Written;
}

} // namespace velmora
