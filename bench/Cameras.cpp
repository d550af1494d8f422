#include "Cameras.h"

#include "cameras/CameraTable.h"
#include "settings/Keys.h"

#include <QDir>
#include <QFile>

namespace velmora::bench {
namespace {

constexpr int kStartMs = 5000;

} // namespace

Cameras::Cameras(const QString &server, int delayMs, int bodyBytes)
{
    process_.start(server, {QString::number(delayMs), QString::number(bodyBytes)});
    process_.waitForReadyRead(kStartMs);
    port_ = process_.readLine().trimmed().toInt();
}

Cameras::~Cameras()
{
    process_.closeWriteChannel();
    process_.waitForFinished(kStartMs);
}

QString Cameras::url(int group, int row, bool dead) const
{
    return QStringLiteral("http://127.0.0.1:%1/%2%3/%4.png")
        .arg(port_)
        .arg(dead ? QStringLiteral("hole") : QStringLiteral("cam"))
        .arg(group)
        .arg(row);
}

Folder::Folder(Url url)
    : url_(std::move(url))
{
    QDir(folder_.path()).mkpath(QStringLiteral("drives/c/in"));
    resetSettings();
}

void Folder::resetSettings() const
{
    QFile::remove(folder_.filePath(QStringLiteral("Velmora.ini")));
    const SettingsFile settings(folder_.path());
    for (int group = 0; group < kGroups; ++group) {
        settings.write(listSection(group), keys::kGroupSwitch, 1);
        for (int row = 0; row < kRows; ++row) {
            settings.write(listSection(group), rowKey(keys::kUrl.word, row), url_(group, row));
        }
    }
}

} // namespace velmora::bench
