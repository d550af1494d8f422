// Writes pictures of a demonstration camera as the program would have stored them up to now:
// make_demo_pictures FOLDER CAMERA COUNT SECONDS writes COUNT of them, SECONDS apart. The last one
// is SECONDS old.
#include "demo/Picture.h"

#include <QFile>
#include <QGuiApplication>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int kArguments = 5;

// The picture's time in UTC, then day and hour of its storing in local time.
QString nameOf(const QDateTime &taken)
{
    return taken.toUTC().toString(QStringLiteral("yyyyMMdd_HHmmss")) +
           taken.toString(QStringLiteral("ddHH")) + QStringLiteral(".jpg");
}

bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != kArguments) {
        return EXIT_FAILURE;
    }
    const int camera = arguments[2].toInt();
    const int step = arguments[4].toInt();
    const QDateTime now = QDateTime::currentDateTime();
    for (int left = arguments[3].toInt(); left > 0; --left) {
        const QDateTime taken = now.addSecs(-qint64{left} * step);
        const QString path = arguments[1] + u'/' + nameOf(taken);
        if (!write(path, velmora::demo::takePicture(camera, taken).jpeg)) {
            std::fprintf(stderr, "make_demo_pictures: %s cannot be written\n", qPrintable(path));
            return EXIT_FAILURE;
        }
    }
    return EXIT_SUCCESS;
}
