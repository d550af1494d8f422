// A stored image, by folder and name.
#pragma once

#include <QString>

namespace velmora {

class StorageFolder;

/// Text form of the folder, ending with "\", and the file's name in it; no name, no file.
struct ImageFile
{
    QString folder;
    QString name;

    [[nodiscard]] bool isNone() const { return name.isEmpty(); }

    /// Text form.
    [[nodiscard]] QString path() const { return isNone() ? QString() : folder + name; }

    bool operator==(const ImageFile &) const = default;
};

/// True for an image in a camera's folder in the folder in force, or in that folder itself.
[[nodiscard]] bool isInForce(const StorageFolder &storage, const ImageFile &image);

/// Native path of an image; empty for none.
[[nodiscard]] QString nativePath(const StorageFolder &storage, const ImageFile &image);

} // namespace velmora
