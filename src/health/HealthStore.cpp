#include "health/HealthStore.h"

#include "base/FileReader.h"
#include "base/FileWriter.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <utility>

namespace velmora {
namespace {

constexpr int kVersion = 1;
constexpr qint64 kMostBytes = qint64{4} << 20;

QString path(const QString &programFolder)
{
    return programFolder + QStringLiteral("/Velmora.health");
}

bool isLink(const QString &path)
{
    return QFileInfo(path).isSymLink();
}

// A passing error gives the file another chance; these do not pass.
bool isCertain(std::error_code error)
{
    return error == std::errc::no_such_file_or_directory || error == std::errc::invalid_argument ||
           error == std::errc::file_too_large;
}

// A file of that name that is no use is ours and damaged, but a link may lead to anything.
HealthFile stateOfUseless(const QString &path, const WholeFile &file)
{
    if (!file.bytes && !isCertain(file.error)) {
        return HealthFile::Unread;
    }
    const bool isNothing =
        file.error == std::errc::no_such_file_or_directory || (file.bytes && file.bytes->isEmpty());
    const bool isForeign =
        file.error == std::errc::invalid_argument || (!isNothing && isLink(path));
    return isForeign ? HealthFile::Foreign : HealthFile::Missing;
}

// A passing error must not make the file look lost.
WholeFile readTwice(const QString &path)
{
    WholeFile file = readWholeFile(path, kMostBytes);
    return file.bytes || isCertain(file.error) ? std::move(file) : readWholeFile(path, kMostBytes);
}

} // namespace

StoredHealth loadHealth(const QString &programFolder)
{
    StoredHealth stored;
    const WholeFile file = readTwice(path(programFolder));
    const QJsonObject root = QJsonDocument::fromJson(file.bytes.value_or(QByteArray())).object();
    const int version = root[QStringLiteral("version")].toInt();
    if (version < 1) {
        stored.state = stateOfUseless(path(programFolder), file);
        return stored;
    }
    if (version > kVersion) {
        stored.state = HealthFile::Newer;
        return stored;
    }
    stored.state = HealthFile::Read;
    const QJsonArray cameras = root[QStringLiteral("cameras")].toArray();
    for (const CameraAddress camera : kAllCameras) {
        stored.cameras[camera] = CameraHealth::fromJson(cameras.at(indexOf(camera)).toObject());
    }
    return stored;
}

void saveHealth(const QString &programFolder, const CameraHealths &cameras)
{
    QJsonArray list;
    for (const CameraHealth &camera : cameras) {
        list.append(camera.folder.isEmpty() ? QJsonObject() : camera.toJson());
    }
    const QJsonDocument document(
        QJsonObject{{QStringLiteral("version"), kVersion}, {QStringLiteral("cameras"), list}});
    const std::error_code ignored =
        replaceFile(path(programFolder), document.toJson(QJsonDocument::Compact));
    static_cast<void>(ignored); // counted again, if need be
}

} // namespace velmora
