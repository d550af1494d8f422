#include "view/CameraPage.h"

#include "base/Folders.h"
#include "cameras/AddressRule.h"
#include "cameras/CameraChoices.h"

#include <QScopedValueRollback>

#include <utility>

namespace velmora {
namespace {

QStringView boxValue(bool checked)
{
    return checked ? u"1" : u"0";
}

bool isRow(int number)
{
    return number >= 0 && number < kRows;
}

} // namespace

CameraPage::CameraPage(const CameraTable &table, const StorageFolder &storage, EventLog &log,
                       Problems &problems)
    : table_(table)
    , storage_(storage)
    , log_(log)
    , problems_(problems)
    , editing_(table, storage, problems)
{
    connect(&editing_, &AddressEditing::addressChanged, this, &CameraPage::followAddress);
    connect(&remarks_, &CameraRemarks::changed, this, [this](CameraAddress camera) {
        if (camera.group == group_) {
            Q_EMIT rowChanged(camera.row);
        }
    });
}

QString CameraPage::title(int row) const
{
    return namedTitle(table_.settings().snapshot(), {group_, row});
}

void CameraPage::load()
{
    group_ = keys::kSelecteur.read(table_.settings(), problems_);
    editing_.begin(group_);
    groupActive_ = table_.isGroupActive(group_);
    const SettingsSnapshot settings = table_.settings().snapshot();
    for (const CameraAddress camera : kAllCameras) {
        addresses_[camera] = CameraTable::url(settings, camera);
    }
    Q_EMIT pageLoaded();
}

void CameraPage::Selecteur_Click(int group, WindowState window)
{
    log_.trace(QStringLiteral("Interface Selecteur_Click"));
    if (window == WindowState::Hidden) {
        return;
    }
    const QScopedValueRollback loading(loading_, true);
    group_ = group;
    editing_.begin(group);
    live_.reset();
    for (int row = 0; row < kRows; ++row) {
        loadRow(row);
    }
    groupActive_ = table_.isGroupActive(group_);
    keys::kSelecteur.write(table_.settings(), group_);
    currentRow_ = rememberedRow();
    Q_EMIT pageLoaded();
    Q_EMIT picturesCleared();
}

// Of one state of the settings: an address that another command stores meanwhile would count as
// known before its row is read.
void CameraPage::reread()
{
    const QScopedValueRollback loading(loading_, true);
    const SettingsSnapshot settings = table_.settings().snapshot();
    for (int row = 0; row < kRows; ++row) {
        rereadRow(settings, row);
    }
    groupActive_ = CameraTable::isGroupActive(settings, group_);
    followAddresses(settings);
    Q_EMIT pageReread();
}

// A camera that is being fetched stays orange, and a text that cannot be stored stays in its box.
void CameraPage::rereadRow(const SettingsSnapshot &settings, int row)
{
    const CameraAddress camera{group_, row};
    const CameraRow before = at(row);
    at(row) = table_.row(settings, camera);
    at(row).lamp = at(row).lampAtRest();
    const bool isLive = live_ && live_->camera == camera;
    if (isLive && live_->colour != LampColour::Orange) {
        live_->colour = at(row).lamp;
    }
    const bool isOfSame = at(row).url == addresses_[camera];
    const bool isTyped = isLive && live_->address.isEmpty(); // and perhaps not stored yet
    if (before.lamp == LampColour::Orange && isOfSame && (isTyped || !at(row).url.isEmpty())) {
        at(row).lamp = before.lamp;
    }
    if (addressRefusal(before.url, row)) {
        at(row).url = before.url;
    }
}

// Whichever group is on screen: a remark is about a camera, not about its row.
void CameraPage::followAddresses(const SettingsSnapshot &settings)
{
    for (const CameraAddress camera : kAllCameras) {
        followStored(camera, CameraTable::url(settings, camera));
    }
}

void CameraPage::followStored(CameraAddress camera, const QString &address)
{
    if (std::exchange(addresses_[camera], address) != address) {
        takeOther(camera, address);
        forgetLive(camera);
    }
}

// The camera that another program has put there, with all that is its own. The boxes of other rows
// may hold what could not be stored.
void CameraPage::takeRow(CameraAddress camera)
{
    {
        const QScopedValueRollback loading(loading_, true);
        const SettingsSnapshot settings = table_.settings().snapshot();
        rereadRow(settings, camera.row);
        followStored(camera, CameraTable::url(settings, camera));
    }
    Q_EMIT rowReread(camera.row);
}

// What is fetched of the camera that had the row before is of no interest any more.
void CameraPage::forgetLive(CameraAddress camera)
{
    if (live_ && live_->camera == camera) {
        live_.reset();
    }
    Q_EMIT cameraReplaced(camera);
}

void CameraPage::takeOther(CameraAddress camera, const QString &address)
{
    remarks_.set(camera, address.isEmpty() ? QString() : QStringLiteral("not fetched yet"));
    Q_EMIT addressStored(camera);
}

void CameraPage::loadRow(int row)
{
    const CameraAddress camera{group_, row};
    if (table_.url(camera).isEmpty()) {
        table_.clearRow(camera);
    }
    at(row) = table_.row(camera);
    followStored(camera, at(row).url);
}

int CameraPage::rememberedRow() const
{
    const QString key = rowKey(keys::kMemSource, group_);
    const int stored = Int16Key{keys::kControl, key}.read(table_.settings(), problems_);
    const int row = stored >= kRows ? stored - kRows : stored;
    return isRow(row) ? row : 0;
}

void CameraPage::setAutomatic(int row, bool on)
{
    at(row).automatic = on;
    table_.setValue(keys::kAutoDelai, {group_, row}, boxValue(on));
}

void CameraPage::setDeleteOld(int row, bool on)
{
    at(row).deleteOld = on;
    table_.setValue(keys::kEffM, {group_, row}, boxValue(on));
}

void CameraPage::resetBestTime(int row)
{
    at(row).bestTime = {};
    table_.setValue(keys::kBestTime, {group_, row}, BestTime{}.text());
    Q_EMIT rowChanged(row);
}

void CameraPage::setGroupActive(bool on)
{
    groupActive_ = on;
    table_.setGroupActive(group_, on);
}

void CameraPage::RAZ()
{
    for (int row = 0; row < kRows; ++row) {
        table_.setValue(keys::kNewImages, {group_, row}, u"0");
        at(row).newImages = 0;
        Q_EMIT rowChanged(row);
    }
}

void CameraPage::changeSource(int row, const QString &text)
{
    if (loading_) {
        return;
    }
    currentRow_ = row;
    at(row).url = text;
    editing_.type(row, text, shownCamera(row).address);
    if (text != lastUrlShown_) {
        Q_EMIT liveViewWanted({group_, row}, text);
        lastUrlShown_ = text;
    }
}

void CameraPage::clickSource(int row, const QString &text)
{
    currentRow_ = row;
    if (!text.isEmpty()) {
        Q_EMIT liveViewWanted({group_, row}, text);
    }
}

void CameraPage::leaveSource(int row, const QString &text)
{
    const CameraAddress camera{group_, row};
    const bool wasOther = table_.url(camera) != addresses_[camera];
    const std::optional<QString> address = editing_.leave(row, text);
    if (address && wasOther) {
        takeRow(camera); // what is typed gets its switches, which must be seen
    } else if (address) {
        at(row).url = *address;
    }
}

void CameraPage::restoreSource(int row)
{
    editing_.begin({group_, row});
}

void CameraPage::fillSource(int row, const QString &text)
{
    restoreSource(row); // what was typed before does not count any more
    const QString stored = storedAddress(row);
    editing_.type(row, text, stored);
    if (text != stored) {
        Q_EMIT cameraReplaced({group_, row});
    }
}

void CameraPage::storeElsewhere(CameraAddress camera, const QString &text)
{
    editing_.store(camera, text);
}

void CameraPage::followAddress(CameraAddress camera, const QString &address)
{
    if (camera.group == group_) {
        at(camera.row).url = address;
    }
    addresses_[camera] = table_.url(camera);
    takeOther(camera, address);
}

ShownCamera CameraPage::shownCamera(int row) const
{
    const CameraAddress camera{group_, row};
    return {camera, addresses_[camera]};
}

bool CameraPage::isStillThere(const ShownCamera &shown)
{
    if (shown.camera.group != group_) {
        return false;
    }
    if (table_.url(shown.camera) != addresses_[shown.camera]) {
        takeRow(shown.camera);
    }
    return addresses_[shown.camera] == shown.address;
}

QString CameraPage::storedAddress(int row) const
{
    return table_.url({group_, row});
}

QString CameraPage::storedFolder(int row) const
{
    return storage_.native(storage_.cameraFolderText({group_, row}));
}

QString CameraPage::folderToOpen(int row) const
{
    return storage_.lastCheck() == StorageCheck::Found ? storedFolder(row) : QString();
}

QString CameraPage::reason(int row) const
{
    const QString &remark = remarks_.of({group_, row});
    if (!remark.isEmpty() || at(row).lamp != LampColour::Red) {
        return remark;
    }
    return storedAddress(row).isEmpty() ? QString() : QStringLiteral("the last download failed");
}

QString CameraPage::whyNothingToOpen(int row) const
{
    if (storage_.lastCheck() != StorageCheck::Found) {
        return QStringLiteral("Nothing to open: the storage folder does not exist");
    }
    return folderExists(storedFolder(row))
               ? QString()
               : QStringLiteral("Nothing to open yet: the folder of camera %1 is made when its "
                                "first image is fetched")
                     .arg(cameraText({group_, row}));
}

template <typename Change>
void CameraPage::changeShown(CameraAddress camera, Change change)
{
    if (camera.group == group_) {
        change(at(camera.row));
        Q_EMIT rowChanged(camera.row);
    }
}

void CameraPage::showLoading(CameraAddress camera)
{
    changeShown(camera, [&](CameraRow &row) {
        currentRow_ = camera.row;
        row.lamp = LampColour::Orange;
    });
    keepForLive(camera, LampColour::Orange);
}

void CameraPage::showLamp(CameraAddress camera, LampColour colour)
{
    changeShown(camera, [&](CameraRow &row) { row.lamp = colour; });
    keepForLive(camera, colour);
}

void CameraPage::keepForLive(CameraAddress camera, LampColour colour)
{
    if (live_ && live_->camera == camera) {
        live_->colour = colour;
    }
}

void CameraPage::beginLive(CameraAddress camera)
{
    endLive();
    changeShown(camera, [&](CameraRow &row) {
        currentRow_ = camera.row;
        live_ = {camera, row.lamp, addresses_[camera]};
        row.lamp = LampColour::Orange;
    });
}

void CameraPage::endLive()
{
    if (const std::optional<LiveLamp> ended = std::exchange(live_, std::nullopt)) {
        changeShown(ended->camera, [&](CameraRow &row) { row.lamp = ended->colour; });
    }
}

void CameraPage::showLoadSeconds(CameraAddress camera, int seconds)
{
    changeShown(camera, [&](CameraRow &row) { row.loadSeconds = seconds; });
}

void CameraPage::showBestTime(CameraAddress camera, BestTime time)
{
    changeShown(camera, [&](CameraRow &row) { row.bestTime = time; });
}

void CameraPage::showNewImages(CameraAddress camera, int count)
{
    changeShown(camera, [&](CameraRow &row) { row.newImages = count; });
}

} // namespace velmora
