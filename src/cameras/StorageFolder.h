// The storage folder, in which every camera has its own: the text being typed, the folder in force,
// and the folders made in it.
#pragma once

#include "base/Gate.h"
#include "base/NativePaths.h"
#include "cameras/CameraTable.h"
#include "settings/EventLog.h"
#include "settings/Problems.h"

#include <QObject>

namespace velmora {

/// Whether the box of the storage folder is being edited.
enum class Editing { No, Yes };

/// What a check of the storage folder has found.
enum class StorageCheck { NotYet, Found, Missing };

/// What follows from a check.
struct StorageState
{
    StorageCheck check = StorageCheck::NotYet;
    bool captureEnabled = false; // timers and import; a timer runs only if its own switch is on too

    bool operator==(const StorageState &) const = default;
};

/// What follows from whether the folder is there; while its box is edited, nothing is captured.
[[nodiscard]] StorageState storageState(bool folderPresent, Editing editing = Editing::No);

/// Why a native folder cannot be the storage folder, in words: cleaning would change its path, or
/// the settings cannot hold it. Nothing when it can.
[[nodiscard]] std::optional<QString> storageRefusal(const NativePaths &paths,
                                                    const QString &nativeFolder);

/// The same for a text typed into the storage box.
[[nodiscard]] std::optional<QString> storageTextRefusal(const QString &text);

/// The text of the stored storage folder, cleaned as a start does; "C:\in\" when none is stored.
[[nodiscard]] QString storedStorage(const SettingsSnapshot &settings);

/// Stores a text as typing it into the storage box does.
void setStorage(SettingsDraft &draft, const QString &text);

/// What became of a storage folder that was needed.
enum class StoragePlace {
    There,   // it was already there
    Made,    // it has just been made
    Missing, // it cannot be made
    Away     // it was in use before, so its disk may be away: it is not made automatically
};

/// Owns two things. The text follows every keystroke, and so do the check, the state and what is
/// stored. The folder in force is where all work in folders is done: it takes over the text only
/// when that is meant, and while the box is being edited no work is done in folders at all. When
/// the box is not being edited, both are the same.
class StorageFolder : public QObject
{
    Q_OBJECT

public:
    StorageFolder(const CameraTable &table, const NativePaths &paths, EventLog &log,
                  Problems &problems);

    /// The text of the storage box; after a check it is cleaned and ends with "\".
    [[nodiscard]] const QString &text() const { return text_; }

    /// Text of the folder in force; after a check it ends with "\".
    [[nodiscard]] const QString &inForce() const { return inForce_; }

    /// Whether the folder named by the text in the box was there.
    [[nodiscard]] StorageCheck lastCheck() const { return state_.check; }

    [[nodiscard]] const StorageState &state() const { return state_; }

    /// True when work in folders may go on: the folder is there and its box is not being edited.
    [[nodiscard]] bool isUsable() const { return state_.captureEnabled; }

    /// True while the folder in force exists, whatever the last check says.
    [[nodiscard]] bool isPresent() const;

    /// Text of the folder with that name, "\…\", in the folder in force.
    [[nodiscard]] QString folderText(QStringView folderName) const
    {
        return inForce_ + folderName.toString();
    }

    /// Folder name, "\…\", of a camera's stored address, which differs from the one in the box
    /// while that is being edited. Empty for a row without an address, and for one whose address no
    /// folder name can hold, of which the user is warned.
    [[nodiscard]] QString cameraFolderName(CameraAddress camera) const;

    /// The same for an address that was read from the table.
    [[nodiscard]] QString folderNameOf(QStringView address) const;

    /// Text of that folder in the folder in force; without a name, that of the folder in force
    /// itself.
    [[nodiscard]] QString cameraFolderText(CameraAddress camera) const;

    /// Native path of that folder, whether or not it exists; empty without a name.
    [[nodiscard]] QString cameraFolder(CameraAddress camera) const;

    /// The same for an address that need not be in the table; empty as well for one too long for a
    /// folder's name.
    [[nodiscard]] QString folderOf(QStringView address) const;

    /// Native path of "\tmp\" in the folder in force, where unfinished files are kept; empty when
    /// the folder's drive does not exist.
    [[nodiscard]] QString workFolder() const;

    /// True when the folder is missing though it may have been in use: its disk may be away.
    [[nodiscard]] bool isAway() const;

    /// Native path of a path text, empty when its drive does not exist.
    [[nodiscard]] QString native(const QString &pathText) const;

    /// Loads the stored text, "C:\in" when there is none, and puts it in force; checks nothing.
    void load();

