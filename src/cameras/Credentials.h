// What may be shown of a camera's address outside the box in which it is typed.
#pragma once

#include <QString>

namespace velmora {

/// A text with an address in it as logs, messages, captions and outputs show it: without anything
/// between its "://" (or ":/", or its start if it has no scheme) and its last "@", since "/", "?"
/// and "#" may be characters of a password; and with "***" for the value of every field
/// ("?a=b&c=d", ";a=b",
/// "/a=b/", "/a:b/") whose name is not known to be harmless, of which a name with brackets is cut.
/// A field without a name counts as a value, with or without the "=" at the end of Base64, and so
/// does a part that holds the code of "@" or "=", and whatever follows a "#". An address that was
/// cut before its "@" ends with "***" behind its "://". Text before the address ("Test http://…")
/// stays, as do brackets and quotes around it.
[[nodiscard]] QString withoutCredentials(const QString &address);

/// The same for an address alone, which may be typed no further than its login: without a scheme,
/// it ends with "***" behind its first ":" ("admin:***") unless a port stands there, which is one
/// to five digits before a "/", or the last of a host with a dot, in brackets or named "localhost".
[[nodiscard]] QString addressWithoutCredentials(const QString &address);

/// A native path as messages show it: of folders named after an address, without what
/// addressWithoutCredentials() hides of that address.
[[nodiscard]] QString pathWithoutCredentials(const QString &path);

} // namespace velmora
