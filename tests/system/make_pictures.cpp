// Makes pictures for the system tests: make_pictures FOLDER NAME... writes one under each name, a
// PNG if the name ends in .png and a JPEG otherwise. The name decides its contents; each has
// between 20 and 200 KB.
#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <QRandomGenerator>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int kQuality = 85;

QSize sizeOf(const QString &name)
{
    return name.endsWith(u".png", Qt::CaseInsensitive) ? QSize(240, 180) : QSize(480, 360);
}

// A coloured gradient under noise: noise alone makes the file grow with the picture's area.
QImage picture(const QString &name)
{
    const QSize size = sizeOf(name);
    const QList<uint> seed = name.toUcs4();
    QRandomGenerator random(seed.constData(), seed.size());
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient fade(0, 0, size.width(), size.height());
    fade.setColorAt(0, QColor::fromHsv(random.bounded(360), 200, 220));
    fade.setColorAt(1, QColor::fromHsv(random.bounded(360), 200, 90));
    painter.fillRect(image.rect(), fade);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const QColor old = image.pixelColor(x, y);
            const int grain = random.bounded(24);
            image.setPixelColor(x, y, old.lighter(90 + grain));
        }
    }
    return image;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    for (qsizetype i = 2; i < arguments.size(); ++i) {
        const QString &name = arguments[i];
        const char *const format = name.endsWith(u".png") ? "PNG" : "JPEG";
        if (!picture(name).save(arguments[1] + u'/' + name, format, kQuality)) {
            std::fprintf(stderr, "make_pictures: %s cannot be written\n", qPrintable(name));
            return EXIT_FAILURE;
        }
    }
    return EXIT_SUCCESS;
}
