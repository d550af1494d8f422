// What ends the program: SIGTERM, SIGINT and, when wanted, the end of standard input. Each arrives
// as a signal of the event loop, so that the program ends by leaving the loop.
#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <memory>

namespace velmora::demo {

enum class Lifetime { UntilSignal, UntilSignalOrStdinCloses };

class StopRequests : public QObject
{
    Q_OBJECT

public:
    /// Keeps SIGTERM and SIGINT waiting until an object of this class takes them. Called before any
    /// thread is started, or a thread could be killed by one.
    static void holdSignals();

    /// Needs the event loop's application object and held signals.
    explicit StopRequests(Lifetime lifetime);
    Q_DISABLE_COPY_MOVE(StopRequests)
    ~StopRequests() override;

Q_SIGNALS:
    void stopRequested();

private:
    void readStandardInput();

    int signalFd_;
    std::unique_ptr<QSocketNotifier> signals_;
    std::unique_ptr<QSocketNotifier> standardInput_;
};

} // namespace velmora::demo
