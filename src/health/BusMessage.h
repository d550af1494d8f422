// Calls as the desktop's message bus wants them, in the form that D-Bus gives them.
#pragma once

#include <QByteArray>
#include <QString>

namespace velmora {

/// What a client says first: that it is this user's. The bus answers with a line that begins with
/// "OK".
[[nodiscard]] QByteArray busLogin();

/// What follows that answer: the first call on the connection, by which the client gets its name.
[[nodiscard]] QByteArray busHello();

/// Shows a text of several words on the desktop. serial: another one for each call, from 2 on.
/// text: as the service wants it, in its simple markup.
[[nodiscard]] QByteArray busNotice(quint32 serial, const QString &text);

} // namespace velmora
