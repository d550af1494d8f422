// Turns the signals that ask the program to end into events of the event loop.
#pragma once

#include <QObject>

namespace velmora {

/// They are SIGTERM, SIGINT and, unless it was ignored at the start, SIGHUP, which a terminal sends
/// when it is closed. One at a time in a process; once it is gone, signals change nothing. A signal
/// ends the process as usual when an earlier one has waited for the event loop for more than five
/// seconds.
class SignalWatcher : public QObject
{
    Q_OBJECT

public:
    SignalWatcher();
    Q_DISABLE_COPY_MOVE(SignalWatcher)
    ~SignalWatcher() override;

Q_SIGNALS:
    void endRequested();
};

} // namespace velmora
