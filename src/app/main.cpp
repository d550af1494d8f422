// Starts the program: with windows, or capturing without any.
#include "admin/Administration.h"
#include "admin/ProgramDesk.h"
#include "admin/RunningProgram.h"
#include "app/CommandLine.h"
#include "app/DesktopIdentity.h"
#include "app/DesktopSession.h"
#include "app/HeadlessCapture.h"
#include "app/HeadlessFilm.h"
#include "app/Program.h"
#include "app/ProgramFolder.h"
#include "app/SettingsPreparation.h"
#include "app/SingleInstance.h"
#include "app/UserHome.h"
#include "app/WindowSupport.h"
#include "base/DesktopOpener.h"
#include "base/KeptMemory.h"
#include "base/SignalWatcher.h"
#include "base/StandardFiles.h"
#include "capture/PictureSources.h"
#include "settings/SettingsFaults.h"
#include "ui/Accessibility.h"
#include "ui/ToFront.h"

#include <QApplication>
#include <QMessageBox>
#include <QScopeGuard>
#include <QTextStream>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

using namespace velmora;

constexpr int kUsageStatus = 2;
constexpr int kNoStorageStatus = 1;
constexpr int kTakenStatus = 1;
constexpr int kOutputStatus = 1;

template <typename... Handlers>
struct Overloaded : Handlers...
{
    using Handlers::operator()...;
};

int fail(const QString &text, int status)
{
    QTextStream(stderr) << "velmora: " << text << Qt::endl;
    return status;
}

// What a full disk or a closed pipe has swallowed must not pass for done.
int print(const QString &text, int status)
{
    QTextStream out(stdout);
    out << text << Qt::flush;
    const bool isWritten =
        out.status() == QTextStream::Ok && std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
    return isWritten ? status
                     : fail(QStringLiteral("standard output cannot be written"), kOutputStatus);
}

QStringList argumentList(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    return arguments;
}

const QString kNoDisplay = QStringLiteral(
    "there is no display that can be opened. Use --capture to capture without windows.");

const QString kNoThreads = QStringLiteral(
    "the system allows no more threads or memory, without which there can be no windows");

const QString kNoFolder = QStringLiteral("the program folder cannot be made");

// When a display cannot be opened, the toolkit aborts with a core dump; a message serves the user
// better.
void onToolkitMessage(QtMsgType type, const QMessageLogContext &, const QString &)
{
    if (type == QtFatalMsg) {
        std::_Exit(fail(kNoDisplay, 1));
    }
}

std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv, bool headless)
{
    if (headless) {
        return std::make_unique<QCoreApplication>(argc, argv);
    }
    avoidHangingBus();
    const QtMessageHandler usual = qInstallMessageHandler(onToolkitMessage);
    auto application = std::make_unique<QApplication>(argc, argv);
    qInstallMessageHandler(usual);
    introduceToDesktop();
    installAccessibility();
    return application;
}

int leaveToOther(Claim claim, pid_t holder)
{
    const QString text =
        QStringLiteral("already running with this program folder, as %1").arg(processText(holder));
    if (claim == Claim::Refused) {
        return fail(text, kTakenStatus);
    }
    QTextStream(stdout) << "Velmora is " << text << ". Its window comes to the front." << Qt::endl;
    return 0;
}

void tellTrouble(CaptureEngine &engine, const SingleInstance &instance)
{
    if (!instance.trouble().isEmpty()) {
        engine.problems().warn(instance.trouble());
    }
}

// Without its settings the program would take every camera for removed.
int refuseToStart(const QString &fault, SignalWatcher &signalWatcher, SingleInstance &instance,
                  bool isHeadless)
{
    const int status = fail(fault, 1);
    if (!isHeadless) {
        QMessageBox box(QMessageBox::Critical, QCoreApplication::applicationName(), fault);
        QObject::connect(&instance, &SingleInstance::shown, &box, [&box] { bringToFront(box); });
        QObject::connect(&signalWatcher, &SignalWatcher::endRequested, &box, &QDialog::reject);
        QObject::connect(&box, &QDialog::finished, &QCoreApplication::quit);
        box.open();
        QApplication::exec();
    }
    return status;
}

// Until the guard ends, which is before what it follows.
auto follow(ProgramDesk &desk, const HealthBook &health)
{
    desk.follow(&health);
    return qScopeGuard([&desk] { desk.follow(nullptr); });
}

int captureWithoutWindows(CaptureEngine &engine, ProgramDesk &desk, SignalWatcher &signalWatcher,
                          const SingleInstance &instance, std::optional<int> passes)
{
    SmtpClient mail;
    HeadlessCapture capture(engine, mail, passes);
    const auto unfollow = follow(desk, capture.health());
    tellTrouble(engine, instance);
    QObject::connect(&signalWatcher, &SignalWatcher::endRequested, &capture, &HeadlessCapture::end);
    return capture.start() ? QCoreApplication::exec() : kNoStorageStatus;
}

