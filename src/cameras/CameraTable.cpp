#include "cameras/CameraTable.h"

#include "base/LeadingNumber.h"
#include "cameras/FolderName.h"

#include <array>
#include <utility>

namespace velmora {
namespace {

bool isOn(double number)
{
    return number != 0;
}

template <typename Settings>
QString read(const Settings &settings, RowKey key, CameraAddress camera)
{
    return settings.read(groupSection(camera.group), rowKey(key.word, camera.row));
}

template <typename Settings>
double number(const Settings &settings, RowKey key, CameraAddress camera)
{
    return leadingNumber(read(settings, key, camera));
}

template <typename Settings>
QString readUrl(const Settings &settings, CameraAddress camera)
{
    return settings.read(listSection(camera.group), rowKey(keys::kUrl.word, camera.row));
}

} // namespace

QString listSection(int group)
{
    return keys::kListWord.toString() + QString::number(group);
}

QString groupSection(int group)
{
    return keys::kGroupWord.toString() + QString::number(group);
}

QString rowKey(QStringView word, int row)
{
    return word.toString() + QString::number(row);
}

void forgetRow(SettingsDraft &draft, CameraAddress camera)
{
    for (const RowKey key : keys::kValuesOfARow) {
        draft.remove(groupSection(camera.group), rowKey(key.word, camera.row));
    }
}

void setUrl(SettingsDraft &draft, CameraAddress camera, QStringView url)
{
    draft.write(listSection(camera.group), rowKey(keys::kUrl.word, camera.row), url);
}

CameraTable::CameraTable(const SettingsFile &settings, Problems &problems)
    : settings_(settings)
    , problems_(problems)
{
}

QString CameraTable::url(CameraAddress camera) const
{
    return readUrl(settings_, camera);
}

QString CameraTable::CameraFolderName(CameraAddress camera) const
{
    return encodeFolderName(url(camera));
}

bool CameraTable::isGroupActive(int group) const
{
    return isGroupActive(settings_.snapshot(), group);
}

QString CameraTable::url(const SettingsSnapshot &settings, CameraAddress camera)
{
    return readUrl(settings, camera);
}

bool CameraTable::isGroupActive(const SettingsSnapshot &settings, int group)
{
    return settings.number(listSection(group), keys::kGroupSwitch) == 1;
}

CameraSchedule CameraTable::schedule(const SettingsSnapshot &settings, CameraAddress camera)
{
    CameraSchedule schedule;
    schedule.url = url(settings, camera);
    schedule.automatic = isOn(velmora::number(settings, keys::kAutoDelai, camera));
    schedule.bestTime = bestTimeFromText(read(settings, keys::kBestTime, camera));
    schedule.lastImage = read(settings, keys::kLocalTime, camera);
    return schedule;
}

bool CameraTable::deletesOld(const SettingsSnapshot &settings, CameraAddress camera)
{
    return isOn(velmora::number(settings, keys::kEffM, camera));
}

bool CameraTable::hasLamp(const SettingsSnapshot &settings, CameraAddress camera, LampColour colour)
{
    return velmora::number(settings, keys::kSB, camera) == static_cast<qint32>(colour);
}

bool CameraTable::wasLoaded(const SettingsSnapshot &settings, CameraAddress camera)
{
    return velmora::number(settings, keys::kTimeLoad, camera) != 0 ||
           !read(settings, keys::kLocalTime, camera).isEmpty() ||
           !read(settings, keys::kLastModified, camera).isEmpty();
}

CameraRecord CameraTable::record(const SettingsSnapshot &settings, CameraAddress camera) const
{
    return {read(settings, keys::kLastModified, camera), read(settings, keys::kBestTime, camera),
            number(settings, keys::kNewImages, camera),
            velmora::number(settings, keys::kAutoDelai, camera) == 1};
}

QString CameraTable::value(RowKey key, CameraAddress camera) const
{
    return read(settings_, key, camera);
}

void CameraTable::setValue(RowKey key, CameraAddress camera, QStringView value) const
{
    settings_.write(groupSection(camera.group), rowKey(key.word, camera.row), value);
}

SettingsValue CameraTable::valueToSet(RowKey key, CameraAddress camera, QString value)
{
    return {groupSection(camera.group), rowKey(key.word, camera.row), std::move(value)};
}

SettingsValue CameraTable::whileUrlIs(CameraAddress camera, QString url)
{
    return {listSection(camera.group), rowKey(keys::kUrl.word, camera.row), std::move(url)};
}

void CameraTable::setUrl(CameraAddress camera, QStringView url) const
{
    settings_.write(listSection(camera.group), rowKey(keys::kUrl.word, camera.row), url);
}

void CameraTable::setGroupActive(int group, bool active) const
{
    settings_.write(listSection(group), keys::kGroupSwitch, active ? 1 : 0);
}

int CameraTable::number(const SettingsSnapshot &settings, RowKey key, CameraAddress camera) const
{
    const QString section = groupSection(camera.group);
    const QString name = rowKey(key.word, camera.row);
    return problems_.orDefault([&] { return settings.int32(section, name); }, 0);
}

CameraRow CameraTable::row(CameraAddress camera) const
{
    return row(settings_.snapshot(), camera);
}

CameraRow CameraTable::row(const SettingsSnapshot &settings, CameraAddress camera) const
{
    CameraRow row;
    row.url = url(settings, camera);
    row.automatic = isOn(velmora::number(settings, keys::kAutoDelai, camera));
    row.deleteOld = deletesOld(settings, camera);
    row.bestTime = bestTimeFromText(read(settings, keys::kBestTime, camera));
    row.lamp = static_cast<LampColour>(number(settings, keys::kSB, camera));
    row.loadSeconds = number(settings, keys::kTimeLoad, camera);
    row.newImages = number(settings, keys::kNewImages, camera);
    return row;
}

QString CameraTable::lampText(LampColour colour)
{
    return QString::number(static_cast<qint32>(colour));
}

void CameraTable::clearRow(CameraAddress camera) const
{
    const QString red = lampText(LampColour::Red);
    const QString none = QStringLiteral("0");
    settings_.write(std::array{
        valueToSet(keys::kSB, camera, red), valueToSet(keys::kBestTime, camera, BestTime{}.text()),
        valueToSet(keys::kNewImages, camera, none), valueToSet(keys::kTimeLoad, camera, none)});
}

} // namespace velmora
