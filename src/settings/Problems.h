// Problems that concern the user: shown once as a plain message, and logged.
#pragma once

#include "settings/EventLog.h"
#include "settings/Numbers.h"

#include <QObject>
#include <QSet>

namespace velmora {

class Problems : public QObject
{
    Q_OBJECT

public:
    explicit Problems(EventLog &log);

    /// A problem that arose on its own and may do so again and again: shown the first time, logged
    /// each time.
    void warn(const QString &text);

    /// A problem with what the user has just done: shown and logged each time.
    void tell(const QString &text);

    /// The result of reading the settings, or `fallback`, with a warning, when its number is out of
    /// range.
    template <typename Read, typename Value>
    Value orDefault(Read read, Value fallback)
    {
        try {
            return static_cast<Value>(read());
        } catch (const OverflowError &error) {
            warn(QString::fromUtf8(error.what()));
            return fallback;
        }
    }

Q_SIGNALS:
    /// A text that the user is to see.
    void warned(const QString &text);

private:
    void showOnce(const QString &text);

    EventLog &log_;
    QSet<QString> shown_;
};

} // namespace velmora
