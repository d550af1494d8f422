#include "FullCamera.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QRandomGenerator>

#include <cmath>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora::bench {
namespace {

constexpr int kPictures = 20; // different ones; the others are links to them
constexpr mode_t kImage = S_IFREG | 0644;
constexpr qint64 kFirstMinute = 18993600; // of the names: 2006

// Gradients with some noise, like a camera's.
QImage picture(double megapixels, int number)
{
    const int width = static_cast<int>(std::sqrt(megapixels * 1e6 * 4 / 3));
    QImage image(width, width * 3 / 4, QImage::Format_RGB32);
    QRandomGenerator random(static_cast<quint32>(number));
    for (int y = 0; y < image.height(); ++y) {
        auto *const line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            const int noise = random.bounded(24);
            line[x] = qRgb((x * 200 / width + noise) & 255, (y * 200 / width + noise) & 255,
                           (number * 10 + noise) & 255);
        }
    }
    return image;
}

QByteArray imageName(qint64 minute)
{
    const QDateTime time = QDateTime::fromSecsSinceEpoch(minute * 60, Qt::UTC);
    return time.toString(QStringLiteral("yyyyMMdd_HHmmssddHH")).toLatin1() + ".jpg";
}

} // namespace

void fillCamera(const QString &folder, int names, int pictures, double megapixels)
{
    QDir().mkpath(folder);
    const QByteArray root = QFile::encodeName(folder) + '/';
    QByteArrayList sources;
    for (int i = 0; i < kPictures; ++i) {
        const QString path = folder + QStringLiteral("/picture%1").arg(i);
        picture(megapixels, i).save(path, "JPEG", 85);
        sources.append(QFile::encodeName(path));
    }
    for (int i = 0; i < names - pictures; ++i) {
        addEmptyImage(folder, i);
    }
    for (int i = names - pictures; i < names; ++i) {
        const QByteArray path = root + imageName(kFirstMinute + i);
        static_cast<void>(::link(sources[i % kPictures].constData(), path.constData()));
    }
    for (const QByteArray &source : sources) {
        ::unlink(source.constData());
    }
}

void addEmptyImage(const QString &folder, int number)
{
    const QByteArray path = QFile::encodeName(folder) + '/' + imageName(kFirstMinute + number);
    static_cast<void>(::mknod(path.constData(), kImage, 0));
}

} // namespace velmora::bench
