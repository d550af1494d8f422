// One pass over a hundred cameras of 200 KB by the program without windows, as a whole process,
// from settings that list the cameras and nothing else into an empty tree: in turn with curl's
// process.
//   process_bench SERVER VELMORA DELAY_MS ROUNDS
// The images are written where TMPDIR is: to memory or to a disk.
#include "Measures.h"
#include "PeerPass.h"
#include "cameras/CameraAddress.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QTextStream>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

using namespace velmora;
using namespace velmora::bench;

constexpr int kLimitMs = 60000;
constexpr double kCurlLimit = 1.05; // of curl's time

double captureMs(const QString &program, const QString &folder)
{
    return msOf([&] {
        QProcess velmora;
        velmora.setStandardOutputFile(QProcess::nullDevice());
        velmora.start(program,
                      {QStringLiteral("--program-folder"), folder, QStringLiteral("--capture"),
                       QStringLiteral("--passes"), QStringLiteral("1")});
        velmora.waitForFinished(kLimitMs);
    });
}

int imagesIn(const QString &folder)
{
    QDirIterator images(folder, {QStringLiteral("2*.*")}, QDir::Files,
                        QDirIterator::Subdirectories);
    int count = 0;
    for (; images.hasNext(); images.next()) {
        ++count;
    }
    return count;
}

struct Rounds
{
    QList<double> ownMs;
    QList<double> curlMs;
    int stored = kGroups * kRows; // in the round with the fewest
};

Rounds measure(const Cameras &cameras, const QString &program, int rounds)
{
    std::vector<std::unique_ptr<Folder>> houses; // kept to the end, like curl's
    std::vector<std::unique_ptr<QTemporaryDir>> curlFolders;
    Rounds found;
    for (int round = 0; round < rounds; ++round) {
        houses.push_back(
            std::make_unique<Folder>([&](int group, int row) { return cameras.url(group, row); }));
        curlFolders.push_back(std::make_unique<QTemporaryDir>());
        found.ownMs.append(captureMs(program, houses.back()->path()));
        found.curlMs.append(curlPass(cameras, curlFolders.back()->path()).ms);
        found.stored = std::min(found.stored, imagesIn(houses.back()->path()));
    }
    return found;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() != 5) {
        QTextStream(stderr) << "process_bench SERVER VELMORA DELAY_MS ROUNDS\n";
        return 2;
    }
    const int delayMs = words.at(3).toInt();
    const Cameras cameras(words.at(1), delayMs, kPictureBytes);
    const Rounds found = measure(cameras, words.at(2), words.at(4).toInt());
    const double ms = median(found.ownMs);
    const double curlMs = median(found.curlMs);
    Report(QStringLiteral("process"))
        .add(QStringLiteral("delay_ms"), delayMs)
        .add(QStringLiteral("stored"), found.stored)
        .add(QStringLiteral("process_ms"), ms)
        .add(QStringLiteral("curl_ms"), curlMs)
        .limited(QStringLiteral("to_curl"), ms / curlMs, kCurlLimit)
        .print();
    return found.stored == kGroups * kRows ? 0 : 1;
}
