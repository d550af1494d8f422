// Files of this user that no other can open, so that no other can lock them either.
#pragma once

#include "base/UniqueFd.h"

#include <QByteArray>

#include <fcntl.h>

namespace velmora {

/// With what a file is opened that may be something else by now: without following a link, and
/// without waiting for a pipe.
inline constexpr int kOwnFileFlags = O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

struct OwnFile
{
    UniqueFd file;  // errno tells why it is not open
    bool isTrusted; // false for what a stranger has put there
};

/// Opens a file for reading and writing, and makes it when missing, for its owner alone (0600):
/// this user, or the folder's owner when this is the administrator. path: native bytes.
[[nodiscard]] OwnFile openOwnFile(const QByteArray &path);

/// True for an ordinary file with one name that belongs to this user or to the owner of its folder.
/// What a stranger has put there would let him shut everybody out, and writing into a second name
/// of some other file would destroy that.
[[nodiscard]] bool isOwnFile(int file, const QByteArray &path);

} // namespace velmora
