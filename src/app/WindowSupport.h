// What windows need of the system. Where it is missing, the toolkit aborts or waits for ever, so it
// is tried before the toolkit is started.
#pragma once

#include <QStringList>

namespace velmora {

/// What to say when no display can be opened.
extern const QString kNoDisplay;

/// True if the arguments or the environment name a display; whether it can be opened shows later.
[[nodiscard]] bool namesDisplay(const QStringList &arguments);

/// Why there can be no windows: no display is named, or the system does not allow the threads that
/// the toolkit makes. Empty when nothing is missing.
[[nodiscard]] QString missingForWindows(const QStringList &arguments);

/// Keeps the toolkit away from a message bus that does not admit clients, with a line on standard
/// error. Takes up to two seconds.
void avoidHangingBus();

} // namespace velmora