    /// No folder is in force before that.
    [[nodiscard]] bool isLoaded() const { return !inForce_.isEmpty(); }

    /// Another program has changed the settings: takes the stored folder and checks it. While the
    /// box is being edited it waits for the end, and yields to another text typed until then.
    void adoptStored();

    /// Checks the storage folder ("test du stockage"): cleans the text, then `checked` tells what
    /// follows from it.
    void testSA();

    /// The box got the focus: timers stop until it is left, so that nothing is captured into a
    /// half-typed folder.
    void beginEdit();

    /// The user changed the box: checks and then stores the text. The box is being edited from now
    /// on.
    void edit(const QString &typed);

    /// Another window was activated while the box is being edited: an unchanged text ends the
    /// editing, a changed one waits.
    void setAside();

    /// The box was left, or Enter was pressed in it: the text is the folder in force from now on.
    /// An emptied box restores the folder that was in force, and so does a text that the settings
    /// cannot hold, of which the user is warned.
    void putInForce();

    /// An emptied box restores the folder in force, or takes the one that another program has
    /// stored meanwhile; any other text stays. True when it did.
    bool takeBackEmptied();

    /// The user chose this native folder, which is in force at once. One whose path the cleaning
    /// would change (a blank in a name, say) is refused with a message that says why, and the text
    /// in the box stays as it is. True when it was accepted.
    bool choose(const QString &nativeFolder);

    /// Makes the storage folder, at every level, and a folder for each camera, after putting the
    /// text in force; reports what cannot be made.
    void MakeDir_Click();

    /// The same without a user, who would have meant the text in the box: a folder that another
    /// program has stored meanwhile stays stored.
    void makeMissing();

    /// Makes one level of the folder in force if it is missing and no image can have been stored in
    /// it: the user has just named it, or nothing was ever captured. Says what was made.
    StoragePlace makeForUse();

    /// True while the box is being edited: the timers are to stay stopped.
    [[nodiscard]] bool isBeingEdited() const { return editing_ == Editing::Yes; }

    /// Shut while the box is being edited. Work in folders passes it after each time it has let
    /// others run.
    [[nodiscard]] Gate &gate() { return gate_; }

    /// Changes whenever the box is entered or left and whenever another folder is put in force.
    [[nodiscard]] quint64 version() const { return version_; }

    /// Requests a check at the next tick, after something could not be stored.
    void requestCheck() { checkRequested_ = true; }

    [[nodiscard]] bool isCheckRequested() const { return checkRequested_; }

    /// A check that no one requested: does nothing unless the folder named by the text has come or
    /// gone since the last one.
    void recheck();

Q_SIGNALS:
    void textChanged(const QString &text);
    void checked(const velmora::StorageState &state);
    void editBegan();
    void folderMade();

    /// What was done with the storage folder, as a text for the user.
    void told(const QString &text);

private:
    void setText(const QString &text);
    void takeStoredElsewhere();
    void takeBackUnstorable();
    void takeText();
    void store();
    void storeOverKnown();
    [[nodiscard]] QString madeText() const;
    [[nodiscard]] bool isThere(const QString &pathText) const;
    [[nodiscard]] bool mayHoldImages() const;
    [[nodiscard]] bool wasEverThere() const;
    void makeFolders();
    void makeLevels();
    void makeCameraFolders();
    void make(const QString &pathText, const QString &shown);

    const CameraTable &table_;
    const NativePaths &paths_;
    EventLog &log_;
    Problems &problems_;
    QString text_;
    QString inForce_;
    QString lastSeen_;                       // what the settings had, also from another program
    std::optional<QString> storedElsewhere_; // by another program, since the edit began
    StorageState state_;
    Gate gate_;
    quint64 version_ = 0;
    Editing editing_ = Editing::No;
    bool emptied_ = false;   // the user has deleted everything in the box
    bool justNamed_ = false; // by the user, since the start
    bool seen_ = false;      // the folder in force was there, now or at an earlier start
    bool checkRequested_ = false;
};

/// A piece of work in folders: knows whether the storage folder is still as it was when the work
/// began.
class StorageUse
{
public:
    explicit StorageUse(const StorageFolder &storage)
        : storage_(storage)
        , version_(storage.version())
    {
    }

    /// False while the box is being edited, and for good once it was entered or another folder was
    /// put in force: the work must then start again.
    [[nodiscard]] bool mayGoOn() const
    {
        return !storage_.isBeingEdited() && storage_.version() == version_;
    }

private:
    const StorageFolder &storage_;
    quint64 version_;
};

} // namespace velmora
