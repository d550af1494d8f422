// Capture options edited in boxes of the main window: tick length and time-out. The value in force
// follows the text at every moment, also while it is being typed.
#pragma once

#include "capture/EditedOption.h"

#include <QObject>

#include <chrono>

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
    [[nodiscard]] const QString &tempo() const { return tempo_.text(); }

    /// Download time-out in seconds.
    [[nodiscard]] const QString &timeout() const { return timeout_.text(); }

    /// The box changed, or a rule put a value back into it; setting the same text is no change.
    void setTempo(const QString &text) { tempo_.set(text); }

    void setTimeout(const QString &text) { timeout_.set(text); }

    /// The box is being edited, or no longer is. A correction held back meanwhile is made at the
    /// end.
    void beginTempoEdit() { tempo_.beginEdit(); }

    void endTempoEdit();

    void beginTimeoutEdit() { timeout_.beginEdit(); }

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
    EditedOption tempo_;
    EditedOption timeout_;
};

} // namespace velmora
