// How many random sequences the models play.
#pragma once

#include <QtGlobal>

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

} // namespace velmora::test
