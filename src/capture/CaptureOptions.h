// The options of the capture that stand in boxes of the main window: tick length and time-out. They
// are texts, as typed; every change is stored at once. What counts follows the text at every
// moment, but the text itself is put right only when nobody is typing it.
#pragma once

#include "settings/SettingsFile.h"

#include <QObject>

#include <chrono>

namespace velmora {

/// Tick length and time-out as stored, brought into their range: whole seconds, as text.
[[nodiscard]] QString storedTempo(const SettingsSnapshot &settings);
[[nodiscard]] QString storedTimeout(const SettingsSnapshot &settings);

/// Store what their boxes would hold once they have put a text into its range.
void setStoredTempo(SettingsDraft &draft, QStringView text);
void setStoredTimeout(SettingsDraft &draft, QStringView text);

class CaptureOptions : public QObject
{
    Q_OBJECT

public:
    explicit CaptureOptions(const SettingsFile &settings);

    /// Takes the stored values, with "1" and "5" for those that are no number or 0; stores nothing.
    void load();

    /// Another program has changed the settings: takes over what is stored, unless a box is being
    /// edited.
    void adoptStored();

    /// Tick length in seconds.
    [[nodiscard]] const QString &tempo() const { return tempo_; }

    /// Download time-out in seconds.
    [[nodiscard]] const QString &timeout() const { return timeout_; }

    /// The box changed, or a rule put a value back into it; a text that is there already is no
    /// change.
    void setTempo(const QString &text);
    void setTimeout(const QString &text);

    /// The box is being edited, or no longer is. What a rule would have put into it meanwhile is
    /// put there at the end.
    void beginTempoEdit();
    void endTempoEdit();
    void beginTimeoutEdit();
    void endTimeoutEdit();

    /// Brings the tick length into 1 to 60 seconds, puts it back without decimals, and gives the
    /// interval of the timer, which still has them: 2.7 gives 2700 ms and leaves 2 in the box.
    std::chrono::milliseconds normaliseTempo();

    /// The time-out that counts: positive, whole and at least 5 seconds.
    [[nodiscard]] std::chrono::seconds downloadLimit() const;

    /// Puts the time-out that counts into the box.
    void normaliseTimeout();

Q_SIGNALS:
    void tempoChanged(const QString &text);
    void timeoutChanged(const QString &text);

private:
    /// Whether a box is being edited, and whether a rule waits for the end of that.
    struct Hand
    {
        bool edits = false;
        bool ruleWaits = false;

        /// True when a rule may change the text now.
        bool mayPutRight();
        /// True when a rule has waited.
        bool end();
    };

    const SettingsFile &settings_;
    QString tempo_;
    QString timeout_;
    Hand tempoHand_;
    Hand timeoutHand_;
};

} // namespace velmora
