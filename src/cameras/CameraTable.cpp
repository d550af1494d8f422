#include "cameras/CameraTable.h"

#include "base/LeadingNumber.h"
#include "cameras/FolderName.h"

#include <array>

namespace velmora {
namespace {

bool isOn(double number)
{
    return number != 0;
}

} // namespace

QString listSection(int group)
{
    return QStringLiteral("Liste") + QString::number(group);
}

QString groupSection(int group)
{
    return QStringLiteral("Groupe") + QString::number(group);
}

QString rowKey(QStringView word, int row)
{
    return word.toString() + QString::number(row);
}

void forgetRow(SettingsDraft &draft, CameraAddress camera)
{
    for (const QStringView word :
         std::array<QStringView, 8>{u"AutoDelai", u"EffM", u"BestTime", u"SB", u"TimeLoad", u"lNew",
                                    u"LastModified", u"LocalTime"}) {
        draft.remove(groupSection(camera.group), rowKey(word, camera.row));
    }
}

CameraTable::CameraTable(const SettingsFile &settings, Problems &problems)
    : settings_(settings)
    , problems_(problems)
{
}

QString CameraTable::url(CameraAddress camera) const
{
    return settings_.read(listSection(camera.group), rowKey(u"lst", camera.row));
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
    return settings.read(listSection(camera.group), rowKey(u"lst", camera.row));
}

bool CameraTable::isGroupActive(const SettingsSnapshot &settings, int group)
{
    return settings.number(listSection(group), u"LstAct") == 1;
}

CameraSchedule CameraTable::schedule(const SettingsSnapshot &settings, CameraAddress camera)
{
    const QString section = groupSection(camera.group);
    CameraSchedule schedule;
    schedule.url = url(settings, camera);
    schedule.automatic = isOn(settings.number(section, rowKey(u"AutoDelai", camera.row)));
    schedule.bestTime = bestTimeFromText(settings.read(section, rowKey(u"BestTime", camera.row)));
    schedule.lastImage = settings.read(section, rowKey(u"LocalTime", camera.row));
    return schedule;
}

bool CameraTable::deletesOld(const SettingsSnapshot &settings, CameraAddress camera)
{
    return isOn(settings.number(groupSection(camera.group), rowKey(u"EffM", camera.row)));
}

CameraRecord CameraTable::record(CameraAddress camera) const
{
    const SettingsSnapshot settings = settings_.snapshot();
    const QString section = groupSection(camera.group);
    return {settings.read(section, rowKey(u"LastModified", camera.row)),
            settings.read(section, rowKey(u"BestTime", camera.row)),
            problems_.orDefault(
                [&] { return settings.int32(section, rowKey(u"lNew", camera.row)); }, 0),
            settings.number(section, rowKey(u"AutoDelai", camera.row)) == 1};
}

QString CameraTable::value(QStringView word, CameraAddress camera) const
{
    return settings_.read(groupSection(camera.group), rowKey(word, camera.row));
}

void CameraTable::setValue(QStringView word, CameraAddress camera, QStringView value) const
{
    settings_.write(groupSection(camera.group), rowKey(word, camera.row), value);
}

void CameraTable::setUrl(CameraAddress camera, QStringView url) const
{
    settings_.write(listSection(camera.group), rowKey(u"lst", camera.row), url);
}

void CameraTable::setGroupActive(int group, bool active) const
{
    settings_.write(listSection(group), u"LstAct", active ? 1 : 0);
}

int CameraTable::number(QStringView word, CameraAddress camera) const
{
    const QString section = groupSection(camera.group);
    const QString key = rowKey(word, camera.row);
    return problems_.orDefault([&] { return settings_.int32(section, key); }, 0);
}

CameraRow CameraTable::row(CameraAddress camera) const
{
    CameraRow row;
    row.url = url(camera);
    row.automatic = isOn(leadingNumber(value(u"AutoDelai", camera)));
    row.deleteOld = deletesOld(settings_.snapshot(), camera);
    row.bestTime = bestTimeFromText(value(u"BestTime", camera));
    row.lamp = static_cast<LampColour>(number(u"SB", camera));
    row.loadSeconds = number(u"TimeLoad", camera);
    row.newImages = number(u"lNew", camera);
    return row;
}

void CameraTable::clearRow(CameraAddress camera) const
{
    setValue(u"SB", camera, QString::number(static_cast<qint32>(LampColour::Red)));
    setValue(u"BestTime", camera, BestTime{}.text());
    setValue(u"lNew", camera, u"0");
    setValue(u"TimeLoad", camera, u"0");
}

} // namespace velmora
