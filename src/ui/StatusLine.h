// The line at the foot of the browser: what happened last, and what there is to say of the camera
// on show.
#pragma once

#include <QLabel>

namespace velmora {

/// What is kept stands there until it is no longer true; a message in between stands until
/// something else happens.
class StatusLine
{
public:
    /// line: outlives this object, which alone writes into it.
    explicit StatusLine(QLabel &line)
        : line_(line)
    {
    }

    /// A message for the user; an empty one ends the one before.
    void tell(const QString &text);

    /// What came of a search. An empty text ends such a message, and no other.
    void tellSearch(const QString &text);

    /// Something that the capture did. It is not shown while something is kept.
    void tellEvent(const QString &text);

    /// What there is to say as long as it is so; an empty text for nothing.
    void keep(const QString &text);

    /// Why nothing is captured, which counts more than what is kept; an empty text when something
    /// is again. What stood there before comes back.
    void halt(const QString &text);

    /// Says that again, in place of what was said since; nothing while the capture runs.
    void tellHalt();

private:
    enum class Kind { Message, Search, Event, Kept, Halt };

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
    QString lastEvent_; // the same again is no reason to take a message away
};

} // namespace velmora
