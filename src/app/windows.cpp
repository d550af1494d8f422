// What the library of windows offers to the program, which loads it when windows are wanted, or a
// film is to be made.
#include "app/HeadlessFilm.h"
#include "app/WindowSupport.h"
#include "app/WindowsRun.h"
#include "start/Console.h"
#include "start/ProgramFolder.h"

#include <QGuiApplication>

#include <csignal>

namespace {

using namespace velmora;

int runWindows(int argc, char **argv, const RunRequest &request)
{
    const QString missing = missingForWindows(argumentList(argc, argv));
    if (!missing.isEmpty()) {
        return fail(missing, kFailedStatus);
    }
    std::signal(SIGPIPE, SIG_IGN); // the output of windows may go unread
    return WindowsRun().run(argc, argv, request);
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
    nameProgram();
    const QString folder = programFolder(currentPlace(request.programFolder));
    if (folder.isEmpty()) {
        return fail(kNoProgramFolder, kFailedStatus);
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

extern "C" Q_DECL_EXPORT int velmoraRunWithWindows(int argc, char **argv)
{
    const StartRequest request = parseCommandLine(argumentList(argc, argv));
    if (const auto *const film = std::get_if<FilmRequest>(&request)) {
        return makeFilm(argc, argv, *film);
    }
    return runWindows(argc, argv, std::get<RunRequest>(request));
}
