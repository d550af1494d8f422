// Tells this machine from others, and its present run from earlier ones.
#pragma once

#include <QByteArray>

namespace velmora {

/// Distinguishes this machine, from its start to its end, from all others; its containers share it.
/// 36 characters; empty where the system does not say.
[[nodiscard]] QByteArray bootId();

} // namespace velmora
