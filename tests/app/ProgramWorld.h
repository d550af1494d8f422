// The whole program over a folder that outlives it, and what the rules of its rows and of its
// browser make of all that happens: two plain models that hear of the same events, whichever window
// they come from.
#pragma once

#include "ProgramHouse.h"
#include "admin/ProgramDesk.h"
#include "support/BusyClock.h"
#include "ui/ModesRule.h"
#include "ui/RowReference.h"

#include <QCheckBox>
#include <QDateTime>
#include <QLineEdit>
#include <QListView>
#include <QRandomGenerator>

#include <map>
#include <set>

namespace velmora::test {

class ProgramWorld : public ProgramHouse
{
protected:
    /// A new folder with cameras, images and modes by chance, and a program on it.
    void begin(int sequence);

    /// The program ends, and another begins on what it has left.
    void endProgram();
    void startAgain();

    int below(int bound) { return static_cast<int>(random_.bounded(bound)); }

    bool oneIn(int chances) { return below(chances) == 0; }

    template <typename List>
    auto pick(const List &list)
    {
        return list[static_cast<decltype(list.size())>(below(static_cast<int>(list.size())))];
    }

    CameraAddress anyCamera() { return pick(kUsed); }

    QString anyUrl() { return pick(kUrls); }

    /// A control of a window, which must be there.
    template <typename Control = QWidget>
    Control &find(const QString &window, const QString &name)
    {
        auto *const control = topLevel(window)->findChild<Control *>(name);
        if (control == nullptr) {
            throw std::runtime_error("no control " + name.toStdString());
        }
        return *control;
    }

    QListView &list(const QString &name) { return find<QListView>(kBrowser, name); }

    int rowOf(const QString &listName) { return list(listName).currentIndex().row(); }

    /// A click where a user would click on that kind of control.
    void clickOn(const QString &window, const QString &name);
    void clickRow(QListView &list, int row);

    /// Makes it the active window; the storage box and the address boxes take note.
    void toFront(const QString &window);

    /// The cursor is in the storage box of the active window: nothing is captured or read.
    [[nodiscard]] bool isStorageInHand();

    /// Until everything that was begun has ended, without letting the clock run.
    void rest();

    /// A tick of the capture timer, until its pass has ended.
    QCoro::Task<> runPass();

    /// The options are those of a pass that has ended.
    void takeTick() { tick_ = control_[QStringLiteral("Tempo")].toInt(); }

    /// The program's timers tick on the test's word alone.
    void holdTimers();

    void fire(const QString &window, const QString &timer);

    QDateTime now() const;
    QString root() const; // of the storage folder in force

    QString nativeFolder(CameraAddress of) { return browser_.folderOf(of); }

    void writeImage(const QString &path);

    /// A fixed set of days and times.
    QString anyName();

    /// One among those on show, which is to be brought up to date.
    [[nodiscard]] bool showsOldName();

    /// An image with a name of the older form.
    void writeOldName();

    /// The rows' addresses are stored. The browser's folders are those from then on; it shows
    /// them once it hears of it.
    void storeAddress(CameraAddress of);
    void hearAddress(CameraAddress of);

    /// The address box that is being edited is left, which stores what was typed.
    void leaveRow();

    /// All that is stored, of which the places of windows and what is remembered of pictures are
    /// left out.
    QMap<QString, QString> wantedFile();

    /// The camera by its name, or else by its address.
    QString shownCamera(CameraAddress camera, const QString &url);

    QString shownCamera(CameraAddress camera) { return shownCamera(camera, rows_.at(camera).url); }

    QString nameOf(CameraAddress camera)
    {
        return rows_.at(camera).choices[QStringLiteral("Name")];
    }

    /// All cameras answer by chance, each after another time.
    void scriptAnswers();

    static const QByteArray &picture();

    inline static const QString kMain = QStringLiteral("Interface");
    inline static const QString kBrowser = QStringLiteral("planche");
    inline static const QString kFilm = QStringLiteral("fCine");
    inline static const QString kCalendar = QStringLiteral("calendar");
    inline static const QString kSheet = QStringLiteral("CameraSheet");
    inline static const QString kHealth = QStringLiteral("health");
    inline static const QString kImport = QStringLiteral("frmImport");
    inline static const QString kKeep = QStringLiteral("filmExport");
    inline static const QString kAlarm = QStringLiteral("Alarm");
    inline static const QString kListGroups = QStringLiteral("lstGroupe");
    inline static const QString kListCameras = QStringLiteral("lstCam");
    inline static const QString kListImages = QStringLiteral("LstDir");
    inline static const QString kListRows = QStringLiteral("LstDirCam");
    inline static const QList<CameraAddress> kUsed{{0, 0}, {0, 1}, {0, 4}, {1, 0}, {1, 9}, {2, 9}};
    inline static const QStringList kUrls{
        QStringLiteral("http://cam/a.jpg"), QStringLiteral("http://cam/b.jpg"),
        QStringLiteral("http://cam/c.jpg"), QStringLiteral("http://hut/a.jpg"),
        QStringLiteral("http://hut/b.jpg"), QStringLiteral("http://hut/c.jpg")};
    inline static const QStringList kStorages{QStringLiteral("C:\\in\\"),
                                              QStringLiteral("C:\\other\\")};
    inline static const QStringList kDays{QStringLiteral("20060303"), QStringLiteral("20060305"),
                                          QStringLiteral("20060306")};

    BusyClock busy_{clock_, std::chrono::milliseconds{0}};
    RowReference rows_;
    ModesRule browser_{QString()};
    QMap<QString, QString> control_; // values of the section "Control" that only a user changes
    std::map<QString, QByteArray> files_; // images on the disk, by their paths
    std::set<QString> gone_;
    bool isMain_ = false; // its window is shown
    bool isBrowser_ = true;
    std::set<QString> open_; // the other windows, but for film and calendar
    bool isPassing_ = false;
    bool isAway_ = false;            // the storage folder
    int stored_ = 0;                 // images since the start
    CameraAddress last_;             // of which
    PerCamera<QString> heard_;       // addresses
    PerCamera<QStringList> unheard_; // stored by hand since then
    int tick_ = 0;            // seconds in force, which follow the option at the end of a pass
    bool wasInFront_ = false; // the main window
    int endless_ = 0;         // tasks that go on as long as the program

    std::unique_ptr<ProgramDesk> desk_; // hears of commands

private:
    void quit();
    void settleNames();
    void clearFolder();
    void writeFirstSettings();
    void fillFolders();
    void followCapture();
    void takeTimes(CameraAddress camera);
    void takeStored(CameraAddress camera, const QString &name);
    QString value(CameraAddress camera, QStringView word) const;

    QRandomGenerator random_;
    std::map<QString, QByteArray> answered_; // what an address has given last
    int answers_ = 0;
};

} // namespace velmora::test
