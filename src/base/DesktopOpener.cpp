#include "base/DesktopOpener.h"

#include "base/OneShot.h"

#include <QProcess>
#include <QStandardPaths>

#include <utility>

namespace velmora {
namespace {

// The opener's exit statuses, from its manual.
constexpr int kOpened = 0;
constexpr int kNoSuchFile = 2;
constexpr int kNoTool = 3;

QString opener()
{
    return QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
}

FollowOutcome outcomeOf(int exitCode, QProcess::ExitStatus status)
{
    if (status != QProcess::NormalExit) {
        return FollowOutcome::Failed;
    }
    switch (exitCode) {
    case kOpened:
        return FollowOutcome::Opened;
    case kNoSuchFile:
        return FollowOutcome::NotFound;
    case kNoTool:
        return FollowOutcome::NoHandler;
    default:
        return FollowOutcome::Failed;
    }
}

/// A process that is not killed when no one is waiting for it any more.
class LastingProcess final : public QProcess
{
public:
    LastingProcess() = default;
    Q_DISABLE_COPY_MOVE(LastingProcess)

    ~LastingProcess() override { setProcessState(NotRunning); }
};

} // namespace

OpenOutcome XdgOpener::open(const QString &target)
{
    const QString program = opener();
    const bool started = !program.isEmpty() && QProcess::startDetached(program, {target});
    return started ? OpenOutcome::Started : OpenOutcome::NoOpener;
}

QCoro::Task<FollowOutcome> XdgOpener::follow(QString target, std::stop_token stop)
{
    const QString program = opener();
    if (program.isEmpty()) {
        co_return FollowOutcome::NoHandler;
    }
    LastingProcess process;
    OneShot<FollowOutcome> ended;
    QObject::connect(
        &process, &QProcess::finished, &process,
        [&ended](int code, QProcess::ExitStatus status) { ended.set(outcomeOf(code, status)); });
    QObject::connect(&process, &QProcess::errorOccurred, &process,
                     [&ended] { ended.set(FollowOutcome::Failed); });
    const std::stop_callback onStop(std::move(stop),
                                    [&ended] { ended.set(FollowOutcome::Stopped); });
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, {target});
    const FollowOutcome outcome = co_await ended;
    co_return outcome;
}

} // namespace velmora
