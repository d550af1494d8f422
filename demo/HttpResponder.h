// Decides what the demonstration cameras answer. It knows neither sockets nor the time of day, so
// an answer is a function of request and time.
#pragma once

#include "loopback/Answer.h"
#include "loopback/Request.h"

#include <QDateTime>

namespace velmora::demo {

/// now: the time of the request; pictures show it in its own zone.
[[nodiscard]] loopback::Answer answerTo(const loopback::Request &request, const QDateTime &now);

} // namespace velmora::demo
