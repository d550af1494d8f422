#include "capture/Conformity.h"

#include "base/DateText.h"
#include "base/FileDates.h"
#include "base/FilePath.h"
#include "base/FilePattern.h"
#include "base/FileStamp.h"
#include "base/FolderFiles.h"
#include "base/FolderScan.h"
#include "base/Folders.h"
#include "base/NameStamp.h"
#include "base/NewName.h"
#include "base/OneLine.h"

#include <QFile>
#include <QScopeGuard>

#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora {
namespace {

constexpr int kMostDays = 31;
constexpr int kHours = 24;

// The pattern of the pass: the folders also hold names of the same length that are not images.
bool isListed(QByteArrayView name)
{
    static const FilePattern shortImageNames(kShortImagePattern);
    return shortImageNames.matches(name) && Conformity::isShortForm(name);
}

QByteArray withDayAndHour(const QByteArray &name, const QByteArray &dayAndHour)
{
    const qsizetype dot = name.indexOf('.');
    const QByteArray extension = name.sliced(dot);
    return name.first(dot) + dayAndHour + (extension == "." ? QByteArray(".jpg") : extension);
}

// Nothing when the file has no date.
std::optional<QByteArray> currentName(const QByteArray &folder, const QByteArray &name)
{
    const std::optional<WallTime> modified = modificationTime(filePath(folder, name));
    if (!modified) {
        return std::nullopt;
    }
    return withDayAndHour(name, dayAndHourKey(*modified));
}

std::error_code rename(const QByteArray &folder, const QByteArray &name)
{
    const std::optional<QByteArray> target = currentName(folder, name);
    return target ? renameToNew(filePath(folder, name), filePath(folder, *target))
                  : std::make_error_code(std::errc::no_such_file_or_directory);
}

// A name may hold line breaks, which neither a caption nor a log line can show.
QString shownName(const QByteArray &name)
{
    return onOneLine(QFile::decodeName(name));
}

} // namespace

Conformity::Conformity(StorageFolder &storage, Scheduler &scheduler, EventLog &log, Clock &clock,
                       TaskScope &scope)
    : storage_(storage)
    , scheduler_(scheduler)
    , log_(log)
    , clock_(clock)
    , link_(scope.stopToken(), stop_)
    , slice_(clock)
{
}

bool Conformity::isShortForm(QByteArrayView name)
{
    static const FilePattern fifteenCharacters("???????????????");
    const qsizetype dot = name.indexOf('.');
    return dot >= 0 && fifteenCharacters.matches(name.first(dot));
}

// Its date is gone with it, but there are not many days and hours.
bool Conformity::isRenamed(const QString &folder, const QByteArray &name)
{
    const FolderFiles files(folder);
    if (!isListed(name) || files.has(name.constData())) {
        return false;
    }
    for (int day = 1; day <= kMostDays; ++day) {
        for (int hour = 0; hour < kHours; ++hour) {
            const QByteArray key = (twoDigits(day) + twoDigits(hour)).toLatin1();
            if (files.has(withDayAndHour(name, key).constData())) {
                return true;
            }
        }
    }
    return false;
}

bool Conformity::wants(const QString &path) const
{
    if (!isListed(path.section(u'/', -1).toUtf8())) {
        return false;
    }
    const auto failure = failures_.constFind(path);
    return failure == failures_.cend() ||
           failure->circumstances != circumstances(failure->folder, failure->name);
}

QCoro::Task<> Conformity::run()
{
    if (isRunning() || waiting_) {
        co_return;
    }
    waiting_ = true;
    co_await users_.gone.pass(stop_.get_token());
    waiting_ = false;
    if (stop_.stop_requested()) {
        co_return;
    }
    begin();
    const auto atEnd = qScopeGuard([this] { end(); });
    co_await clock_.yield(); // so that the captions are painted before the work begins
    slice_.begin();
    int index = 0;
    while (index < kCameras && !stop_.stop_requested()) {
        co_await storage_.gate().pass(stop_.get_token());
        const StorageUse use(storage_);
        const QString folder = storage_.cameraFolder(cameraAt(index));
        if (!folder.isEmpty() && use.mayGoOn()) {
            co_await conformFolder(folder, use);
        }
        co_await letEventsRun(&slice_, &clock_);
        index = use.mayGoOn() ? index + 1 : 0; // the folders may have changed
    }
}

