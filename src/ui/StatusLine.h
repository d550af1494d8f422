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
    /// line: outlives this object.
    explicit StatusLine(QLabel &line)
        : line_(line)
    {
    }

    /// A message for the user; an empty one ends the one before.
    void tell(const QString &text);

    /// Something that the capture did. It is not shown while something is kept.
    void tellEvent(const QString &text);

    /// What there is to say as long as it is so; an empty text for nothing.
    void keep(const QString &text);

    /// Why nothing is captured, which counts more than what is kept; an empty text when something
    /// is again. What stood there before comes back.
    void halt(const QString &text);

private:
    [[nodiscard]] const QString &standing() const;
    void show(const QString &text);

    QLabel &line_;
    QString kept_;
    QString halt_;
    QString beforeHalt_;
    QString lastEvent_; // the same again is no reason to take a message away
};

} // namespace velmora
