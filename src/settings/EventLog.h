// The diagnostic log: a text file beside the program that records what windows and capture do, kept
// only while the user wants it, and in at most two generations of about 64 KB.
#pragma once

#include "base/Clock.h"

#include <QObject>
#include <QString>

namespace velmora {

class EventLog : public QObject
{
    Q_OBJECT

public:
    /// programFolder: native path. The log is Velmora.log in it, the previous generation
    /// Velmora.old.
    EventLog(const QString &programFolder, const Clock &clock);

    /// True while the user wants the log (the "Debug" box).
    [[nodiscard]] bool isOn() const { return on_; }

    void setOn(bool on) { on_ = on; }

    /// Native path of the log file, which need not exist.
    [[nodiscard]] const QString &path() const { return path_; }

    /// Appends a line to the event log: the time of day (hh:mm:ss), a blank, the message. A log of
    /// more than 64000 bytes first becomes Velmora.old, and an unfinished last line, left by a
    /// killed run, is ended. Throws FileError when the line cannot be written; none of it remains
    /// then.
    void txtDebug(const QString &message);

    /// Appends a line while the log is on. A log that cannot be written is reported by writeFailed
    /// and stops no work.
    void trace(const QString &message);

Q_SIGNALS:
    void writeFailed(const QString &text);

private:
    QString path_;
    QString oldPath_;
    const Clock &clock_;
    bool on_ = false;
};

} // namespace velmora
