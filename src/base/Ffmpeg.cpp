#include "base/Ffmpeg.h"

#include <QStandardPaths>

#include <csignal>
#include <fcntl.h>
#include <new>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace velmora {
namespace {

const QString kProgram = QStringLiteral("ffmpeg");
constexpr qsizetype kMostComplaints = 4096;
constexpr int kPipeBytes = 1 << 20;
constexpr int kReapMs = 1000;

// Runs in the new process. The parent is this program's one thread, so it is sent the signal when
// the program ends, however it ends; had that happened before, there would be none.
void prepare(pid_t parent, rlim_t memoryBytes, int heir)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) {
        ::_exit(EXIT_FAILURE);
    }
    ::setsid();
    const rlimit memory{memoryBytes, memoryBytes};
    ::setrlimit(RLIMIT_DATA, &memory);
    ::fcntl(STDIN_FILENO, F_SETPIPE_SZ, kPipeBytes);
    if (heir >= 0) {
        ::fcntl(heir, F_SETFD, 0);
    }
}

} // namespace

Ffmpeg::Ffmpeg(qint64 memoryBytes, int heir)
{
    setChildProcessModifier([parent = ::getpid(), bytes = static_cast<rlim_t>(memoryBytes), heir] {
        prepare(parent, bytes, heir);
    });
    connect(this, &QProcess::stateChanged, this, &Ffmpeg::killRest);
    connect(this, &QProcess::readyReadStandardError, this, &Ffmpeg::take);
    connect(this, &QProcess::finished, this, &Ffmpeg::report);
    connect(this, &QProcess::errorOccurred, this, &Ffmpeg::reportError, Qt::QueuedConnection);
}

Ffmpeg::~Ffmpeg()
{
    disconnect();
    killAll();
    waitForFinished(kReapMs);
}

void Ffmpeg::begin(const QStringList &arguments)
{
    start(kProgram, arguments);
    group_ = processId();
}

void Ffmpeg::killAll()
{
    killGroup();
    if (state() != NotRunning) {
        kill(); // it may not have left our group yet
    }
}

void Ffmpeg::killGroup()
{
    if (group_ > 0) {
        ::kill(static_cast<pid_t>(-group_), SIGKILL);
        group_ = 0;
    }
}

// Once the leader is reaped and the last of its group has ended, the system may give the group's
// number to another: only at the leader's end is it certain to be ours.
void Ffmpeg::killRest(ProcessState state)
{
    if (state == NotRunning) {
        killGroup();
    }
}

QString Ffmpeg::lastLine() const
{
    const QByteArray said = complaints_.trimmed();
    return QString::fromUtf8(said.sliced(said.lastIndexOf('\n') + 1)).trimmed();
}

// An exception must not pass through the event loop.
void Ffmpeg::take()
{
    try {
        complaints_ = (complaints_ + readAllStandardError()).right(kMostComplaints);
    } catch (const std::bad_alloc &) {
        complaints_.clear();
    }
}

void Ffmpeg::reportError(ProcessError error)
{
    if (error == FailedToStart) {
        const bool isInstalled = !QStandardPaths::findExecutable(kProgram).isEmpty();
        Q_EMIT ended(isInstalled ? FfmpegEnd::NotStarted : FfmpegEnd::NotInstalled);
    }
}

void Ffmpeg::report(int exitCode, ExitStatus status)
{
    Q_EMIT ended(status == CrashExit ? FfmpegEnd::Killed
                 : exitCode == 0     ? FfmpegEnd::Good
                                     : FfmpegEnd::Failed);
}

} // namespace velmora