QCoro::Task<> Conformity::whileRunning(std::stop_token stop)
{
    co_await idle_.pass(std::move(stop));
}

QCoro::Task<> Conformity::finish()
{
    stop_.request_stop();
    co_await idle_.pass({});
}

void Conformity::begin()
{
    const QString text = QStringLiteral("Mise en conformité des fichiers");
    idle_.shut();
    failures_.clear();
    suspension_ = scheduler_.suspend();
    Q_EMIT began();
    Q_EMIT stepTaken(text);
    Q_EMIT statusChanged(text);
}

void Conformity::end()
{
    Q_EMIT statusChanged(QStringLiteral("Poursuite du chargement"));
    idle_.open();
    if (const auto held = std::exchange(suspension_, std::nullopt)) {
        scheduler_.resume(*held);
    }
    Q_EMIT ended();
}

// Sorted on arrival, so that no long sort holds up events.
QCoro::Task<std::set<QByteArray>> Conformity::shortNames(QString folder, StorageUse use)
{
    std::set<QByteArray> names;
    FolderScan scan(folder);
    const auto collect = [&names](QByteArrayView name) {
        if (isListed(name)) {
            names.insert(name.toByteArray());
        }
    };
    while (!stop_.stop_requested() && use.mayGoOn() && scan.readSome(collect)) {
        co_await letEventsRun(&slice_, &clock_);
    }
    if (scan.hasFailed()) {
        log_.trace(QStringLiteral("%1: %2").arg(folder, unreadFolderText(scan.error())));
    }
    co_return names;
}

QCoro::Task<> Conformity::conformFolder(QString folder, StorageUse use)
{
    const std::set<QByteArray> names = co_await shortNames(folder, use);
    const QByteArray nativeFolder = QFile::encodeName(folder);
    for (const QByteArray &name : names) {
        if (stop_.stop_requested() || !use.mayGoOn()) {
            break;
        }
        conform(nativeFolder, name);
        co_await letEventsRun(&slice_, &clock_);
    }
}

void Conformity::conform(const QByteArray &folder, const QByteArray &name)
{
    const std::error_code error = rename(folder, name);
    const QString text = QStringLiteral("Mise en conformité:") + shownName(name);
    Q_EMIT stepTaken(text);
    log_.trace(text);
    Q_EMIT statusChanged(text);
    if (error) {
        rememberFailure(folder, name, error);
    }
}

void Conformity::rememberFailure(const QByteArray &folder, const QByteArray &name,
                                 std::error_code error)
{
    log_.trace(QStringLiteral("%1 cannot be renamed: %2")
                   .arg(shownName(name), QString::fromStdString(error.message())));
    failures_.insert(QFile::decodeName(filePath(folder, name)),
                     {folder, name, circumstances(folder, name)});
}

Conformity::Circumstances Conformity::circumstances(const QByteArray &folder,
                                                    const QByteArray &name)
{
    Circumstances now;
    struct stat info = {};
    if (const std::optional<QByteArray> target = currentName(folder, name)) {
        now.targetStands = ::lstat(filePath(folder, *target).constData(), &info) == 0;
    }
    now.folderIsWritable = ::faccessat(AT_FDCWD, folder.constData(), W_OK | X_OK, AT_EACCESS) == 0;
    if (::lstat(filePath(folder, name).constData(), &info) == 0) {
        now.fileChanged = stampOf(info).changed;
    }
    return now;
}

NamesInUse::NamesInUse(Conformity &conformity)
    : conformity_(conformity)
{
    ++conformity_.users_.count;
    conformity_.users_.gone.shut();
}

NamesInUse::~NamesInUse()
{
    if (--conformity_.users_.count == 0) {
        conformity_.users_.gone.open();
    }
}

} // namespace velmora
