#include "view/CameraPage.h"

#include "base/Folders.h"
#include "cameras/AddressRule.h"
#include "cameras/CameraChoices.h"
#include "capture/CameraUrl.h"

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
{
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
    told_ = {};
    typedOver_ = {};
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

void CameraPage::reread()
{
    const QScopedValueRollback loading(loading_, true);
    for (int row = 0; row < kRows; ++row) {
        at(row) = table_.row({group_, row});
        if (at(row).url.isEmpty()) {
            at(row) = {};
            at(row).lamp = LampColour::Red;
        }
    }
    groupActive_ = table_.isGroupActive(group_);
    followAddresses();
    Q_EMIT pageReread();
}

// Whichever group is on screen: a remark is about a camera, not about its row.
void CameraPage::followAddresses()
{
    const SettingsSnapshot settings = table_.settings().snapshot();
    for (const CameraAddress camera : kAllCameras) {
        const QString address = CameraTable::url(settings, camera);
        if (std::exchange(addresses_[camera], address) != address) {
            takeOther(camera, address);
        }
    }
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
    addresses_[camera] = at(row).url;
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
    if (auto &before = typedOver_.at(static_cast<std::size_t>(row)); !before) {
        const QString stored = table_.url({group_, row});
        before = text == stored ? std::nullopt : std::optional(stored);
    }
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

QString CameraPage::storedFolder(CameraAddress camera) const
{
    return storage_.native(storage_.folderText(table_.CameraFolderName(camera)));
}

// A camera of another group has no box on screen whose text could be reported repeatedly.
void CameraPage::tellOnce(CameraAddress camera, const QString &message)
{
    if (camera.group == group_) {
        QStringList &messages = told_.at(static_cast<std::size_t>(camera.row)).messages;
        if (messages.contains(message)) {
            return;
        }
        messages.append(message);
    }
    problems_.tell(message);
}

bool CameraPage::isStorable(CameraAddress camera, const QString &address)
{
    if (const auto refusal = addressRefusal(address, camera.row)) {
        tellOnce(camera, *refusal);
        return false;
    }
    if (const auto loss = addressLoss(address, camera.row)) {
        tellOnce(camera, *loss);
    }
    return true;
}

// The folder is that of the address still stored.
void CameraPage::makeFolderBefore(CameraAddress camera, const QString &address)
{
    const QString folder = storedFolder(camera);
    const bool isWanted = !folder.isEmpty() && !address.isEmpty() && !storage_.isBeingEdited();
    if (!isWanted || folderExists(folder)) {
        return;
    }
    if (const std::error_code error = makeFolder(folder)) {
        tellOnce(camera, QStringLiteral("The folder of row %1 cannot be made: %2")
                             .arg(camera.row)
                             .arg(QString::fromStdString(error.message())));
    }
}

void CameraPage::storeAddress(CameraAddress camera, const QString &address)
{
    const bool isOther = table_.url(camera) != address;
    if (!isOther || leaveBehind(camera, address) == SettingsChange::Made) {
        table_.setUrl(camera, address);
    }
    addresses_[camera] = table_.url(camera);
    if (isOther) {
        takeOther(camera, address);
    }
}

// With the address goes all that was chosen for the camera if its row is emptied, and its login if
// the new one is of another server. What cannot be forgotten keeps its address, so that no login is
// ever sent to a server that it was not meant for.
SettingsChange CameraPage::leaveBehind(CameraAddress camera, const QString &address)
{
    return table_.settings().change([&](SettingsDraft &draft) {
        const QString before = CameraTable::url(draft.snapshot(), camera);
        if (address.isEmpty()) {
            forgetCamera(draft, camera);
        } else if (!before.isEmpty() && !isSameServer(before, address)) {
            setCameraLogin(draft, camera, {});
        }
    });
}

// Another program has put another camera into the row while this address was typed: what was chosen
// for that one, its login above all, is not this one's. Failing, it is as silent as every write.
void CameraPage::giveRow(CameraAddress camera, const QString &address)
{
    static_cast<void>(
        table_.settings().change([&](SettingsDraft &draft) { forgetCamera(draft, camera); }));
    storeAddress(camera, address);
}

void CameraPage::leaveSource(int row, const QString &text)
{
    const CameraAddress camera{group_, row};
    const QString address = text.trimmed();
    if (Told &told = told_.at(static_cast<std::size_t>(row)); told.text != address) {
        told = {address, {}};
    }
    const QString stored = table_.url(camera);
    const QString before =
        std::exchange(typedOver_.at(static_cast<std::size_t>(row)), std::nullopt).value_or(stored);
    if (address == before && before != stored) {
        at(row).url = stored; // nothing was typed that would count for more than the other camera
        return;
    }
    if (!isStorable(camera, address)) {
        return;
    }
    makeFolderBefore(camera, address);
    at(row).url = address;
    if (before == stored || address == stored) {
        storeAddress(camera, address);
    } else {
        giveRow(camera, address);
    }
}

void CameraPage::storeElsewhere(CameraAddress camera, const QString &text)
{
    const QString address = text.trimmed();
    if (isStorable(camera, address)) {
        makeFolderBefore(camera, address);
        storeAddress(camera, address);
    }
}

QString CameraPage::folderToOpen(int row) const
{
    return storage_.lamp() == LampColour::Green ? storedFolder({group_, row}) : QString();
}

QString CameraPage::reason(int row) const
{
    const QString &remark = remarks_.of({group_, row});
    if (!remark.isEmpty() || at(row).lamp != LampColour::Red) {
        return remark;
    }
    return table_.url({group_, row}).isEmpty() ? QString()
                                               : QStringLiteral("the last download failed");
}

QString CameraPage::whyNothingToOpen(int row) const
{
    if (storage_.lamp() != LampColour::Green) {
        return QStringLiteral("Nothing to open: the storage folder does not exist");
    }
    return folderExists(storedFolder({group_, row}))
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
        live_ = {camera, row.lamp};
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
