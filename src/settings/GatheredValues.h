// Values on their way to the settings file, together.
#pragma once

#include "base/ProfileText.h"

#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace velmora {

/// The text of the settings with values that the file does not have yet.
class GatheredValues
{
public:
    /// text: what the file holds.
    explicit GatheredValues(std::shared_ptr<const ProfileText> text)
        : text_(std::move(text))
    {
    }

    /// Of several values of a key the last one counts.
    void add(ProfileValue value);

    /// The text with all of the values.
    [[nodiscard]] const std::shared_ptr<const ProfileText> &text();

    [[nodiscard]] std::span<const ProfileValue> values() const { return values_; }

private:
    std::shared_ptr<const ProfileText> text_;
    std::vector<ProfileValue> values_; // of different keys
    std::vector<ProfileValue> fresh_;  // of different keys, not in the text yet
};

} // namespace velmora
