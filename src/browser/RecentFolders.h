// What was read of the folders used last.
#pragma once

#include "base/FolderStamp.h"

#include <QList>
#include <QString>

#include <cstddef>
#include <memory>

namespace velmora {

/// Keeps a value for each of some folders; those used longest ago go first. Value: has bytes().
template <typename Value>
class RecentFolders
{
public:
    /// mostBytes: what all values may take together; the one kept last stays whatever it takes.
    RecentFolders(qsizetype most, std::size_t mostBytes)
        : most_(most)
        , mostBytes_(mostBytes)
    {
    }

    /// The folder's value, if it was kept with this stamp.
    [[nodiscard]] std::shared_ptr<const Value> find(const QString &folder, const FolderStamp &stamp)
    {
        for (qsizetype i = 0; i < entries_.size(); ++i) {
            if (entries_[i].folder == folder && entries_[i].stamp == stamp) {
                entries_.move(i, 0);
                return entries_.first().value;
            }
        }
        return nullptr;
    }

    void keep(const QString &folder, const FolderStamp &stamp, std::shared_ptr<const Value> value)
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
        FolderStamp stamp;
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
    QList<Entry> entries_; // the one used last first
};

} // namespace velmora
