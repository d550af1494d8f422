// Reads the files of a folder piece by piece, so that a very full folder holds nobody up: names
// come straight from the system's own records, without a question to the file system for each.
#pragma once

#include "base/UniqueFd.h"

#include <QByteArrayView>
#include <QString>

#include <cstddef>
#include <sys/types.h>
#include <vector>

namespace velmora {

/// One reading of a folder, in the order in which the file system keeps it. Files and links to
/// files count, folders and other things do not.
class FolderScan
{
public:
    static constexpr std::size_t kUsualBuffer = 128 * 1024;

    /// path: native. Without a folder there, or without the right to read it, the scan is at its
    /// end from the start.
    explicit FolderScan(const QString &path, std::size_t bufferBytes = kUsualBuffer);

    [[nodiscard]] bool isOpen() const { return static_cast<bool>(folder_); }

    /// Reads one buffer of records, some thousand with the usual buffer, and calls
    /// `visit(QByteArrayView name)` for each file among them; false at the end of the folder. The
    /// name is native bytes with a NUL behind them, and lives as long as the call.
    template <typename Visit>
    bool readSome(Visit visit)
    {
        const long filled = fill();
        for (long at = 0; at < filled;) {
            const Record &entry = record(at);
            if (isFile(entry)) {
                visit(QByteArrayView(entry.name));
            }
            at += entry.length;
        }
        return filled > 0;
    }

private:
    // What the system fills in: fixed fields, then the name.
    struct Record
    {
        ino64_t inode;
        off64_t next;
        unsigned short length;
        unsigned char type;
        char name[1];
    };

    [[nodiscard]] const Record &record(long at) const
    {
        return *reinterpret_cast<const Record *>(buffer_.data() + at);
    }

    [[nodiscard]] long fill();
    [[nodiscard]] bool isFile(const Record &entry) const;

    UniqueFd folder_;
    std::vector<std::byte> buffer_;
};

} // namespace velmora
