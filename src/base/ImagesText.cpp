#include "base/ImagesText.h"

#include <QCoreApplication>

namespace velmora {

QString imagesText(qint64 count)
{
    const char *const text = count == 1 ? "%1 image" : "%1 images";
    return QCoreApplication::translate("imagesText", text).arg(count);
}

} // namespace velmora
