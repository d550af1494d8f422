#include "support/CaptureHouse.h"

#include "capture/CameraUrl.h"
#include "support/RunTask.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

QString nameOf(CameraAddress camera)
{
    return QStringLiteral("%1:%2").arg(camera.group).arg(camera.row);
}

} // namespace

CaptureHouse::CaptureHouse(PictureSource &source, FakeClock &fakeClock, FirstCheck storageCheck)
    : CaptureHouse(source, fakeClock, fakeClock, storageCheck)
{
}

CaptureHouse::CaptureHouse(PictureSource &source, FakeClock &fakeClock, Clock &engineClock,
                           FirstCheck storageCheck)
    : clock(fakeClock)
    , engine(tree.path(), engineClock, source)
    , view(engine)
    , settings(engine.settings())
    , paths(engine.paths())
    , log(engine.log())
    , problems(engine.problems())
    , table(engine.table())
    , storage(engine.storage())
    , options(engine.options())
    , scope(engine.scope())
    , store(engine.store())
    , timer(engine.timer())
    , scheduler(engine.scheduler())
    , page(view.page())
    , status(view.status())
{
    tree.makeFolder(u"drives/c/in");
    tree.write(u"Velmora.ini", "[Control]\r\nStRep=C:\\in\r\nTempo=60\r\nTIO=5\r\n");
    record();
    options.load();
    storage.load();
    page.load();
    scheduler.start();
    if (storageCheck == FirstCheck::Done) {
        storage.testSA();
    }
    log.setOn(true);
    texts_.clear();
    captions_.clear();
}

CaptureHouse::~CaptureHouse()
{
    scheduler.giveUp();
    scope.requestStop();
    clock.advance(std::chrono::seconds{1});
    EXPECT_EQ(scope.running(), 0) << "something outlives the house";
}

void CaptureHouse::record()
{
    connect(&status, &CaptureStatus::changed, this, [this](Caption caption, const QString &text) {
        captions_.emplace_back(caption, text);
        texts_.append(text);
    });
    connect(&problems, &Problems::warned, this,
            [this](const QString &text) { texts_.append(text); });
    connect(&store, &ImageStore::imageStored, this,
            [this](CameraAddress camera) { stored_.append(nameOf(camera)); });
    connect(&store, &ImageStore::cameraFailed, this,
            [this](CameraAddress camera, const QString &reason) {
                failed_.append(nameOf(camera));
                texts_.append(reason);
            });
}

void CaptureHouse::addCamera(CameraAddress camera, const QString &url) const
{
    table.setUrl(camera, url);
    table.setGroupActive(camera.group, true);
}

QString CaptureHouse::value(QStringView word, CameraAddress camera) const
{
    return table.value(RowKey{word}, camera);
}

void CaptureHouse::setValue(QStringView word, CameraAddress camera, const QString &value) const
{
    table.setValue(RowKey{word}, camera, value);
}

void CaptureHouse::showGroup(int group)
{
    page.Selecteur_Click(group, WindowState::Visible);
}

void CaptureHouse::beginTick()
{
    scope.launch(scheduler.Timer_Timer());
    clock.advance(std::chrono::milliseconds{0});
}

void CaptureHouse::tick()
{
    scope.launch(scheduler.Timer_Timer());
    finish();
}

void CaptureHouse::launchLoad(CameraAddress camera)
{
    const QString folderText = storage.folderText(table.CameraFolderName(camera));
    scope.launch(store.ChargeFile(expandTemplate(table.url(camera)), folderText, camera));
}

void CaptureHouse::load(CameraAddress camera)
{
    launchLoad(camera);
    finish();
}

void CaptureHouse::beginLoad(CameraAddress camera)
{
    launchLoad(camera);
    clock.advance(std::chrono::milliseconds{0});
}

void CaptureHouse::finish()
{
    runToEnd(scope.join());
}

QString CaptureHouse::folder(CameraAddress camera) const
{
    return QStringLiteral("drives/c/in/") + table.CameraFolderName(camera).remove(u'\\');
}

QStringList CaptureHouse::images(CameraAddress camera) const
{
    const QString path = folder(camera);
    return tree.exists(path) ? tree.files(path) : QStringList();
}

void CaptureHouse::putImage(CameraAddress camera, const QString &name,
                            const QByteArray &bytes) const
{
    tree.write(folder(camera) + u'/' + name, bytes);
}

QString CaptureHouse::logText() const
{
    static const QRegularExpression timeOfDay(QStringLiteral("(^|\n)\\d\\d:\\d\\d:\\d\\d "));
    if (!tree.exists(u"Velmora.log")) {
        return {};
    }
    return QString::fromUtf8(tree.read(u"Velmora.log")).replace(timeOfDay, QStringLiteral("\\1"));
}

QStringList CaptureHouse::shown(Caption caption) const
{
    QStringList texts;
    for (const auto &[which, text] : captions_) {
        if (which == caption) {
            texts.append(text);
        }
    }
    return texts;
}

QString cameraUrl(CameraAddress camera)
{
    return QStringLiteral("http://cam/%1/%2/picture.jpg").arg(camera.group).arg(camera.row);
}

} // namespace velmora::test
