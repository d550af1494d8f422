// A run of the program on a program folder: the same steps with windows and without.
#pragma once

#include "base/SignalWatcher.h"
#include "start/CommandLine.h"
#include "start/SingleInstance.h"

#include <QCoreApplication>
#include <QString>

#include <memory>

namespace velmora {

class CaptureEngine;
class HealthBook;
class ProgramDesk;

class ProgramRun
{
public:
    ProgramRun() = default;
    Q_DISABLE_COPY_MOVE(ProgramRun)
    virtual ~ProgramRun() = default;

    /// Claims the program folder, prepares its settings, and captures until the program is to end.
    /// Returns the exit status; a failure is told on standard error.
    int run(int argc, char **argv, const RunRequest &request);

protected:
    /// What a capture works with. Outlives it.
    struct Parts
    {
        const QString &folder; // native path of the program folder
        CaptureEngine &engine;
        ProgramDesk &desk;
        SignalWatcher &signalWatcher;
        SingleInstance &instance;
    };

    /// While it lives, commands are told of the cameras' health. The book outlives it.
    class [[nodiscard]] Follower
    {
    public:
        Follower(ProgramDesk &desk, const HealthBook &health);
        Q_DISABLE_COPY_MOVE(Follower)
        ~Follower();

    private:
        ProgramDesk &desk_;
    };

    /// The toolkit's application. argc and argv outlive it.
    virtual std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv) = 0;

    [[nodiscard]] virtual Front front() const = 0;

    /// The program cannot start, which has been told on standard error. Returns once the user has
    /// seen why.
    virtual void showRefusal(const QString &fault, SignalWatcher &signalWatcher,
                             SingleInstance &instance);

    /// Captures until the program is to end. Returns the exit status.
    virtual int capture(const Parts &parts) = 0;

    /// Warns of what made it difficult to claim the folder.
    static void tellTrouble(const Parts &parts);

private:
    int runIn(const QString &folder, SingleInstance &instance);
};

} // namespace velmora
