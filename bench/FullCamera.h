// A camera folder with very many images.
#pragma once

#include <QString>

namespace velmora::bench {

/// Fills the folder with one image a minute: `pictures` JPEG files of that size at the end of the
/// list, empty files before them.
void fillCamera(const QString &folder, int names, int pictures, double megapixels);

/// Adds an empty file with the name of that image; number: 0-based, in the order of time.
void addEmptyImage(const QString &folder, int number);

} // namespace velmora::bench
