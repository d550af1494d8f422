// SIGTERM and SIGINT as an event of the event loop.
#pragma once

#include <QObject>

namespace velmora {

/// One at a time in a process.
class SignalWatcher : public QObject
{
    Q_OBJECT

public:
    SignalWatcher();
    SignalWatcher(const SignalWatcher &) = delete;
    SignalWatcher &operator=(const SignalWatcher &) = delete;
    SignalWatcher(SignalWatcher &&) = delete;
    SignalWatcher &operator=(SignalWatcher &&) = delete;
    ~SignalWatcher() override;

Q_SIGNALS:
    void endRequested();
};

} // namespace velmora
