// A list of cameras as a person brings it: addresses one a line, or a table with names and places.
#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>
#include <vector>

namespace velmora {

/// A camera of a list. What is wrong with it is told in words and makes the rest meaningless.
struct ListedCamera
{
    int line = 0; // counted from 1
    QString name;
    QString address;
    std::optional<int> group; // 0-based, as the list gives them
    std::optional<int> row;
    QString fault;

    bool operator==(const ListedCamera &) const = default;
};

struct CameraList
{
    std::vector<ListedCamera> cameras;
    QString fault; // why nothing of it could be read, empty when it could
};

/// Reads a list. Encoding and separator (comma, semicolon, tab) are found; a first line with the
/// word "address" names the columns (name, address, group, row, in any order), without one a table
/// has them in this order. A line that begins with "#" counts for nothing.
[[nodiscard]] CameraList readCameraList(QByteArrayView bytes);

/// The same as a table, with a first line that names the columns; UTF-8.
[[nodiscard]] QByteArray cameraListText(const std::vector<ListedCamera> &cameras);

} // namespace velmora
