#include "admin/RunningProgram.h"

#include "admin/ProgramDesk.h"
#include "cameras/CameraChoices.h"

#include <QDeadlineTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalSocket>

namespace velmora {
namespace {

constexpr int kWaitMs = 2000;
constexpr qint64 kMostAnswer = 256LL * 1024;

// The line of the answer, empty when there is none.
QByteArray ask(const QString &programFolder, const QByteArray &command)
{
    QLocalSocket socket;
    socket.setSocketOptions(QLocalSocket::AbstractNamespaceOption);
    socket.connectToServer(deskName(programFolder));
    if (!socket.waitForConnected(kWaitMs) || !isOwnPeer(socket)) {
        return {};
    }
    socket.write(command + '\n');
    const QDeadlineTimer deadline(kWaitMs);
    QByteArray answer;
    while (!answer.endsWith('\n') && answer.size() < kMostAnswer &&
           socket.waitForReadyRead(static_cast<int>(deadline.remainingTime()))) {
        answer += socket.readAll();
    }
    return answer;
}

std::optional<std::map<CameraAddress, Moment>> lateCameras(const QJsonValue &told)
{
    if (!told.isObject()) {
        return std::nullopt;
    }
    std::map<CameraAddress, Moment> late;
    const QJsonObject cameras = told.toObject();
    for (auto it = cameras.begin(); it != cameras.end(); ++it) {
        if (const auto camera = cameraFromText(it.key())) {
            late.emplace(*camera, Moment(std::chrono::seconds(it.value().toInteger())));
        }
    }
    return late;
}

} // namespace

bool tellChange(const QString &programFolder)
{
    return !ask(programFolder, "changed").isEmpty();
}

std::optional<ProgramReport> askProgram(const QString &programFolder)
{
    const QByteArray answer = ask(programFolder, "status");
    const QJsonDocument document = QJsonDocument::fromJson(answer);
    if (!document.isObject()) {
        return std::nullopt;
    }
    ProgramReport report;
    const QJsonObject failures = document[QStringLiteral("failures")].toObject();
    for (auto it = failures.begin(); it != failures.end(); ++it) {
        if (const auto camera = cameraFromText(it.key())) {
            report.failures.emplace(*camera, it.value().toString());
        }
    }
    report.loading = cameraFromText(document[QStringLiteral("loading")].toString());
    report.late = lateCameras(document[QStringLiteral("late")]);
    return report;
}

QString processText(qint64 number)
{
    return number > 0 ? QStringLiteral("process %1").arg(number)
                      : QStringLiteral("a process that cannot be seen from here");
}

} // namespace velmora
