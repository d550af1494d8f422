// What is remembered of a picture so that the camera's next one can be compared with it.
#pragma once

#include "base/Clock.h"
#include "capture/ReplyBody.h"

#include <QByteArray>
#include <QCoro/QCoroTask>

#include <optional>

namespace velmora {

/// As kept in the settings: texts of a fixed length.
struct PictureMark
{
    QByteArray digest; // of the bytes, hexadecimal; empty when there is none
    QByteArray look;   // a small grey reduction, Base64; empty when there is none

    bool operator==(const PictureMark &) const = default;
};

enum class MarkKind { Digest, DigestAndLook };

/// Uses the digest made while the body arrived, or else reads the body in pieces; handles events in
/// between. A body that cannot be read has no digest, one that is not a picture no look.
[[nodiscard]] QCoro::Task<PictureMark> markOf(const ReplyBody *body, MarkKind kind, Clock *clock);

/// How much two pictures differ, in percent: the mean difference of the grey levels of their small
/// reductions. Nothing when either has no look.
[[nodiscard]] std::optional<double> differencePercent(const PictureMark &a, const PictureMark &b);

} // namespace velmora
