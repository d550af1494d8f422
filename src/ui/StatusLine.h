// The line at the foot of the browser: what happened last, and what there is to say about the
// camera on show.
#pragma once

#include <QLabel>

namespace velmora {

/// A lasting remark is shown until it is no longer true; a message in between is shown until
/// something else happens.
class StatusLine
{
public:
    /// line: outlives this object, which alone writes to it.
    explicit StatusLine(QLabel &line)
        : line_(line)
    {
    }

    /// A message for the user; an empty one clears the previous one.
    void showMessage(const QString &text);

    /// A message that stays while the capture goes on, until another takes its place or
    /// endNotice().
    void showNotice(const QString &text);
    void endNotice();

    /// The outcome of a search. An empty text clears such a message, and no other.
    void showSearch(const QString &text);

    /// Something that the capture did. Not shown while there is a lasting remark.
    void showCaptureEvent(const QString &text);

    /// A lasting remark; an empty text for none.
    void keep(const QString &text);

    /// Why nothing is captured, which takes precedence over a lasting remark; an empty text once
    /// the capture runs again. What was shown before comes back.
    void halt(const QString &text);

    /// Repeats that, replacing what was said since; does nothing while the capture runs.
    void showHalt();

private:
    enum class Kind { Message, Notice, Search, Event, Kept, Halt };

    struct Words
    {
        Kind kind = Kind::Event;
        QString text;
    };

    [[nodiscard]] Words standing() const;
    void show(const Words &words);

    QLabel &line_;
    Words shown_;
    Words beforeHalt_;
    QString kept_;
    QString halt_;
    QString lastEvent_; // the same event again is no reason to remove a message
};

} // namespace velmora
