#include "settings/GatheredValues.h"

#include <algorithm>
#include <utility>

namespace velmora {
namespace {

// The program spells each key in one way.
void put(std::vector<ProfileValue> &values, ProfileValue value)
{
    const auto known = std::ranges::find_if(values, [&value](const ProfileValue &other) {
        return other.key == value.key && other.section == value.section;
    });
    if (known == values.end()) {
        values.push_back(std::move(value));
    } else {
        *known = std::move(value);
    }
}

} // namespace

void GatheredValues::add(ProfileValue value)
{
    put(fresh_, value);
    put(values_, std::move(value));
}

const std::shared_ptr<const ProfileText> &GatheredValues::text()
{
    if (!fresh_.empty()) {
        text_ = std::make_shared<const ProfileText>(text_->with(std::exchange(fresh_, {})));
    }
    return text_;
}

} // namespace velmora
