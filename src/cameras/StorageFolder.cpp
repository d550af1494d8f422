#include "cameras/StorageFolder.h"

#include "base/Folders.h"
#include "cameras/CameraChoices.h"
#include "cameras/FolderName.h"
#include "cameras/StoragePath.h"
#include "settings/StoredText.h"

#include <utility>

namespace velmora {
namespace {

// Cleaning turns an empty text into this, and so ends deleting it letter by letter.
constexpr QStringView kNothingCleaned = u"\\";

QString unfitRefusal(const QString &folder)
{
    return QStringLiteral("The folder %1 cannot be the storage folder: the settings file keeps one "
                          "line of 254 characters of the Western European set")
        .arg(folder);
}

// Of a program that was killed while its box was empty, the folder before is meant.
QString storedText(const SettingsSnapshot &settings)
{
    const QString stored = keys::kStRep.read(settings);
    const QString before = keys::kStorageBefore.read(settings);
    return stored == kNothingCleaned && !before.isEmpty() ? before : stored;
}

// While the box is empty the folder before is stored too, and may be the very one that another
// program then names.
QString asStored(const SettingsSnapshot &settings)
{
    return keys::kStRep.read(settings) + u'\n' + keys::kStorageBefore.read(settings);
}

} // namespace

StorageState storageState(bool folderPresent, Editing editing)
{
    return {folderPresent ? StorageCheck::Found : StorageCheck::Missing,
            folderPresent && editing == Editing::No};
}

std::optional<QString> storageRefusal(const NativePaths &paths, const QString &nativeFolder)
{
    const QString text = paths.folderText(nativeFolder);
    if (FormRep(text) == text && paths.native(text) == nativeFolder) {
        return isStorable(text) ? std::nullopt : std::optional(unfitRefusal(nativeFolder));
    }
    return QStringLiteral("The folder %1 cannot be the storage folder: its path holds a blank or "
                          "one of \\ * ? < > | \", which are taken out of storage paths")
        .arg(nativeFolder);
}

std::optional<QString> storageTextRefusal(const QString &text)
{
    return isStorable(FormRep(withBackslashes(text).trimmed())) ? std::nullopt
                                                                : std::optional(unfitRefusal(text));
}

QString storedStorage(const SettingsSnapshot &settings)
{
    return FormRep(storedText(settings).trimmed());
}

void setStorage(SettingsDraft &draft, const QString &text)
{
    keys::kStRep.write(draft, FormRep(withBackslashes(text).trimmed()));
    keys::kStorageBefore.remove(draft);
}

StorageFolder::StorageFolder(const CameraTable &table, const NativePaths &paths, EventLog &log,
                             Problems &problems)
    : table_(table)
    , paths_(paths)
    , log_(log)
    , problems_(problems)
{
}

bool StorageFolder::isThere(const QString &pathText) const
{
    const QString path = native(pathText);
    return !path.isEmpty() && folderExists(path);
}

bool StorageFolder::isPresent() const
{
    return isThere(inForce_);
}

QString StorageFolder::native(const QString &pathText) const
{
    return paths_.native(pathText).value_or(QString());
}

QString StorageFolder::cameraFolderName(CameraAddress camera) const
{
    return folderNameOf(table_.url(camera));
}

QString StorageFolder::folderNameOf(QStringView address) const
{
    return problems_.orDefault([&] { return encodeFolderName(address); }, QString());
}

QString StorageFolder::cameraFolderText(CameraAddress camera) const
{
    return folderText(cameraFolderName(camera));
}

QString StorageFolder::cameraFolder(CameraAddress camera) const
{
    const QString name = cameraFolderName(camera);
    return name.isEmpty() ? QString() : native(folderText(name));
}

QString StorageFolder::folderOf(QStringView address) const
{
    return cameraFolderOf(paths_, inForce_, address);
}

QString StorageFolder::workFolder() const
{
    return native(folderText(u"\\tmp\\"));
}

void StorageFolder::setText(const QString &text)
{
    text_ = text;
    Q_EMIT textChanged(text_);
}

void StorageFolder::takeText()
{
    if (inForce_ != text_) {
        inForce_ = text_;
        seen_ = false;
        ++version_;
    }
}

// What an emptied box stores would be the root of the file system to the next start, and what is
// left of a text that cannot be stored, another folder. Failing, it is as silent as every write.
void StorageFolder::store()
{
    const SettingsFile &settings = table_.settings();
    const QString before = emptied_ ? inForce_ : QString();
    const QString &text = isStorable(text_) ? text_ : inForce_;
    if (before == keys::kStorageBefore.read(settings)) {
        keys::kStRep.write(settings, text);
    } else {
        static_cast<void>(settings.change([&](SettingsDraft &draft) {
            keys::kStRep.write(draft, text);
            if (emptied_) {
                keys::kStorageBefore.write(draft, before);
            } else {
                keys::kStorageBefore.remove(draft);
            }
        }));
    }
    lastSeen_ = asStored(settings.snapshot());
}

// What the program stores by itself: what another has stored and not told yet stays for
// adoptStored(), or for the next start. Looked at and stored as one step, which no command comes
// between.
void StorageFolder::storeOverKnown()
{
    QString seen = lastSeen_;
    const SettingsChange change = table_.settings().change([&](SettingsDraft &draft) {
        if (asStored(draft.snapshot()) == lastSeen_) {
            keys::kStRep.write(draft, isStorable(text_) ? text_ : inForce_);
            keys::kStorageBefore.remove(draft);
            seen = asStored(draft.snapshot());
        }
    });
    lastSeen_ = change == SettingsChange::Made ? seen : lastSeen_;
}

void StorageFolder::load()
{
    const SettingsSnapshot settings = table_.settings().snapshot();
    lastSeen_ = asStored(settings);
    setText(storedText(settings));
    takeText();
    if (text_ != keys::kStRep.read(settings)) {
        storeOverKnown();
    }
}

void StorageFolder::adoptStored()
{
    const SettingsSnapshot settings = table_.settings().snapshot();
    const QString seen = asStored(settings);
    if (seen == std::exchange(lastSeen_, seen)) {
        return;
    }
    storedElsewhere_ = storedStorage(settings);
    if (!isBeingEdited()) {
        putInForce();
    }
}

void StorageFolder::testSA()
{
    log_.trace(QStringLiteral("Interface TestSA"));
    checkRequested_ = false;
    setText(FormRep(text_.trimmed()));
    const bool present = isThere(text_);
    if (!isBeingEdited()) {
        takeText(); // when not being edited, the text in the box is in force
        seen_ = present || wasEverThere();
    }
    state_ = storageState(present, editing_);
    Q_EMIT checked(state_);
}

void StorageFolder::beginEdit()
{
    if (isBeingEdited()) {
        return;
    }
    editing_ = Editing::Yes;
    state_.captureEnabled = false;
    ++version_;
    gate_.shut();
    Q_EMIT editBegan();
}

void StorageFolder::edit(const QString &typed)
{
    beginEdit();
    text_ = withBackslashes(typed);
    emptied_ = FormRep(text_.trimmed()) == kNothingCleaned;
    testSA();
    store();
}

void StorageFolder::setAside()
{
    if (isBeingEdited() && !emptied_ && text_ == inForce_) {
        putInForce();
    }
}

// Once cleaned, an emptied text would be the root of the file system, which no one asked for.
bool StorageFolder::takeBackEmptied()
{
    const bool wasEmptied = std::exchange(emptied_, false);
    if (wasEmptied) {
        text_ = storedElsewhere_.value_or(inForce_);
        store();
    }
    return wasEmptied;
}

// What the user has typed counts for more.
void StorageFolder::takeStoredElsewhere()
{
    if (const auto stored = std::exchange(storedElsewhere_, std::nullopt)) {
        text_ = text_ == inForce_ ? *stored : text_;
        if (text_ != storedStorage(table_.settings().snapshot())) {
            storeOverKnown();
        }
    }
}

void StorageFolder::takeBackUnstorable()
{
    if (!isStorable(text_)) {
        problems_.tell(unfitRefusal(text_));
        text_ = inForce_;
        store();
    }
}

void StorageFolder::putInForce()
{
    const QString before = inForce_;
    const bool wasEmptied = takeBackEmptied();
    takeStoredElsewhere();
    takeBackUnstorable();
    justNamed_ = justNamed_ || text_ != inForce_;
    if (std::exchange(editing_, Editing::No) == Editing::Yes) {
        ++version_;
    }
    testSA();
    gate_.open();
    if (wasEmptied && inForce_ == before) {
        Q_EMIT told(QStringLiteral("The storage box was left empty: the storage folder stays %1")
                        .arg(inForce_));
    }
}

bool StorageFolder::choose(const QString &nativeFolder)
{
    if (const auto refusal = storageRefusal(paths_, nativeFolder)) {
        problems_.tell(*refusal);
        return false;
    }
    emptied_ = false;
    storedElsewhere_.reset();
    text_ = paths_.folderText(nativeFolder);
    putInForce();
    store();
    return true;
}

void StorageFolder::recheck()
{
    const bool wasPresent = state_.check != StorageCheck::Missing;
    if (isThere(text_) != wasPresent) {
        testSA();
    }
}

void StorageFolder::MakeDir_Click()
{
    makeFolders();
    store();
}

void StorageFolder::makeMissing()
{
    makeFolders();
    storeOverKnown();
}

void StorageFolder::makeFolders()
{
    log_.trace(QStringLiteral("Interface MkDir"));
    takeBackEmptied();
    takeBackUnstorable();
    storedElsewhere_.reset();
    setText(pathToMake(FormRep(text_.trimmed())));
    const bool wasThere = isThere(text_);
    makeLevels();
    makeCameraFolders();
    setText(text_.chopped(1));
    putInForce();
    Q_EMIT folderMade();
    if (!wasThere && isPresent()) {
        Q_EMIT told(madeText());
    }
}

QString StorageFolder::madeText() const
{
    return QStringLiteral("The storage folder %1 was made").arg(inForce_);
}

// A stored image, or an answer from a camera, means that the folder was there.
bool StorageFolder::mayHoldImages() const
{
    const SettingsSnapshot settings = table_.settings().snapshot();
    for (const CameraAddress camera : kAllCameras) {
        if (!CameraTable::schedule(settings, camera).lastImage.isEmpty()) {
            return true;
        }
    }
    return false;
}

bool StorageFolder::wasEverThere() const
{
    return seen_ || (!justNamed_ && mayHoldImages());
}

bool StorageFolder::isAway() const
{
    return !isPresent() && wasEverThere();
}

StoragePlace StorageFolder::makeForUse()
{
    if (isPresent()) {
        return StoragePlace::There;
    }
    if (isAway()) {
        return StoragePlace::Away;
    }
    const QString path = native(inForce_);
    if (path.isEmpty() || makeFolder(path)) {
        return StoragePlace::Missing;
    }
    recheck();
    Q_EMIT told(madeText());
    return StoragePlace::Made;
}

void StorageFolder::makeLevels()
{
    const QStringList levels = pathLevels(text_);
    for (const QString &level : levels) {
        make(level, level);
    }
}

void StorageFolder::makeCameraFolders()
{
    if (!isThere(text_)) {
        return; // already reported; a hundred more messages would not help
    }
    for (const CameraAddress camera : kAllCameras) {
        const QString name = table_.CameraFolderName(camera);
        if (!name.isEmpty()) {
            make(text_ + name, QStringLiteral("of camera ") + cameraText(camera));
        }
    }
}

void StorageFolder::make(const QString &pathText, const QString &shown)
{
    const QString path = native(pathText);
    if (path.isEmpty()) {
        problems_.tell(
            QStringLiteral("The folder %1 cannot be made: there is no such drive").arg(shown));
        return;
    }
    if (folderExists(path)) {
        return;
    }
    if (const std::error_code error = makeFolder(path)) {
        problems_.tell(QStringLiteral("The folder %1 cannot be made: %2")
                           .arg(shown, QString::fromStdString(error.message())));
    }
}

} // namespace velmora
