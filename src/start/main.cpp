// Starts the program: capturing without windows or doing what a command asks for; with windows, by
// the library that holds them.
#include "admin/Administration.h"
#include "admin/RunningProgram.h"
#include "base/KeptMemory.h"
#include "base/OwnLibrary.h"
#include "base/StandardFiles.h"
#include "capture/CaptureEngine.h"
#include "start/Console.h"
#include "start/HeadlessCapture.h"
#include "start/ProgramFolder.h"
#include "start/ProgramRun.h"
#include "start/SettingsPreparation.h"
#include "start/UserHome.h"
#include "start/WindowsLibrary.h"

#include <QTextStream>

#include <csignal>

namespace {

using namespace velmora;

constexpr int kUsageStatus = 2;
const QString kHeadlessAdvice = QStringLiteral(" Use --capture to capture without windows.");

class CaptureRun final : public ProgramRun
{
public:
    /// passes: stop after this many; none for never.
    explicit CaptureRun(std::optional<int> passes)
        : passes_(passes)
    {
    }

private:
    std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv) override
    {
        return std::make_unique<QCoreApplication>(argc, argv);
    }

    [[nodiscard]] Front front() const override { return Front::None; }

    int capture(const Parts &parts) override
    {
        SmtpClient mail;
        HeadlessCapture capture(parts.engine, mail, passes_);
        const Follower follower(parts.desk, capture.health());
        tellTrouble(parts);
        QObject::connect(&parts.signalWatcher, &SignalWatcher::endRequested, &capture,
                         &HeadlessCapture::end);
        return capture.start() ? QCoreApplication::exec() : kFailedStatus;
    }

    std::optional<int> passes_;
};

template <typename... Handlers>
struct Overloaded : Handlers...
{
    using Handlers::operator()...;
};

// advice: what to do without the library.
int runWithWindows(int argc, char **argv, const QString &advice = QString())
{
    RunWithWindows run = nullptr;
    try {
        run = loadWindows();
    } catch (const NoLibrary &missing) {
        const QString fault = QString::fromLocal8Bit(missing.what());
        return fail(
            QStringLiteral("the library of the windows cannot be loaded: %1.%2").arg(fault, advice),
            kFailedStatus);
    }
    return run(argc, argv);
}

// "velmora: " precedes a message about a failure; after a command that did its work it is a note.
int tell(const CommandResult &result)
{
    const int status = print(result.out, result.status);
    if (!result.error.isEmpty()) {
        QTextStream(stderr) << "velmora: " << result.error << Qt::endl;
    }
    return status;
}

int administerFolder(int argc, char **argv, const AdminRequest &request)
{
    const QCoreApplication application(argc, argv);
    const QString folder = programFolder(currentPlace(request.programFolder));
    if (folder.isEmpty()) {
        return fail(kNoProgramFolder, kFailedStatus);
    }
    // the settings of a program that is running are not replaced
    prepareSettings(folder, processOn(folder) ? QString() : qEnvironmentVariable("windir"));
    return tell(administer(folder, request.command, [](const QString &place) {
        const std::optional<pid_t> process = processOn(place);
        return process ? std::optional<qint64>(*process) : std::nullopt;
    }));
}

} // namespace

int main(int argc, char **argv)
{
    holdStandardFiles();
    provideHome();
    keepFreedMemory();
    std::signal(SIGXFSZ, SIG_IGN); // a write beyond the limit then fails with an error
    const StartRequest request = parseCommandLine(argumentList(argc, argv));
    return std::visit(
        Overloaded{[&](const RunRequest &asked) {
                       return asked.headless ? CaptureRun(asked.passes).run(argc, argv, asked)
                                             : runWithWindows(argc, argv, kHeadlessAdvice);
                   },
                   [&](const FilmRequest &) { return runWithWindows(argc, argv); },
                   [&](const AdminRequest &asked) { return administerFolder(argc, argv, asked); },
                   [](const PrintRequest &asked) { return print(asked.text, 0); },
                   [](const UsageError &error) { return fail(error.text, kUsageStatus); }},
        request);
}
