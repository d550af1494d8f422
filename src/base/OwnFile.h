// Files of this user that no other user can open, and so cannot lock either.
#pragma once

#include "base/UniqueFd.h"

#include <QByteArray>

#include <fcntl.h>

namespace velmora {

/// Flags for opening what may have been replaced meanwhile: do not follow a link, do not wait for a
/// pipe.
inline constexpr int kOwnFileFlags = O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

struct OwnFile
{
    UniqueFd file;  // errno says why, if it is not open
    bool isTrusted; // false for a stranger's file
};

/// Opens a file for reading and writing; a missing one is made for its owner alone (0600): this
/// user, or the folder's owner when this user is the administrator. The process's mask takes no
/// rights from its owner, and those that one has taken are given back. path: native bytes.
[[nodiscard]] OwnFile openOwnFile(const QByteArray &path);

/// Gives a file that the administrator makes in a user's folder to that user, so that he is not
/// shut out. path: native bytes.
void giveToFolderOwner(int file, const QByteArray &path);

/// True for an ordinary file with a single name that belongs to this user or to the owner of its
/// folder. A stranger's file would let him shut everyone else out, and writing through a second
/// name of another file would destroy that file.
[[nodiscard]] bool isOwnFile(int file, const QByteArray &path);

} // namespace velmora
