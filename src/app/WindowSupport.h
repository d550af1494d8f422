// What windows need of the system. Where it is missing, the toolkit aborts or waits for ever, so it
// is tried before the toolkit is started.
#pragma once

#include <QStringList>

namespace velmora {

/// True if the arguments or the environment name a display; whether it can be opened shows later.
[[nodiscard]] bool namesDisplay(const QStringList &arguments);

/// Makes as many threads as the toolkit will, one for the display and one for the message bus, and
/// ends them. False if the system does not allow them.
[[nodiscard]] bool tryThreads();

/// Keeps the toolkit away from a message bus that does not admit clients, with a line on standard
/// error. Takes up to two seconds.
void avoidHangingBus();

} // namespace velmora
