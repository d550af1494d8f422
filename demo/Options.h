// The command line of the demonstration cameras. Reading it has no effect but to decide what the
// program does.
#pragma once

#include "demo/StopRequests.h"

#include <QString>
#include <QStringList>

namespace velmora::demo {

enum class Action {
    Serve,
    Print, // the text, on standard output: help or version
    Refuse // with the text on standard error
};

struct Options
{
    Action action = Action::Serve;
    QString text;
    quint16 port = 0; // 0: any free one
    Lifetime lifetime = Lifetime::UntilSignal;
};

/// arguments: including the program's name. The name and version shown are the application's.
[[nodiscard]] Options readOptions(const QStringList &arguments);

} // namespace velmora::demo
