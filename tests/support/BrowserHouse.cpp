#include "support/BrowserHouse.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

void require(bool done, const QString &what)
{
    if (!done) {
        throw std::runtime_error(what.toStdString());
    }
}

// Made once, since it takes a moment.
const TempTree &fullFolder()
{
    static const TempTree folder;
    static const bool filled = [] {
        for (int number = 0; number < kFullFolder; ++number) {
            QFile file(folder.path(imageName(number)));
            require(file.open(QIODevice::WriteOnly), file.fileName());
        }
        return true;
    }();
    Q_UNUSED(filled);
    return folder;
}

} // namespace

BrowserHouse::BrowserHouse(const MakeFilm &makeFilm, FirstCheck storageCheck)
    : capture(source, clock, storageCheck)
    , conformity(capture.engine.conformity())
    , film(makeFilm(*this))
    , browser({capture.settings, capture.storage, capture.scheduler, conformity, capture.log,
               capture.problems, clock, capture.scope},
              data, *film)
{
}

void BrowserHouse::fireScan()
{
    require(QMetaObject::invokeMethod(&browser.scanTimer(), "timeout", Qt::DirectConnection),
            QStringLiteral("timeout"));
}

BrowserHouse::~BrowserHouse()
{
    browser.close();
    capture.scope.requestStop();
    clock.advance(std::chrono::seconds{1});
    EXPECT_EQ(capture.scope.running(), 0) << "something outlives the browser";
}

QString BrowserHouse::path(CameraAddress camera) const
{
    return capture.folder(camera);
}

void BrowserHouse::addCamera(CameraAddress camera, const QStringList &names) const
{
    capture.addCamera(camera, cameraUrl(camera));
    capture.tree.makeFolder(path(camera));
    for (const QString &name : names) {
        put(camera, name);
    }
}

void BrowserHouse::addImages(CameraAddress camera, int count) const
{
    addCamera(camera, imageNames(0, count));
}

void BrowserHouse::addFullFolder(CameraAddress camera) const
{
    capture.addCamera(camera, cameraUrl(camera));
    require(QFile::link(fullFolder().path(), capture.tree.path(path(camera))), path(camera));
}

void BrowserHouse::put(CameraAddress camera, const QString &name) const
{
    capture.putImage(camera, name);
}

void BrowserHouse::put(CameraAddress camera, const QString &name, const QString &modified) const
{
    put(camera, name);
    QFile file(capture.tree.path(path(camera) + u'/' + name));
    require(file.open(QIODevice::ReadWrite) &&
                file.setFileTime(QDateTime::fromString(modified, Qt::ISODate),
                                 QFileDevice::FileModificationTime),
            name);
}

void BrowserHouse::remove(CameraAddress camera, const QString &name) const
{
    require(QFile::remove(capture.tree.path(path(camera) + u'/' + name)), name);
}

void BrowserHouse::pullStorage() const
{
    require(QDir(capture.tree.path(u"drives/c")).rename(QStringLiteral("in"), QStringLiteral("ni")),
            QStringLiteral("pull"));
}

void BrowserHouse::plugStorage() const
{
    require(QDir(capture.tree.path(u"drives/c")).rename(QStringLiteral("ni"), QStringLiteral("in")),
            QStringLiteral("plug"));
}

void BrowserHouse::show(CameraAddress camera)
{
    data.state.cameraChosen({camera.group, data.state.camera().row});
    browser.chooseCamera(camera.row);
    finish();
}

void BrowserHouse::showGroup(int group)
{
    data.state.cameraChosen({group, data.state.camera().row});
    browser.setMode(Mode::Camera, true);
    finish();
}

QStringList BrowserHouse::cells() const
{
    QStringList names;
    for (int cell = 0; cell < kCells; ++cell) {
        names.append(data.sheet.image(cell).name);
    }
    return names;
}

QStringList BrowserHouse::rows() const
{
    return data.cameraRows.stringList();
}

QList<int> BrowserHouse::framed() const
{
    QList<int> cells;
    for (int cell = 0; cell < kCells; ++cell) {
        if (data.sheet.frame(cell) == FrameStyle::Framed) {
            cells.append(cell);
        }
    }
    return cells;
}

QString BrowserHouse::stored(QStringView key) const
{
    return capture.settings.read(u"Control", key);
}

void BrowserHouse::store(QStringView key, QStringView value) const
{
    capture.settings.write(u"Control", key, value);
}

QStringList BrowserHouse::newLog()
{
    const QStringList lines = capture.logText().split(u'\n', Qt::SkipEmptyParts);
    const QStringList fresh = lines.mid(logRead_);
    logRead_ = lines.size();
    return fresh;
}

QString imageName(int number)
{
    const auto two = [](int value) {
        return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0'));
    };
    return QStringLiteral("20060307_") + two(number / 3600) + two(number / 60 % 60) +
           two(number % 60) + QStringLiteral("0714.jpg");
}

QStringList imageNames(int first, int count)
{
    QStringList names;
    for (int number = first; number < first + count; ++number) {
        names.append(imageName(number));
    }
    return names;
}

} // namespace velmora::test
