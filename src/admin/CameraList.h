// A list of cameras as users bring it: addresses one a line, or a table with names and places.
#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>
#include <vector>

namespace velmora {

/// A camera of a list. A fault, in words, makes its other fields meaningless.
struct ListedCamera
{
    int line = 0; // counted from 1
    QString name;
    QString address;
    std::optional<int> group; // 0-based, as given in the list
    std::optional<int> row;
    QString fault;

    bool operator==(const ListedCamera &) const = default;
};

struct CameraList
{
    std::vector<ListedCamera> cameras;
    QString fault; // why it could not be read, empty when it could
};

/// More bytes than a list may have.
inline constexpr qint64 kMostListFileBytes = 2LL * 1024 * 1024;

/// Reads a list. Encoding and separator (comma, semicolon, tab) are detected; a first line with the
/// word "address" names the columns (name, address, group, row, in any order), otherwise a table
/// has them in this order, or the address before the name. Lines that begin with "#" are ignored.
[[nodiscard]] CameraList readCameraList(QByteArrayView bytes);

/// The cameras as a table whose first line names the columns; UTF-8.
[[nodiscard]] QByteArray cameraListText(const std::vector<ListedCamera> &cameras);

} // namespace velmora
