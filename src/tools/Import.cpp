#include "tools/Import.h"

#include "base/FilePath.h"
#include "base/Folders.h"
#include "base/LinkedStop.h"
#include "base/NameStamp.h"
#include "cameras/CameraChoices.h"
#include "cameras/Credentials.h"
#include "cameras/FolderName.h"
#include "settings/Keys.h"
#include "tools/Drives.h"
#include "tools/FolderPath.h"

#include <QFile>
#include <QScopeGuard>

#include <algorithm>
#include <utility>

namespace velmora {
namespace {

const QString kNone = QStringLiteral("0");
const QString kOtherStorage = QStringLiteral("another storage folder is in use now");

QString countText(qint64 count)
{
    return count > 0 ? u' ' + QString::number(count) : kNone;
}

QString copiedText(qint32 copied)
{
    return QString::number(copied) +
           (copied > 1 ? QStringLiteral(" files copied") : QStringLiteral(" file copied"));
}

// A stored drive may be followed by its label: "c: [DISK]".
int drivePosition(const QStringList &drives, const QString &stored)
{
    const QString wanted = stored.section(QStringLiteral(" ["), 0, 0);
    const auto found = std::ranges::find_if(drives, [&wanted](const QString &drive) {
        return drive.compare(wanted, Qt::CaseInsensitive) == 0;
    });
    return found == drives.end() ? 0 : static_cast<int>(found - drives.begin());
}

// The camera whose folder this is, or the folder's own name.
QString shownSource(const QString &folder)
{
    const QString decoded = DecodeFolderName(folder);
    return decoded == folder ? folder : withoutCredentials(decoded);
}

// Stops the job that the source belongs to, and makes it that of the next one.
std::stop_token restarted(std::stop_source &source)
{
    source.request_stop();
    source = std::stop_source();
    return source.get_token();
}

} // namespace

Import::Import(const Uses &uses)
    : uses_(uses)
    , reader_(uses.clock)
    , run_(uses.clock, uses.storage.gate())
{
    face_.Filtre = keys::kImportFilter.usual.toString();
    connect(&run_, &ImportRun::advanced, this, &Import::showProgress);
    connect(&uses_.storage, &StorageFolder::editBegan, this, &Import::followStorage);
    connect(&uses_.storage, &StorageFolder::checked, this, &Import::followStorage);
}

void Import::load()
{
    uses_.log.trace(QStringLiteral("frmImport Form_Load"));
    open_ = true;
    reopened_ = face_.running;
    if (!face_.running) {
        face_.progress = {};
    }
    face_.ctr = QString::number(face_.progress.copied);
    loadSource();
    face_.Cam = keys::kImportGroup.read(settings(), uses_.problems);
    face_.Lien = keys::kImportRow.read(settings(), uses_.problems);
    chooseTarget();
    count();
}

// Of a missing drive or folder, the lists show what remains without it.
void Import::loadSource()
{
    face_.Filtre = keys::kImportFilter.read(settings());
    face_.drives = drivesNow(settings().programFolder());
    face_.drive = drivePosition(face_.drives, keys::kImportDrive.read(settings()));
    const QString folder = keys::kImportFolder.read(settings());
    showFolder(!folder.isEmpty() && isThere(folder) ? folder : face_.drives.at(face_.drive));
}

void Import::close()
{
    if (!std::exchange(open_, false)) {
        return;
    }
    uses_.log.trace(QStringLiteral("frmImport Form_Unload"));
    copying_.request_stop();
    readingFolders_.request_stop();
    readingFiles_.request_stop();
    readingTarget_.request_stop();
}

void Import::traceQuit()
{
    uses_.log.trace(QStringLiteral("frmImport cmdClik"));
}

// False for a row without an address, and for one whose address no folder name can hold.
bool Import::hasTarget() const
{
    return !uses_.storage.cameraFolderName(camera()).isEmpty();
}

QString Import::native(const QString &folder) const
{
    return uses_.storage.native(folder);
}

bool Import::isThere(const QString &folder) const
{
    const QString path = native(folder);
    return !path.isEmpty() && folderExists(path);
}

void Import::chooseDrive(int drive)
{
    if (drive < 0 || drive >= face_.drives.size()) {
        return;
    }
    face_.drive = drive;
    keys::kImportDrive.write(settings(), face_.drives.at(drive));
    moveTo(face_.drives.at(drive));
}

void Import::openFolder(int row)
{
    const QString path = folders_.pathAt(row);
    if (!path.isEmpty() && path != folders_.path()) {
        moveTo(path);
    }
}

void Import::moveTo(const QString &path)
{
    showFolder(path);
    keys::kImportFolder.write(settings(), folders_.path());
    count();
}

void Import::showFolder(const QString &path)
{
    folders_.open(path);
    files_.bind(std::make_shared<const NameList>());
    face_.nRep = shownSource(folderLevels(folders_.path()).constLast());
    uses_.scope.launch(readFolders(restarted(readingFolders_)));
    Q_EMIT changed();
}

void Import::setFilter(const QString &filter)
{
    face_.Filtre = filter;
    keys::kImportFilter.write(settings(), filter);
    count();
}

void Import::chooseFile(int index)
{
    files_.setListIndex(index);
    showSource();
}

void Import::chooseGroup(int group)
{
    if (group >= 0 && group < kGroups) {
        face_.Cam = group;
        chooseTarget();
        keys::kImportGroup.write(settings(), group);
    }
}

void Import::chooseCamera(int row)
{
    if (row >= 0 && row < kRows) {
        face_.Lien = row;
        chooseTarget();
        keys::kImportRow.write(settings(), row);
    }
}

void Import::chooseTarget()
{
    face_.failure.clear();
    takeTarget();
}

void Import::takeTarget()
{
    identical_ = false;
    storage_ = uses_.storage.inForce();
    showTarget();
}

void Import::showTarget()
{
    showButton();
    face_.iTarget.clear();
    uses_.scope.launch(readTarget(restarted(readingTarget_)));
    Q_EMIT changed();
}

// The chosen camera may have gained or lost its address.
void Import::noticeAddress(CameraAddress camera)
{
    if (open_ && camera == this->camera()) {
        showTarget();
    }
}

void Import::showButton()
{
    face_.whyNot = whyNoCopy();
    face_.cmdGo = face_.whyNot.isEmpty();
}

// Files cannot be copied for a camera without an address. After identical texts the button stays as
// it is until a camera is chosen.
QString Import::whyNoCopy() const
{
    if (face_.running) {
        return QStringLiteral("Files are being copied");
    }
    if (!hasTarget()) {
        return QStringLiteral("Camera %1 has no address: give it one in the main window, or "
                              "choose another")
            .arg(cameraText({face_.Cam, face_.Lien}));
    }
    if (uses_.storage.isBeingEdited()) {
        return QStringLiteral("The storage folder is being edited in the main window");
    }
    return identical_ ? QStringLiteral("Source and target are identical: choose another camera")
                      : QString();
}

QCoro::Task<> Import::readFolders(std::stop_token stop)
{
    const LinkedStop atEnd(uses_.scope.stopToken(), readingFolders_);
    const SortedNames names = co_await reader_.folders(native(folders_.path()), stop);
    if (names) {
        folders_.setSubFolders(names);
    }
}

void Import::count()
{
    shownCount_ = 0;
    face_.NbF = kNone;
    face_.unread.clear();
    counting_ = true;
    Q_EMIT changed();
    uses_.scope.launch(readFiles(restarted(readingFiles_)));
}

QCoro::Task<> Import::readFiles(std::stop_token stop)
{
    const LinkedStop atEnd(uses_.scope.stopToken(), readingFiles_);
    const SortedNames names =
        co_await reader_.files(native(folders_.path()), filterPattern(face_.Filtre), stop);
    if (names) {
        files_.bind(names);
        face_.unread = names->readError() ? unreadFolderText(names->readError()) : QString();
        counting_ = false;
        shownCount_ = files_.count();
        face_.NbF = countText(shownCount_);
        showSource();
    }
}

void Import::showSource()
{
    const QByteArray name = files_.selected();
    face_.iSource =
        name.isEmpty() ? QString() : filePath(native(folders_.path()), QFile::decodeName(name));
    ++face_.looks;
    Q_EMIT changed();
}

QCoro::Task<> Import::readTarget(std::stop_token stop)
{
    const LinkedStop atEnd(uses_.scope.stopToken(), readingTarget_);
    const QString folder = native(uses_.storage.cameraFolderText(camera()));
    const std::optional<QByteArray> name =
        co_await reader_.first(folder, FilePattern(kImagePattern), stop);
    if (name && !name->isEmpty()) {
        face_.iTarget = filePath(folder, QFile::decodeName(*name));
        ++face_.looks;
        Q_EMIT changed();
    }
}

Import::Target Import::target() const
{
    return {uses_.storage.inForce(), uses_.storage.cameraFolderName(camera())};
}

void Import::press()
{
    pressedFor_ = target();
}

void Import::go()
{
    const Target now = target();
    const Target meant = std::exchange(pressedFor_, std::nullopt).value_or(now);
    if (face_.cmdGo && now != meant) {
        face_.failure =
            now.storage != meant.storage
                ? kOtherStorage
                : QStringLiteral("camera %1 has another address now").arg(cameraText(camera()));
        Q_EMIT changed();
    } else if (face_.cmdGo) {
        uses_.scope.launch(copy());
    }
}

ImportOrder Import::order() const
{
    const QString source = folders_.path() + u'\\';
    const QString target = uses_.storage.cameraFolderText(camera());
    return {source,      target, native(source), native(target), uses_.storage.workFolder(),
            face_.Filtre};
}

QCoro::Task<> Import::copy()
{
    begin();
    const ImportOrder order = this->order(); // before the wait, in which an address may change
    ImportResult result;
    const auto atEnd = qScopeGuard([this, &result] { end(result); });
    const LinkedStop ending(uses_.scope.stopToken(), atOnce_);
    co_await uses_.conformity.whileRunning(atOnce_.get_token());
    const NamesInUse names(uses_.conformity); // the source may be a camera's folder
    if (hasTarget()) { // otherwise it has lost its address since it was chosen
        result = co_await run_.run(order, copying_.get_token(), atOnce_.get_token());
    }
    if (overtaken_) {
        result.end = ImportEnd::Aborted;
        result.failure = kOtherStorage;
    } else if (result.end == ImportEnd::Aborted) {
        const QString missing = missingFolder();
        result.failure = missing.isEmpty() ? result.failure : missing;
    }
}

// For a target that is gone, the copy names the file that it could not copy.
QString Import::missingFolder() const
{
    if (!uses_.storage.isPresent()) {
        return QStringLiteral("the storage folder %1 is not there").arg(uses_.storage.inForce());
    }
    const bool isMissing = !target_.isEmpty() && !folderExists(target_);
    return isMissing ? QStringLiteral("the camera's folder is not there") : QString();
}

bool Import::isStillTarget() const
{
    return uses_.storage.inForce() == storage_;
}

void Import::followStorage()
{
    if (face_.running && !isStillTarget()) {
        overtaken_ = true;
        atOnce_.request_stop();
    } else if (open_ && !isStillTarget()) {
        takeTarget();
    } else if (open_ && face_.iTarget.isEmpty() && uses_.storage.isUsable()) {
        showTarget(); // its folder may be back
    } else if (open_) {
        showButton();
        Q_EMIT changed();
    }
}

void Import::begin()
{
    copying_ = std::stop_source();
    atOnce_ = std::stop_source();
    overtaken_ = false;
    reopened_ = false;
    storage_ = uses_.storage.inForce();
    target_ = uses_.storage.cameraFolder(camera());
    initialCount_ = counting_ ? std::nullopt : std::optional(shownCount_);
    face_.ctr = kNone;
    face_.running = true;
    face_.failure.clear();
    showButton();
    face_.progress = {};
    Q_EMIT changed();
}

void Import::showProgress()
{
    face_.progress = run_.progress();
    face_.ctr = QString::number(face_.progress.copied);
    if (face_.progress.copied > 0 && !reopened_) {
        const qint64 before = initialCount_.value_or(face_.progress.files);
        shownCount_ = before - face_.progress.collisions;
        face_.NbF = QString::number(shownCount_);
    }
    Q_EMIT changed();
}

void Import::end(const ImportResult &result)
{
    tell(result);
    face_.running = false;
    face_.failure = result.failure;
    identical_ = result.end == ImportEnd::Identical;
    if (isStillTarget()) {
        showButton();
        Q_EMIT changed();
    } else {
        storage_ = uses_.storage.inForce();
        showTarget();
    }
    if (result.end != ImportEnd::Identical) {
        Q_EMIT imagesAdded(target_);
    }
}

// A window closed meanwhile says nothing, even if that was within the last file. One that is open
// again says how the run has ended.
void Import::tell(const ImportResult &result)
{
    if (!open_) {
        return;
    }
    switch (result.end) {
    case ImportEnd::Identical:
        Q_EMIT messageWanted(QStringLiteral("Source and target are identical"));
        break;
    case ImportEnd::Copied:
        Q_EMIT messageWanted(copiedText(result.copied));
        count();
        break;
    case ImportEnd::Aborted:
        Q_EMIT messageWanted(QStringLiteral("Copy aborted"));
        break;
    case ImportEnd::Stopped:
        break;
    }
}

} // namespace velmora
