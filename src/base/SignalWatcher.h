// Turns SIGTERM and SIGINT into events of the event loop.
#pragma once

#include <QObject>

namespace velmora {

/// One at a time in a process; once it is gone, signals change nothing. A signal ends the process
/// as usual when an earlier one has waited for the event loop for more than five seconds.
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
