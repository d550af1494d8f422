#include "browser/ImageFile.h"

#include "base/FilePath.h"
#include "cameras/StorageFolder.h"

namespace velmora {

// The name of a camera's folder begins with "\" too.
bool isInForce(const StorageFolder &storage, const ImageFile &image)
{
    return image.folder == storage.inForce() || image.folder.startsWith(storage.inForce() + u'\\');
}

QString nativePath(const StorageFolder &storage, const ImageFile &image)
{
    return image.isNone() ? QString() : filePath(storage.native(image.folder), image.name);
}

} // namespace velmora