int runWindows(const QString &folder, CaptureEngine &engine, ProgramDesk &desk,
               SignalWatcher &signalWatcher, SingleInstance &instance)
{
    XdgOpener opener;
    SmtpClient mail;
    const DesktopSession session(folder);
    Program program(engine, opener, mail);
    const auto unfollow = follow(desk, program.health());
    QObject::connect(&signalWatcher, &SignalWatcher::endRequested, &program, &Program::end);
    QObject::connect(&session, &DesktopSession::ended, &program, &Program::end);
    QObject::connect(&instance, &SingleInstance::shown, &program, &Program::bringToFront);
    QObject::connect(&program, &Program::ending, &instance, &SingleInstance::stopAnswering);
    program.start();
    tellTrouble(engine, instance);
    return QApplication::exec();
}

int runIn(const QString &folder, SingleInstance &instance, const RunRequest &request)
{
    SignalWatcher signalWatcher;
    prepareSettings(folder, qEnvironmentVariable("windir"));
    if (const auto fault = readingFault(SettingsFile(folder))) {
        return refuseToStart(*fault, signalWatcher, instance, request.headless);
    }
    SystemClock clock;
    PictureSources pictures;
    CaptureEngine engine(folder, clock, pictures);
    ProgramDesk desk(folder, engine.table(), engine.store());
    QObject::connect(&desk, &ProgramDesk::settingsChanged, &engine, &CaptureEngine::adoptSettings);
    desk.open(); // before the windows are made, so that no command meets a program without a desk
    return request.headless
               ? captureWithoutWindows(engine, desk, signalWatcher, instance, request.passes)
               : runWindows(folder, engine, desk, signalWatcher, instance);
}

QString missingForWindows(const QStringList &arguments)
{
    if (!namesDisplay(arguments)) {
        return kNoDisplay;
    }
    return tryThreads() ? QString() : kNoThreads;
}

int run(int argc, char **argv, const RunRequest &request)
{
    if (!request.headless) {
        const QString missing = missingForWindows(argumentList(argc, argv));
        if (!missing.isEmpty()) {
            return fail(missing, 1);
        }
        std::signal(SIGPIPE, SIG_IGN); // the output of windows may go unread
    }
    const auto application = makeApplication(argc, argv, request.headless);
    QCoreApplication::setApplicationName(QStringLiteral("Velmora"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VELMORA_VERSION));
    QGuiApplication::setQuitOnLastWindowClosed(false);

    const QString folder = programFolder(currentPlace(request.programFolder));
    if (folder.isEmpty()) {
        return fail(kNoFolder, 1);
    }
    SingleInstance instance(folder);
    const Claim claim = instance.claim(request.headless ? Front::None : Front::Windows);
    return claim == Claim::First ? runIn(folder, instance, request)
                                 : leaveToOther(claim, instance.holder());
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
        return fail(kNoFolder, 1);
    }
    // the settings of a program that is running are not replaced
    prepareSettings(folder, processOn(folder) ? QString() : qEnvironmentVariable("windir"));
    return tell(administer(folder, request.command, [](const QString &place) {
        const std::optional<pid_t> process = processOn(place);
        return process ? std::optional<qint64>(*process) : std::nullopt;
    }));
}

// Fonts come with the toolkit's windows, of which the film shows none.
std::unique_ptr<QCoreApplication> makeFilmApplication(int &argc, char **argv, bool needsFonts)
{
    if (!needsFonts) {
        return std::make_unique<QCoreApplication>(argc, argv);
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<QGuiApplication>(argc, argv);
}

int makeFilm(int argc, char **argv, const FilmRequest &request)
{
    const auto application = makeFilmApplication(argc, argv, request.isStamped);
    QCoreApplication::setApplicationName(QStringLiteral("Velmora"));
    const QString folder = programFolder(currentPlace(request.programFolder));
    if (folder.isEmpty()) {
        return fail(kNoFolder, 1);
    }
    SignalWatcher signalWatcher;
    SystemClock clock;
    HeadlessFilm film(request, folder, clock);
    QObject::connect(&signalWatcher, &SignalWatcher::endRequested, &film, &HeadlessFilm::interrupt);
    film.start();
    QCoreApplication::exec();
    return film.status();
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
        Overloaded{[&](const RunRequest &asked) { return run(argc, argv, asked); },
                   [&](const AdminRequest &asked) { return administerFolder(argc, argv, asked); },
                   [&](const FilmRequest &asked) { return makeFilm(argc, argv, asked); },
                   [](const PrintRequest &asked) { return print(asked.text, 0); },
                   [](const UsageError &error) { return fail(error.text, kUsageStatus); }},
        request);
}
