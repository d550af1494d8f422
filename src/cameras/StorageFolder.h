// The storage folder under which every camera has its own: its text, whether it is there, and the
// folders made in it.
#pragma once

#include "base/NativePaths.h"
#include "cameras/CameraTable.h"
#include "cameras/LampColour.h"
#include "settings/EventLog.h"
#include "settings/Problems.h"

#include <QObject>

#include <optional>

namespace velmora {

/// What a storage check sets on the windows.
struct StorageState
{
    LampColour lamp = LampColour::None;
    bool captureEnabled = false; // timers and import; a timer runs only if its own switch is on too
    bool canMakeFolder = false;  // the make-folder button is shown
    QString hideCaption;         // of the button that hides the main window

    bool operator==(const StorageState &) const = default;
};

[[nodiscard]] StorageState storageState(bool folderPresent);

/// Why a native folder cannot be the storage folder, in words: the cleaning of storage paths would
/// change its path. Nothing when it can.
[[nodiscard]] std::optional<QString> storageRefusal(const NativePaths &paths,
                                                    const QString &nativeFolder);

/// The storage folder's text as the settings hold it, "C:\in" when they hold none.
[[nodiscard]] QString storedStorage(const SettingsSnapshot &settings);

/// Stores a text as typing it into the storage box does.
void setStorage(SettingsDraft &draft, const QString &text);

class StorageFolder : public QObject
{
    Q_OBJECT

public:
    StorageFolder(const CameraTable &table, const NativePaths &paths, EventLog &log,
                  Problems &problems);

    /// The text of the storage box; after a check it is cleaned and ends with "\".
    [[nodiscard]] const QString &text() const { return text_; }

    [[nodiscard]] LampColour lamp() const { return state_.lamp; }

    [[nodiscard]] const StorageState &state() const { return state_; }

    /// True while the folder of that text is there now, whatever the lamp says.
    [[nodiscard]] bool isPresent() const;

    /// Text of the folder of that name, "\…\", in the storage folder.
    [[nodiscard]] QString folderText(QStringView folderName) const
    {
        return text_ + folderName.toString();
    }

    /// Native path of a path text, empty when its drive does not exist.
    [[nodiscard]] QString native(const QString &pathText) const;

    /// Takes the stored text, "C:\in" when there is none; checks nothing.
    void load();

    /// Another program has changed the settings: takes the folder stored there and checks it,
    /// unless the box is being edited.
    void adoptStored();

    /// Cleans the text and checks the folder: `checked` says what follows from it.
    void testSA();

    /// The user changed the box: check, then store the text.
    void edit(const QString &typed);

    /// The user chose this native folder. One whose path the cleaning would change (a blank in a
    /// name, say) cannot be used and is refused with a message that says why.
    void choose(const QString &nativeFolder);

    /// The box got the focus: timers stop until it is left, so that nothing is captured into a
    /// folder that is half typed.
    void beginEdit();

    /// The box was left: check. Timers run again when the folder is there.
    void endEdit();

    /// Makes every level of the storage folder and a folder for each camera; what cannot be made is
    /// told.
    void MakeDir_Click();

    /// True while the timers are to stay stopped on account of the box.
    [[nodiscard]] bool timersStopped() const { return timersStopped_; }

    /// Asks for a check at the next tick, after something could not be stored.
    void requestCheck() { checkRequested_ = true; }

    [[nodiscard]] bool isCheckRequested() const { return checkRequested_; }

    /// A check at a time of its own: does nothing unless the folder came or went since the last
    /// one.
    void recheck();

Q_SIGNALS:
    void textChanged(const QString &text);
    void checked(const velmora::StorageState &state);
    void editBegan();
    void folderMade();

private:
    void setText(const QString &text);
    void makeLevels();
    void makeCameraFolders();
    void make(const QString &pathText, const QString &shown);

    const CameraTable &table_;
    const NativePaths &paths_;
    EventLog &log_;
    Problems &problems_;
    QString text_;
    StorageState state_;
    bool editing_ = false;
    bool timersStopped_ = false;
    bool checkRequested_ = false;
};

} // namespace velmora
