// Which pictures of a camera are kept when it sends no date with them.
#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace velmora {

enum class Keep {
    Dated, // those that the server says are new: the rule for every camera until another is chosen
    Differing, // also one without a date whose bytes are others than those of the one kept last
    Clearly    // also one without a date that looks different enough
};

struct KeepChoice
{
    static constexpr int kLeastPercent = 1;
    static constexpr int kMostPercent = 100;

    Keep keep = Keep::Dated;
    int percent = 0; // how different, for Keep::Clearly

    bool operator==(const KeepChoice &) const = default;

    [[nodiscard]] bool isInRange() const
    {
        return keep != Keep::Clearly || (percent >= kLeastPercent && percent <= kMostPercent);
    }
};

/// "dated", "differing", "clearly:5".
[[nodiscard]] QString keepText(const KeepChoice &choice);

/// The choice that such a text tells, whether or not its percentage is in range; nothing for any
/// other text.
[[nodiscard]] std::optional<KeepChoice> keepFromText(QStringView text);

/// What to tell whoever chooses a percentage that is out of range.
[[nodiscard]] QString percentRefusal();

} // namespace velmora
