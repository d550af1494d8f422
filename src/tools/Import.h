// The import without its window: the folder that the images come from, the camera that they are
// for, and the run that copies them.
#pragma once

#include "base/Clock.h"
#include "base/TaskScope.h"
#include "cameras/StorageFolder.h"
#include "capture/Conformity.h"
#include "tools/FolderList.h"
#include "tools/ImportRun.h"
#include "tools/SourceList.h"

#include <QObject>

namespace velmora {

/// What the window shows, besides the two lists.
struct ImportFace
{
    QStringList drives;
    int drive = 0;  // position in the list of drives
    QString Filtre; // file pattern
    QString nRep;   // the camera whose folder is open, as an address
    QString NbF;    // number of files that match
    QString ctr;    // files copied
    int Cam = 0;    // group and row of the camera that the files are for
    int Lien = 0;
    bool cmdGo = false; // the button is enabled
    QString whyNot;     // why it is not, for the user; empty when it is
    QString failure;    // why the last run was aborted, until the next choice or run
    QString unread;     // why files of the folder may be missing from the list; empty if none are
    bool running = false;
    ImportProgress progress; // progress of the run
    QString iSource;         // native paths of the pictures, empty for none
    QString iTarget;
    int looks = 0; // at the two files so far: one looked at again may hold another picture
};

/// Every choice is stored at once. Coroutines run in the scope, which is joined before this object
/// is destroyed.
class Import : public QObject
{
    Q_OBJECT

public:
    /// What an import uses; all of it outlives this object.
    struct Uses
    {
        const SettingsFile &settings;
        StorageFolder &storage;
        Conformity &conformity;
        EventLog &log;
        Problems &problems;
        Clock &clock;
        TaskScope &scope;
    };

    explicit Import(const Uses &uses);

    [[nodiscard]] const ImportFace &face() const { return face_; }

    [[nodiscard]] FolderList &folders() { return folders_; }

    [[nodiscard]] SourceList &files() { return files_; }

    /// The window opens: loads the stored choices.
    void load();

    /// The window closes: a run ends after the current file.
    void close();

    void traceQuit();

    /// Positions in the lists.
    void chooseDrive(int drive);
    void openFolder(int row);
    void chooseFile(int index);
    void setFilter(const QString &filter);
    void chooseGroup(int group);
    void chooseCamera(int row);

    /// A camera has gained or lost its address.
    void noticeAddress(CameraAddress camera);

    /// The button was pressed: what go() then copies is for the camera that the row has now, in the
    /// storage folder that is in force.
    void press();

    /// Copies the files; does nothing while that is not possible. Nothing is copied if the row has
    /// got another address since the press, or another storage folder is in force.
    void go();

Q_SIGNALS:
    /// The face has changed.
    void changed();

    /// A text for the user.
    void messageWanted(const QString &text);

    /// A run has put images into a camera's folder (native path), or may have done so.
    void imagesAdded(const QString &folder);

private:
    /// What a press on the button is for.
    struct Target
    {
        QString storage;
        QString folderName; // of the camera

        bool operator==(const Target &) const = default;
    };

    [[nodiscard]] const SettingsFile &settings() const { return uses_.settings; }

    [[nodiscard]] CameraAddress camera() const { return {face_.Cam, face_.Lien}; }

    [[nodiscard]] Target target() const;

    [[nodiscard]] bool hasTarget() const;
    [[nodiscard]] QString native(const QString &folder) const;
    [[nodiscard]] bool isThere(const QString &folder) const;
    [[nodiscard]] ImportOrder order() const;
    void loadSource();
    void showFolder(const QString &path);
    void moveTo(const QString &path);
    void chooseTarget();
    void takeTarget();
    [[nodiscard]] bool isStillTarget() const;
    [[nodiscard]] QString missingFolder() const;
    void followStorage();
    void showTarget();
    void showButton();
    [[nodiscard]] QString whyNoCopy() const;
    void count();
    void showSource();
    void showProgress();
    QCoro::Task<> readFolders(std::stop_token stop);
    QCoro::Task<> readFiles(std::stop_token stop);
    QCoro::Task<> readTarget(std::stop_token stop);
    QCoro::Task<> copy();
    void begin();
    void end(const ImportResult &result);
    void tell(const ImportResult &result);

    Uses uses_;
    NameReader reader_;
    ImportRun run_;
    FolderList folders_;
    SourceList files_;
    ImportFace face_;
    std::stop_source readingFolders_;
    std::stop_source readingFiles_;
    std::stop_source readingTarget_;
    std::stop_source copying_;           // ends a run after the current file
    std::stop_source atOnce_;            // ends it in the middle of a file
    QString target_;                     // native path of the folder that the run fills
    QString storage_;                    // the folder in force when the target was chosen
    std::optional<qint64> initialCount_; // none when the run started before the files were counted
    qint64 shownCount_ = 0;              // as NbF shows it
    bool counting_ = false;
    bool overtaken_ = false; // another storage folder came into force during the run
    bool reopened_ = false;  // the window was, during the run, and has its own count
    std::optional<Target> pressedFor_;
    bool identical_ = false; // source and target were identical, and no target was chosen since
    bool open_ = false;
};

} // namespace velmora
