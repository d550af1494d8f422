// What was read from the most recently used folders.
#pragma once

#include "base/FileStamp.h"

#include <QList>
#include <QString>

#include <cstddef>
#include <memory>

namespace velmora {

/// Keeps one value for each of several folders; the least recently used go first. Value: has
/// bytes().
template <typename Value>
class RecentFolders
{
public:
    /// mostBytes: for all values together; the newest stays, whatever its size.
    RecentFolders(qsizetype most, std::size_t mostBytes)
        : most_(most)
        , mostBytes_(mostBytes)
    {
    }

    /// The folder's value, if it was stored with this stamp.
    [[nodiscard]] std::shared_ptr<const Value> find(const QString &folder, const FileStamp &stamp)
    {
        for (qsizetype i = 0; i < entries_.size(); ++i) {
            if (entries_[i].folder == folder && entries_[i].stamp == stamp) {
                entries_.move(i, 0);
                return entries_.first().value;
            }
        }
        return nullptr;
    }

    void keep(const QString &folder, const FileStamp &stamp, std::shared_ptr<const Value> value)
    {
        forget(folder);
        entries_.prepend({folder, stamp, std::move(value)});
        while (entries_.size() > 1 && (entries_.size() > most_ || bytes() > mostBytes_)) {
            entries_.removeLast();
        }
    }

    void forget(const QString &folder)
    {
        entries_.removeIf([&folder](const Entry &entry) { return entry.folder == folder; });
    }

private:
    struct Entry
    {
        QString folder;
        FileStamp stamp;
        std::shared_ptr<const Value> value;
    };

    [[nodiscard]] std::size_t bytes() const
    {
        std::size_t sum = 0;
        for (const Entry &entry : entries_) {
            sum += entry.value->bytes();
        }
        return sum;
    }

    qsizetype most_;
    std::size_t mostBytes_;
    QList<Entry> entries_; // most recently used first
};

} // namespace velmora
