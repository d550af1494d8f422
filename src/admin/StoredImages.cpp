#include "admin/StoredImages.h"

#include "base/FolderScan.h"
#include "base/NameStamp.h"

namespace velmora {

StoredImages storedImages(const QString &folder)
{
    StoredImages images;
    QByteArray greatest;
    FolderScan scan(folder);
    while (scan.readSome([&](QByteArrayView name) {
        if (isStamped(name)) {
            ++images.count;
            if (name.compare(greatest) > 0) {
                greatest = name.toByteArray();
            }
        }
    })) {
    }
    images.readError = scan.error();
    const std::optional<WallTime> newest = momentOfName(greatest);
    images.newest = newest == kZeroDate ? std::nullopt : newest;
    return images;
}

} // namespace velmora
