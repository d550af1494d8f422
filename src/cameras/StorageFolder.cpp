#include "cameras/StorageFolder.h"

#include "base/Folders.h"
#include "cameras/StoragePath.h"

namespace velmora {
namespace {

const QString kControl = QStringLiteral("Control");
const QString kStRep = QStringLiteral("StRep");
const QString kDefaultFolder = QStringLiteral("C:\\in");

} // namespace

StorageState storageState(bool folderPresent)
{
    return folderPresent ? StorageState{LampColour::Green, true, false, QStringLiteral("Ok")}
                         : StorageState{LampColour::Red, false, true, QStringLiteral("Quitter")};
}

std::optional<QString> storageRefusal(const NativePaths &paths, const QString &nativeFolder)
{
    const QString text = paths.folderText(nativeFolder);
    if (FormRep(text) == text && paths.native(text) == nativeFolder) {
        return std::nullopt;
    }
    return QStringLiteral("The folder %1 cannot be the storage folder: its path holds a blank or "
                          "one of \\ * ? < > | \", which are taken out of storage paths")
        .arg(nativeFolder);
}

QString storedStorage(const SettingsSnapshot &settings)
{
    const QString stored = settings.read(kControl, kStRep);
    return stored.isEmpty() ? kDefaultFolder : stored;
}

void setStorage(SettingsDraft &draft, const QString &text)
{
    draft.write(kControl, kStRep, FormRep(withBackslashes(text).trimmed()));
}

StorageFolder::StorageFolder(const CameraTable &table, const NativePaths &paths, EventLog &log,
                             Problems &problems)
    : table_(table)
    , paths_(paths)
    , log_(log)
    , problems_(problems)
{
}

bool StorageFolder::isPresent() const
{
    const QString path = native(text_);
    return !path.isEmpty() && folderExists(path);
}

QString StorageFolder::native(const QString &pathText) const
{
    return paths_.native(pathText).value_or(QString());
}

void StorageFolder::setText(const QString &text)
{
    text_ = text;
    Q_EMIT textChanged(text_);
}

void StorageFolder::load()
{
    setText(storedStorage(table_.settings().snapshot()));
}

void StorageFolder::adoptStored()
{
    const QString stored = storedStorage(table_.settings().snapshot());
    if (editing_ || FormRep(stored.trimmed()) == FormRep(text_.trimmed())) {
        return;
    }
    setText(stored);
    testSA();
    timersStopped_ = timersStopped_ && state_.lamp == LampColour::Red;
}

void StorageFolder::testSA()
{
    log_.trace(QStringLiteral("Interface TestSA"));
    checkRequested_ = false;
    setText(FormRep(text_.trimmed()));
    state_ = storageState(isPresent());
    Q_EMIT checked(state_);
}

void StorageFolder::edit(const QString &typed)
{
    text_ = withBackslashes(typed);
    testSA();
    table_.settings().write(kControl, kStRep, text_);
}

void StorageFolder::choose(const QString &nativeFolder)
{
    if (const auto refusal = storageRefusal(paths_, nativeFolder)) {
        problems_.tell(*refusal);
        return;
    }
    edit(paths_.folderText(nativeFolder));
}

void StorageFolder::beginEdit()
{
    editing_ = true;
    timersStopped_ = true;
    Q_EMIT editBegan();
}

void StorageFolder::endEdit()
{
    editing_ = false;
    testSA();
    // Without this, one click into the box would end the capture for good.
    timersStopped_ = timersStopped_ && state_.lamp == LampColour::Red;
}

void StorageFolder::recheck()
{
    const bool wasPresent = state_.lamp != LampColour::Red;
    if (isPresent() == wasPresent) {
        return;
    }
    testSA();
    timersStopped_ = timersStopped_ && (editing_ || state_.lamp == LampColour::Red);
}

void StorageFolder::MakeDir_Click()
{
    log_.trace(QStringLiteral("Interface MkDir"));
    setText(pathToMake(FormRep(text_.trimmed())));
    makeLevels();
    makeCameraFolders();
    setText(text_.chopped(1));
    timersStopped_ = false;
    testSA();
    table_.settings().write(kControl, kStRep, text_);
    Q_EMIT folderMade();
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
    if (!isPresent()) {
        return; // told already; a hundred messages more would not help
    }
    for (int group = 0; group < kGroups; ++group) {
        for (int row = 0; row < kRows; ++row) {
            const QString name = table_.CameraFolderName({group, row});
            if (!name.isEmpty()) {
                make(folderText(name), QStringLiteral("of camera %1:%2").arg(group).arg(row));
            }
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
