// The random sequences of events that the models play.
#pragma once

#include <QStringList>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velmora::test {

inline int numberFrom(const char *variable, int otherwise)
{
    bool isNumber = false;
    const int number = qEnvironmentVariableIntValue(variable, &isNumber);
    return isNumber ? number : otherwise;
}

/// The number is the seed of its random events.
struct Sequence
{
    int number;
    int events;
};

/// Plays sequences by their numbers, up to the first failure, and returns how many.
/// VELMORA_SEQUENCES sets how many are played, otherwise `count`; VELMORA_FIRST_SEQUENCE the number
/// of the first, otherwise 0.
template <typename Play>
int playSequences(int count, Play play)
{
    const int first = numberFrom("VELMORA_FIRST_SEQUENCE", 0);
    const int end = first + numberFrom("VELMORA_SEQUENCES", count);
    int number = first;
    while (number < end && !testing::Test::HasFailure()) {
        play(number++);
    }
    return number - first;
}

/// What may happen next, and how often beside the others.
template <typename Hands>
struct EventKind
{
    const char *name;
    void (Hands::*run)();
    int chances = 1;
};

/// One of the kinds of events, each as often as its `chances` say. below: gives a random number
/// from 0 up to below a bound.
template <typename Hands, typename Below>
const EventKind<Hands> &anyOfKinds(const std::vector<EventKind<Hands>> &kinds, Below below)
{
    int left = 0;
    for (const EventKind<Hands> &kind : kinds) {
        left += kind.chances;
    }
    left = below(left);
    auto kind = kinds.begin();
    while ((left -= kind->chances) >= 0) {
        ++kind;
    }
    return *kind;
}

/// Plays random events, a check after each, up to the first failure, which names the sequence and
/// the events up to it.
template <typename Hands, typename Below, typename Check>
void playEvents(Hands &hands, const std::vector<EventKind<Hands>> &kinds, Sequence sequence,
                Below below, Check check)
{
    QStringList done;
    for (int i = 0; i < sequence.events && !testing::Test::HasFailure(); ++i) {
        const EventKind<Hands> &kind = anyOfKinds(kinds, below);
        done.append(QString::fromLatin1(kind.name));
        SCOPED_TRACE("sequence " + std::to_string(sequence.number) + ": " +
                     done.join(QStringLiteral(", ")).toStdString());
        (hands.*kind.run)();
        check();
    }
}

} // namespace velmora::test
