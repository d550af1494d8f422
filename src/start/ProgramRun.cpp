#include "start/ProgramRun.h"

#include "admin/ProgramDesk.h"
#include "admin/RunningProgram.h"
#include "capture/CaptureEngine.h"
#include "capture/PictureSources.h"
#include "settings/SettingsFaults.h"
#include "start/Console.h"
#include "start/ProgramFolder.h"
#include "start/SettingsPreparation.h"

#include <QTextStream>

namespace velmora {
namespace {

int leaveToOther(Claim claim, pid_t holder)
{
    const QString text =
        QStringLiteral("already running with this program folder, as %1").arg(processText(holder));
    if (claim == Claim::Refused) {
        return fail(text, kFailedStatus);
    }
    QTextStream(stdout) << "Velmora is " << text << ". Its window comes to the front." << Qt::endl;
    return 0;
}

} // namespace

ProgramRun::Follower::Follower(ProgramDesk &desk, const HealthBook &health)
    : desk_(desk)
{
    desk_.follow(&health);
}

ProgramRun::Follower::~Follower()
{
    desk_.follow(nullptr);
}

void ProgramRun::showRefusal(const QString & /*fault*/, SignalWatcher & /*signalWatcher*/,
                             SingleInstance & /*instance*/)
{
}

void ProgramRun::tellTrouble(const Parts &parts)
{
    if (!parts.instance.trouble().isEmpty()) {
        parts.engine.problems().warn(parts.instance.trouble());
    }
}

int ProgramRun::run(int argc, char **argv, const RunRequest &request)
{
    const auto application = makeApplication(argc, argv);
    nameProgram();
    const QString folder = programFolder(currentPlace(request.programFolder));
    if (folder.isEmpty()) {
        return fail(kNoProgramFolder, kFailedStatus);
    }
    SingleInstance instance(folder);
    const Claim claim = instance.claim(front());
    return claim == Claim::First ? runIn(folder, instance) : leaveToOther(claim, instance.holder());
}

int ProgramRun::runIn(const QString &folder, SingleInstance &instance)
{
    SignalWatcher signalWatcher;
    prepareSettings(folder, qEnvironmentVariable("windir"));
    // Without its settings the program would take every camera for removed.
    if (const auto fault = readingFault(SettingsFile(folder))) {
        fail(*fault, kFailedStatus);
        showRefusal(*fault, signalWatcher, instance);
        return kFailedStatus;
    }
    SystemClock clock;
    PictureSources pictures;
    CaptureEngine engine(folder, clock, pictures);
    ProgramDesk desk(folder, engine.table(), engine.store());
    QObject::connect(&desk, &ProgramDesk::settingsChanged, &engine, &CaptureEngine::adoptSettings);
    desk.open(); // before windows are made, so that no command meets a program without a desk
    return capture({folder, engine, desk, signalWatcher, instance});
}

} // namespace velmora
