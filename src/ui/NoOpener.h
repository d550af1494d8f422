// What is said when the desktop cannot open what was clicked.
#pragma once

#include "cameras/Credentials.h"

#include <QString>

namespace velmora {

/// path: native.
[[nodiscard]] inline QString noOpenerText(const QString &path)
{
    return QStringLiteral("%1 cannot be opened: xdg-open is not installed")
        .arg(pathWithoutCredentials(path));
}

} // namespace velmora
