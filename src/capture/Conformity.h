// Renames stored images that have the older, short form of name ("20060307_140509.jpg") to the
// current form, with day and hour after the time ("20060307_1405090714.jpg").
#pragma once

#include "base/Clock.h"
#include "base/Gate.h"
#include "base/LinkedStop.h"
#include "base/TaskScope.h"
#include "base/WorkSlice.h"
#include "cameras/StorageFolder.h"
#include "capture/Scheduler.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QCoro/QCoroTask>
#include <QHash>
#include <QObject>

#include <optional>
#include <set>
#include <stop_token>
#include <system_error>

namespace velmora {

/// The conformity pass over the folders of all cameras.
class Conformity : public QObject
{
    Q_OBJECT

public:
    /// A pass ends early when the scope is asked to stop. Scheduler and scope outlive this object,
    /// and the scope is joined before it is destroyed.
    Conformity(StorageFolder &storage, Scheduler &scheduler, EventLog &log, Clock &clock,
               TaskScope &scope);

    /// True when the first "." of a file name is its 16th character. name: UTF-8; a byte that is
    /// not UTF-8 counts as a character.
    [[nodiscard]] static bool isShortForm(QByteArrayView name);

    /// True when an image of that older name is gone, and one is there that a pass, of this program
    /// or another, may have made of it. folder: native path.
    [[nodiscard]] static bool isRenamed(const QString &folder, const QByteArray &name);

    /// One pass; does nothing while another is running. To be launched in the scope. Captures are
    /// suspended from start to end, however it ends. No existing file is replaced, and a file that
    /// cannot be renamed stays as it is. While the storage box is being edited the pass stands
    /// still; then it starts over, since its folders may have changed. While listed names are in
    /// use it waits before its start.
    QCoro::Task<> run();

    [[nodiscard]] bool isRunning() const { return suspension_.has_value(); }

    /// Returns when no pass is running, or when a stop is requested.
    QCoro::Task<> whileRunning(std::stop_token stop);

    /// The program ends: a pass ends early, and none begins any more. Returns when captures run
    /// again, as far as this holds them.
    QCoro::Task<> finish();

    /// True when a pass would find this file and might rename it. A file that could not be renamed
    /// is not wanted again until something that matters has changed: the name in its way, the
    /// folder's permissions, or the file itself. path: native path in a camera folder.
    [[nodiscard]] bool wants(const QString &path) const;

Q_SIGNALS:
    void began();

    /// A step of the pass, for the main window.
    void stepTaken(const QString &text);

    /// The browser's caption.
    void statusChanged(const QString &text);

    /// The pass is over; captures run again.
    void ended();

private:
    /// What a rename depends on.
    struct Circumstances
    {
        bool targetStands = false;
        bool folderIsWritable = false;
        std::chrono::nanoseconds fileChanged{0}; // since 1970

        bool operator==(const Circumstances &) const = default;
    };

    /// Those that go through listed names.
    struct Users
    {
        int count = 0;
        Gate gone; // shut while there are any
    };

    /// A file that could not be renamed; native bytes.
    struct Failure
    {
        QByteArray folder;
        QByteArray name;
        Circumstances circumstances;
    };

    static Circumstances circumstances(const QByteArray &folder, const QByteArray &name);

    friend class NamesInUse;

    void begin();
    void end();
    QCoro::Task<std::set<QByteArray>> shortNames(QString folder, StorageUse use);
    QCoro::Task<> conformFolder(QString folder, StorageUse use);
    void conform(const QByteArray &folder, const QByteArray &name);
    void rememberFailure(const QByteArray &folder, const QByteArray &name, std::error_code error);

    StorageFolder &storage_;
    Scheduler &scheduler_;
    EventLog &log_;
    Clock &clock_;
    std::stop_source stop_;
    LinkedStop link_; // stops with the scope
    WorkSlice slice_;
    QHash<QString, Failure> failures_;     // keyed by path
    std::optional<Suspension> suspension_; // while running
    Gate idle_;                            // shut while a pass is running
    Users users_;
    bool waiting_ = false;
};

/// While one lives, no pass begins: for work that goes through listed names one by one, such as a
/// copy of images, and would take a renamed image for a deleted one. Begun when no pass is running.
class NamesInUse
{
public:
    explicit NamesInUse(Conformity &conformity);
    Q_DISABLE_COPY_MOVE(NamesInUse)
    ~NamesInUse();

private:
    Conformity &conformity_;
};

} // namespace velmora
