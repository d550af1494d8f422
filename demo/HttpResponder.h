// Decides what the demonstration cameras answer and how it is delivered. It knows neither sockets
// nor the time of day, so an answer is a function of request and time.
#pragma once

#include "demo/RequestHead.h"

#include <QByteArray>
#include <QDateTime>

#include <optional>

namespace velmora::demo {

enum class Status {
    Ok = 200,
    BadRequest = 400,
    NotFound = 404,
    MethodNotAllowed = 405,
    RequestTimeout = 408,
    HeaderTooLarge = 431
};

enum class Delivery {
    AtOnce,
    Late,    // after a pause, then whole
    Dripped, // piece by piece
    Never    // the connection stays open and silent
};

struct Answer
{
    Delivery delivery = Delivery::AtOnce;
    QByteArray head; // with the empty line at its end
    QByteArray body; // empty for HEAD
};

/// request: nothing when the client sent no valid request. now: the time of the request; pictures
/// show it in its own zone.
[[nodiscard]] Answer answerTo(const std::optional<RequestHead> &request, const QDateTime &now);

/// An answer that says only what went wrong.
[[nodiscard]] Answer errorAnswer(Status status);

} // namespace velmora::demo
