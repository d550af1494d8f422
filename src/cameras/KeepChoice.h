// Which pictures of a camera are kept when they come without a date.
#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace velmora {

enum class Keep {
    Dated, // those that the server says are new: the rule for every camera until another is chosen
    Differing, // also undated ones whose bytes differ from the last one kept
    Clearly    // also undated ones that look different enough
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

/// The choice that such a text names, whether or not its percentage is in range; nothing for any
/// other text.
[[nodiscard]] std::optional<KeepChoice> keepFromText(QStringView text);

/// What to tell the user of a percentage that is out of range.
[[nodiscard]] QString percentRefusal();

} // namespace velmora
