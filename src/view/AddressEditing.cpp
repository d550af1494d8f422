#include "view/AddressEditing.h"

#include "base/Folders.h"
#include "cameras/AddressRule.h"
#include "cameras/CameraChoices.h"
#include "capture/CameraUrl.h"

#include <utility>

namespace velmora {

AddressEditing::AddressEditing(const CameraTable &table, const StorageFolder &storage,
                               Problems &problems)
    : table_(table)
    , storage_(storage)
    , problems_(problems)
{
}

void AddressEditing::begin(int group)
{
    group_ = group;
    boxes_ = {};
}

void AddressEditing::begin(CameraAddress camera)
{
    if (camera.group == group_) {
        box(camera.row) = {};
    }
}

void AddressEditing::type(int row, const QString &text, const QString &shown)
{
    std::optional<QString> &before = box(row).typedOver;
    if (!before && text != shown) {
        before = shown;
    }
}

std::optional<QString> AddressEditing::leave(int row, const QString &text)
{
    const CameraAddress camera{group_, row};
    const QString address = text.trimmed();
    if (std::exchange(box(row).left, address) != address) {
        box(row).told.clear();
    }
    const QString stored = table_.url(camera);
    std::optional<QString> &before = box(row).typedOver;
    if (address != stored && address == before.value_or(address)) {
        before.reset();
        return stored; // nothing was typed that would count for more than the other camera
    }
    if (!acceptAddress(camera, address)) {
        return std::nullopt;
    }
    makeFolderBefore(camera, address);
    if (address == stored || before == stored) {
        storeAddress(camera, address);
    } else {
        giveRow(camera, address);
    }
    before.reset();
    type(row, address, table_.url(camera)); // unless it was stored
    return address;
}

void AddressEditing::store(CameraAddress camera, const QString &text)
{
    const QString address = text.trimmed();
    if (acceptAddress(camera, address)) {
        makeFolderBefore(camera, address);
        storeAddress(camera, address);
    }
}

// A camera of another group has no box on screen whose text could be reported repeatedly.
void AddressEditing::tellOnce(CameraAddress camera, const QString &message)
{
    if (camera.group == group_) {
        QStringList &told = box(camera.row).told;
        if (told.contains(message)) {
            return;
        }
        told.append(message);
    }
    problems_.tell(message);
}

// False for an address that cannot be stored; reports that, and what would be lost of one that can.
bool AddressEditing::acceptAddress(CameraAddress camera, const QString &address)
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

// The folder is that of the address still stored, without one the storage folder itself. One that
// was in use is not made again: its disk may be away.
void AddressEditing::makeFolderBefore(CameraAddress camera, const QString &address)
{
    const QString folder = storage_.native(storage_.cameraFolderText(camera));
    const bool isWanted =
        !folder.isEmpty() && !address.isEmpty() && !storage_.isBeingEdited() && !storage_.isAway();
    if (!isWanted || folderExists(folder)) {
        return;
    }
    if (const std::error_code error = makeFolder(folder)) {
        tellOnce(camera, QStringLiteral("The folder of row %1 cannot be made: %2")
                             .arg(camera.row)
                             .arg(QString::fromStdString(error.message())));
    }
}

void AddressEditing::storeAddress(CameraAddress camera, const QString &address)
{
    const bool isOther = table_.url(camera) != address;
    if (!isOther || leaveBehind(camera, address) == SettingsChange::Made) {
        table_.setUrl(camera, address);
    }
    if (isOther) {
        Q_EMIT addressChanged(camera, address);
    }
}

// With the address goes all that was chosen for the camera if its row is emptied, and its login if
// the new one is of another server. What cannot be forgotten keeps its address, so that no login is
// ever sent to a server that it was not meant for.
SettingsChange AddressEditing::leaveBehind(CameraAddress camera, const QString &address)
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
void AddressEditing::giveRow(CameraAddress camera, const QString &address)
{
    static_cast<void>(
        table_.settings().change([&](SettingsDraft &draft) { forgetCamera(draft, camera); }));
    storeAddress(camera, address);
}

} // namespace velmora
