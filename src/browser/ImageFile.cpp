#include "browser/ImageFile.h"

#include "cameras/StorageFolder.h"

namespace velmora {

QString nativePath(const StorageFolder &storage, const ImageFile &image)
{
    return image.isNone() ? QString() : storage.native(image.folder) + u'/' + image.name;
}

} // namespace velmora
