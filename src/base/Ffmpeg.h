// One run of ffmpeg, which decodes streams and encodes films. Started without a shell; its memory
// is bounded, and nothing of it outlives the object or the program.
#pragma once

#include <QProcess>

namespace velmora {

enum class FfmpegEnd {
    Good,
    Failed, // lastLine() says why
    Killed, // by a signal
    NotStarted,
    NotInstalled
};

/// A group of processes of its own, so that a terminal's interrupt is left to this program, and
/// that what ffmpeg starts can be killed with it.
class Ffmpeg final : public QProcess
{
    Q_OBJECT

public:
    /// memoryBytes: the most that it may take. heir: a file that it is to inherit; -1: none.
    explicit Ffmpeg(qint64 memoryBytes, int heir = -1);
    Q_DISABLE_COPY_MOVE(Ffmpeg)

    /// Kills it as killAll() does, and waits a second at most until it is gone.
    ~Ffmpeg() override;

    /// Starts the ffmpeg on PATH; `ended` follows from the event loop in every case.
    void begin(const QStringList &arguments);

    /// Kills it with all that it started. When it ends itself, the rest is killed then.
    void killAll();

    /// The end of what it has written to its standard error: some kilobytes.
    [[nodiscard]] const QByteArray &complaints() const { return complaints_; }

    /// The last line of that; empty if there is none.
    [[nodiscard]] QString lastLine() const;

Q_SIGNALS:
    void ended(velmora::FfmpegEnd end);

private:
    void killGroup();
    void killRest(ProcessState state);
    void take();
    void reportError(ProcessError error);
    void report(int exitCode, ExitStatus status);

    QByteArray complaints_;
    qint64 group_ = 0;
};

} // namespace velmora
