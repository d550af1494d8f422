// Capture options edited in boxes of the main window: tick length and time-out. They are texts, as
// typed; every change is stored at once. The value in force follows the text at every moment, but
// the text itself is corrected only when no one is typing it.
#pragma once

#include "settings/SettingsFile.h"

#include <QObject>

#include <chrono>
#include <optional>

namespace velmora {

/// Tick length and time-out as stored, brought into range: whole seconds, as text.
[[nodiscard]] QString storedTempo(const SettingsSnapshot &settings);
[[nodiscard]] QString storedTimeout(const SettingsSnapshot &settings);

/// Stores what the box would hold once the text was brought into range.
void setStoredTempo(SettingsDraft &draft, QStringView text);
void setStoredTimeout(SettingsDraft &draft, QStringView text);

class CaptureOptions : public QObject
{
    Q_OBJECT

public:
    explicit CaptureOptions(const SettingsFile &settings);

    /// Loads the stored values, with "1" and "5" for those that are 0 or not a number; stores
    /// nothing.
    void load();

    /// Another program has changed the settings: takes the stored values. A box that is being
    /// edited takes its own at the end, unless another text was typed into it.
    void adoptStored();

    /// Tick length in seconds.
    [[nodiscard]] const QString &tempo() const { return tempo_; }

    /// Download time-out in seconds.
    [[nodiscard]] const QString &timeout() const { return timeout_; }

    /// The box changed, or a rule put a value back into it; setting the same text is no change.
    void setTempo(const QString &text);
    void setTimeout(const QString &text);

    /// The box is being edited, or no longer is. A correction held back meanwhile is made at the
    /// end.
    void beginTempoEdit();
    void endTempoEdit();
    void beginTimeoutEdit();
    void endTimeoutEdit();

    /// Brings the tick length into 1 to 60 seconds, puts it back without decimals, and returns the
    /// timer's interval, which still has them: 2.7 gives 2700 ms and leaves 2 in the box.
    std::chrono::milliseconds normaliseTempo();

    /// The time-out in force: positive, whole and at least 5 seconds.
    [[nodiscard]] std::chrono::seconds downloadLimit() const;

    /// Puts the time-out in force into its box.
    void normaliseTimeout();

Q_SIGNALS:
    void tempoChanged(const QString &text);
    void timeoutChanged(const QString &text);

private:
    /// Whether a box is being edited, and what is waiting for that to end.
    struct Hand
    {
        bool edits = false;
        bool ruleWaits = false;
        QString before;                   // text at the start of the edit
        std::optional<QString> elsewhere; // stored by another program since then

        void begin(const QString &text);
        /// True when a text stored by another program has to wait. text: that in the box.
        bool keepsWaiting(const QString &stored, const QString &text);
        /// True when a rule may correct the text now.
        bool mayPutRight();
        /// True when a rule was waiting.
        bool end();
    };

    void storeTempo(const QString &text);
    void storeTimeout(const QString &text);

    const SettingsFile &settings_;
    QString tempo_;
    QString timeout_;
    Hand tempoHand_;
    Hand timeoutHand_;
};

} // namespace velmora
