// What the capture must do with cameras, settings and folders, by the rules alone and second by
// second: it is told what happens around the program, and knows nothing of the program's own parts.
#pragma once

#include "DiskRules.h"
#include "base/Clock.h"
#include "cameras/CameraAddress.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>
#include <map>
#include <optional>

namespace velmora::test {

/// What a server gives for an address, from `delay` seconds after the beginning of a transfer on.
struct ServerAnswer
{
    bool isGood = true; // a status of success, and the whole body
    QByteArray body;
    QString header;                // Last-Modified, empty or blank for none
    std::optional<WallTime> date;  // which that header is, if it is one
    std::optional<WallTime> clock; // the server's own
    int delay = 0;
    bool isLocked = false; // nothing without the login "user", "secret"
    bool isLost = false;   // too long for memory, and could not be written as it came
};

/// The values of the settings by "section key", without the empty ones.
using RuleValues = QMap<QString, QString>;

/// "group:row".
[[nodiscard]] QString rowName(CameraAddress camera);

/// The number at the beginning of a text; 0 if there is none.
[[nodiscard]] double ruleNumber(const QString &text);

class CaptureRules
{
public:
    using Server = std::function<ServerAnswer(const QString &url)>;

    /// shown: the text in a row of the page on screen.
    CaptureRules(Server server, std::function<QString(int)> shown, WallTime start,
                 const QString &storage);

    /// One event each.
    void tick();
    void passSecond();

    /// While no pass is running.
    void passIdle(std::chrono::seconds time);

    void suspend();
    void resume();
    void beginEdit();
    void type(const QString &storage); // into the storage box
    void endEdit();
    void hear(); // of what another program has stored
    void check();
    void recheck();

    /// A row's value in "Groupe".
    [[nodiscard]] QString &row(CameraAddress camera, const QString &word);

    [[nodiscard]] QString url(CameraAddress camera) const;

    /// Between two passes.
    [[nodiscard]] bool isTimerOn() const { return isGreen && !isHeld(); }

    /// The storage folder in force.
    [[nodiscard]] DiskRules &disk() { return disks[inForce]; }

    RuleValues values;
    std::map<QString, DiskRules> disks;
    QString inForce;
    QString storedStorage; // whoever stored it
    WallTime local;
    std::chrono::seconds utcOffset{0};
    int counter = 55;
    int timeout = 5;
    bool isLogOn = false;
    bool isPassing = false;
    bool isSuspended = false;
    bool isEdited = false;
    bool isUnsure = false; // images came into a folder before or after old ones were deleted in it

    QString log;        // since it was last emptied, without the turns of deletion
    QStringList turns;  // these, since it was last emptied
    QStringList stored; // "group:row"
    QStringList failed;
    std::map<CameraAddress, int> lamps;     // as last painted
    std::map<CameraAddress, int> automatic; // the counters

private:
    struct Request
    {
        QString url;
        QString user;
        QString password;
        int limit = 0;
        bool isCompared = false;

        bool operator==(const Request &) const = default;
    };

    struct Transfer
    {
        Request request;
        std::chrono::seconds began{0};
        int seconds = 0; // until it ends
        bool isLate = false;
        std::optional<ServerAnswer> answer;
    };

    struct Picture
    {
        ServerAnswer answer;
        bool isCompared = false; // with the last one kept, as it has no date
        bool isNew = false;
        std::optional<WallTime> date;   // it counts as taken then
        std::optional<WallTime> before; // and the last one kept
    };

    [[nodiscard]] bool isHeld() const { return isSuspended || isEdited; }

    [[nodiscard]] bool mayStart() const { return isGreen && !isHeld() && !isCheckWanted_; }

    [[nodiscard]] WallTime universal() const { return local - utcOffset; }

    [[nodiscard]] QString choice(CameraAddress camera, const QString &key) const;
    [[nodiscard]] bool isAutomatic(CameraAddress camera);
    [[nodiscard]] bool isAutomaticDue(CameraAddress camera);
    [[nodiscard]] bool isDue(CameraAddress camera);
    [[nodiscard]] bool mustLoad(CameraAddress camera);
    [[nodiscard]] Request request(CameraAddress camera) const;
    bool readAhead();
    void begin(CameraAddress camera);
    void answer(Transfer &transfer);
    void walk();
    void beginLoad(CameraAddress camera);
    void endLoad();
    void endPass();
    void giveUp();
    void dropTransfers();
    void put(const QString &storage);
    void write(const QString &line);
    void fail(CameraAddress camera);
    void take(CameraAddress camera, const ServerAnswer &answer);
    [[nodiscard]] bool isRefused(const ServerAnswer &answer);
    [[nodiscard]] Picture judge(CameraAddress camera, const ServerAnswer &answer);
    void keep(CameraAddress camera, const Picture &picture);
    void learn(CameraAddress camera, const Picture &picture);
    void learnBestTime(CameraAddress camera, const Picture &picture);
    void wishTurn(CameraAddress camera);
    void takeTurns();
    void takeTurn(CameraAddress camera);
    [[nodiscard]] bool isOthers(CameraAddress camera);
    [[nodiscard]] QString fileName(const Picture &picture) const;

    Server server_;
    std::function<QString(int)> shown_;
    std::chrono::seconds now_{0};
    QString typed_;       // what is in the storage box
    QString seenStorage_; // as last known to be stored
    QString elsewhere_;   // stored by another program while the box is edited; empty for nothing
    bool isGreen = true;
    bool isCheckWanted_ = false;
    bool isFirstPassDone_ = false;
    bool mustReadAhead_ = false;
    int index_ = 0;
    std::map<CameraAddress, bool> reached_;
    std::map<CameraAddress, Transfer> transfers_;
    std::optional<CameraAddress> loading_;
    QString loadingUrl_;                                  // of its row at the beginning
    QString loadingRequest_;                              // the address asked for
    std::map<CameraAddress, std::chrono::seconds> turns_; // the last ones
    std::map<const RuleFolder *, int> cameNow_;           // images, since turns were taken
    QList<CameraAddress> waiting_;                        // for their turns
    std::map<CameraAddress, QByteArray> kept_; // the last picture, where they are compared
};

} // namespace velmora::test
