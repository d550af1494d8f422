#include "cameras/KeepChoice.h"

#include "base/Digits.h"

namespace velmora {
namespace {

constexpr QStringView kDated = u"dated";
constexpr QStringView kDiffering = u"differing";
constexpr QStringView kClearly = u"clearly:";

} // namespace

QString keepText(const KeepChoice &choice)
{
    switch (choice.keep) {
    case Keep::Differing:
        return kDiffering.toString();
    case Keep::Clearly:
        return kClearly.toString() + QString::number(choice.percent);
    case Keep::Dated:
        break;
    }
    return kDated.toString();
}

std::optional<KeepChoice> keepFromText(QStringView text)
{
    if (text == kDated) {
        return KeepChoice{};
    }
    if (text == kDiffering) {
        return KeepChoice{Keep::Differing};
    }
    const QStringView number = text.startsWith(kClearly) ? text.sliced(kClearly.size()) : u"";
    bool isNumber = false;
    const int percent = number.toInt(&isNumber);
    return isNumber && areDigits(number) ? std::optional(KeepChoice{Keep::Clearly, percent})
                                         : std::nullopt;
}

QString percentRefusal()
{
    return QStringLiteral("A picture can differ by 1 to 100 percent");
}

} // namespace velmora
