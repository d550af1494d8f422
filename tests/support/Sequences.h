// How many random sequences the models play.
#pragma once

#include <QtGlobal>

#include <vector>

namespace velmora::test {

inline int numberFrom(const char *variable, int otherwise)
{
    bool isNumber = false;
    const int number = qEnvironmentVariableIntValue(variable, &isNumber);
    return isNumber ? number : otherwise;
}

/// From `first` up to below `end`; the number of each is the seed of its random events.
struct Sequences
{
    int first;
    int end;
};

/// VELMORA_SEQUENCES sets their number, otherwise `count`; VELMORA_FIRST_SEQUENCE the first of
/// them, otherwise 0.
inline Sequences sequencesToPlay(int count)
{
    const int first = numberFrom("VELMORA_FIRST_SEQUENCE", 0);
    return {first, first + numberFrom("VELMORA_SEQUENCES", count)};
}

/// One of the kinds of events, each as often as its `chances` say. below: gives a random number
/// from 0 up to below a bound.
template <typename Kind, typename Below>
const Kind &anyOfKinds(const std::vector<Kind> &kinds, Below below)
{
    int left = 0;
    for (const Kind &kind : kinds) {
        left += kind.chances;
    }
    left = below(left);
    auto kind = kinds.begin();
    while ((left -= kind->chances) >= 0) {
        ++kind;
    }
    return *kind;
}

} // namespace velmora::test
