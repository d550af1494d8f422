// What of a camera's address may be shown outside the box in which it is typed.
#pragma once

#include <QString>

namespace velmora {

/// The address as logs, messages, captions and outputs show it: without whatever stands between
/// its "://" (also ":/", or the begin where it has no scheme) and its last "@", since "/", "?" and
/// "#" may be characters of a password; and with "***" for the value of every field ("?a=b&c=d",
/// ";a=b", "/a=b/") whose name is not known to be harmless. A field without a name is a value. Text
/// before the address ("Test http://…"), brackets and quotes around it stay.
[[nodiscard]] QString withoutCredentials(const QString &address);

} // namespace velmora
