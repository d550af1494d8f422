// An option edited in a box of the main window: a text, as typed. Every change is stored at once,
// but a rule corrects the text only when no one is typing it.
#pragma once

#include "settings/Keys.h"
#include "settings/SettingsFile.h"

#include <QObject>

#include <optional>

namespace velmora {

class EditedOption : public QObject
{
    Q_OBJECT

public:
    /// shown: turns a stored text into that of the box. settings: outlives the object.
    EditedOption(const SettingsFile &settings, const TextKey &key,
                 QString (*shown)(const QString &stored));

    [[nodiscard]] const QString &text() const { return text_; }

    /// Loads the stored text; stores nothing.
    void load();

    /// Another program has changed the settings: takes the stored text. While the box is being
    /// edited, this waits for the end, and is dropped if another text was typed by then.
    void adoptStored();

    /// The box changed; setting the same text is no change.
    void set(const QString &text);

    /// Puts a corrected text into the box, unless it is being edited: then endEdit() says so.
    void correct(const QString &text);

    void beginEdit();

    /// True when a correction was held back and is to be made now.
    [[nodiscard]] bool endEdit();

Q_SIGNALS:
    void changed(const QString &text);

private:
    void show(const QString &text);
    void store(const QString &text);

    const SettingsFile &settings_;
    TextKey key_;
    QString (*shown_)(const QString &stored);
    QString text_;
    QString seen_; // the stored text, which may be none of what is shown

    bool isEdited_ = false;
    bool isCorrectionHeldBack_ = false;
    QString before_;                   // the text at the start of the edit
    std::optional<QString> elsewhere_; // stored by another program since then
};

} // namespace velmora
