// Calls to the desktop's message bus, in the format of D-Bus.
#pragma once

#include <QByteArray>
#include <QString>

namespace velmora {

/// What a client sends first: that it runs as this user. The bus answers with a line that begins
/// with "OK".
[[nodiscard]] QByteArray busLogin();

/// What follows that answer: the first call on the connection, which gives the client its name.
[[nodiscard]] QByteArray busHello();

/// Shows a text on the desktop. serial: a different one for each call, from 2 on. text: in the
/// service's simple markup.
[[nodiscard]] QByteArray busNotice(quint32 serial, const QString &text);

} // namespace velmora
