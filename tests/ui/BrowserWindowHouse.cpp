#include "BrowserWindowHouse.h"

#include "ui/PictureClipboard.h"

#include <QFileInfo>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr int kMostTurns = 2000;
constexpr int kHues = 360;

QPoint middleOf(QWidget &widget)
{
    return qobject_cast<QCheckBox *>(&widget) != nullptr ? QPoint(8, widget.height() / 2)
                                                         : widget.rect().center();
}

} // namespace

BrowserWindowHouse::BrowserWindowHouse()
{
    QObject::connect(&house.store, &ImageStore::imageStored, &window, &planche::showStored);
    QObject::connect(&house.store, &ImageStore::cameraFailed, &window, &planche::showFailed);
    QObject::connect(&window, &planche::playWanted, &film, &Slideshow::PauseCine_MouseDown);
    QObject::connect(&window, &planche::setUpPressed, &browser, &ImageBrowser::closeFilm);
    QObject::connect(&window, &planche::copyWanted, &window, &copyPicture);
    QObject::connect(&window, &planche::openWanted, &window,
                     [this](const QString &path) { opener.open(path); });
}

// Readers and loaders end before the parts that they use.
BrowserWindowHouse::~BrowserWindowHouse()
{
    browser.close();
    filmWindow.close();
    window.allowClose();
    window.close();
    house.scheduler.giveUp();
    house.scope.requestStop();
    clock.advance(1s);
}

void BrowserWindowHouse::addImages(CameraAddress camera, int count)
{
    house.addCamera(camera, cameraUrl(camera));
    for (int i = 0; i < count; ++i) {
        house.putImage(camera, storedName(i),
                       pictureBytes(QColor::fromHsv(i * 7 % kHues, 200, 200)));
    }
}

void BrowserWindowHouse::open()
{
    window.present();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    settle();
    browser.begin();
    settle();
}

void BrowserWindowHouse::openOn(int count)
{
    addImages({0, 0}, count);
    open();
}

void BrowserWindowHouse::settle()
{
    for (int turn = 0; turn < kMostTurns; ++turn) {
        clock.advance(0ms);
        QCoreApplication::processEvents();
        if (loader.isIdle() && house.scope.running() <= endless) {
            break;
        }
    }
    clock.advance(0ms); // the pictures that the last of it wanted
    clock.advance(0ms);
    EXPECT_TRUE(loader.isIdle());
}

void BrowserWindowHouse::fire(const QString &timer)
{
    ASSERT_TRUE(QMetaObject::invokeMethod(&find<QTimer>(timer), "timeout", Qt::DirectConnection));
}

void BrowserWindowHouse::holdFilm()
{
    constexpr auto kLongerThanATest = 1h;
    auto &cine = find<QTimer>(QStringLiteral("cine"));
    if (cine.isActive()) {
        cine.start(kLongerThanATest);
    }
}

PictureView &BrowserWindowHouse::cell(int index)
{
    return find<PictureView>(QStringLiteral("Vue%1").arg(index));
}

int BrowserWindowHouse::frame(int index)
{
    return find<QWidget>(QStringLiteral("Cadre%1").arg(index)).property("BorderStyle").toInt();
}

QList<int> BrowserWindowHouse::framed()
{
    QList<int> cells;
    for (int index = 0; index < kCells; ++index) {
        if (frame(index) == 1) {
            cells.append(index);
        }
    }
    return cells;
}

QString BrowserWindowHouse::shown(int cell)
{
    return shown(QStringLiteral("Vue%1").arg(cell));
}

QString BrowserWindowHouse::shown(const QString &picture)
{
    return QFileInfo(find<QWidget>(picture).accessibleDescription()).fileName();
}

QString BrowserWindowHouse::imagePath(CameraAddress camera, const QString &name) const
{
    return house.tree.path(house.folder(camera)) + u'/' + name;
}

void BrowserWindowHouse::click(const QString &control, Qt::MouseButton button,
                               Qt::KeyboardModifiers modifiers)
{
    auto &widget = find<QWidget>(control);
    QTest::mouseClick(&widget, button, modifiers, middleOf(widget));
    settle();
}

void BrowserWindowHouse::press(const QString &control, Qt::MouseButton button,
                               Qt::KeyboardModifiers modifiers)
{
    auto &widget = find<QWidget>(control);
    QTest::mousePress(&widget, button, modifiers, middleOf(widget));
    settle();
}

void BrowserWindowHouse::clickRow(const QString &list, int row)
{
    auto &view = find<QListView>(list);
    const QModelIndex index = view.model()->index(row, 0);
    view.scrollTo(index);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(index).center());
    settle();
}

void BrowserWindowHouse::key(const QString &control, int key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(&find<QWidget>(control), static_cast<Qt::Key>(key), modifiers);
    settle();
}

void BrowserWindowHouse::keyInWindow(int key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(window.windowHandle(), static_cast<Qt::Key>(key), modifiers);
    settle();
}

void BrowserWindowHouse::retype(const QString &box, const QString &text)
{
    auto &edit = find<QLineEdit>(box);
    edit.setFocus();
    QTest::keyClick(&edit, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&edit, text);
}

QString BrowserWindowHouse::stored(QStringView key) const
{
    return house.settings.read(u"Control", key);
}

} // namespace velmora::test
