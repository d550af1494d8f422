// What ends the program: SIGTERM, SIGINT and, when wanted, the end of standard input. Each arrives
// as a signal of the event loop, so that the program ends by leaving the loop.
#pragma once

#include "base/SignalWatcher.h"

#include <QObject>
#include <QSocketNotifier>

#include <memory>

namespace velmora::demo {

enum class Lifetime { UntilSignal, UntilSignalOrStdinCloses };

class StopRequests : public QObject
{
    Q_OBJECT

public:
    /// Needs the event loop's application object.
    explicit StopRequests(Lifetime lifetime);

Q_SIGNALS:
    void stopRequested();

private:
    void readStandardInput();

    SignalWatcher signals_;
    std::unique_ptr<QSocketNotifier> standardInput_;
};

} // namespace velmora::demo
