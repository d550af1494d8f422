#include "BrowserHouse.h"

#include "FullCamera.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QListView>

#include <algorithm>
#include <utility>

namespace velmora::bench {
namespace {

constexpr CameraAddress kCamera{0, 0};
constexpr int kQuietTurns = 20; // the house's timer makes one every millisecond
constexpr double kQuietMs = 0.3;

QString url(int group, int row)
{
    return CameraAddress{group, row} == kCamera ? QStringLiteral("http://127.0.0.1:9/one.jpg")
                                                : QString();
}

void pressUp(QWidget &list)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, Qt::Key_Up, Qt::NoModifier);
        QCoreApplication::sendEvent(&list, &event);
    }
}

} // namespace

BrowserHouse::BrowserHouse(int names, int pictures, double megapixels)
    : folder_(url)
    , house_(folder_.path())
    , cameraFolder_(house_.engine().storage().cameraFolder(kCamera))
    , names_(names)
    , images_(house_.engine(), mail_)
    , window_({images_.browser(), house_.engine().table(), house_.engine().storage(),
               house_.engine().log(), house_.view(), images_.loader()})
{
    fillCamera(cameraFolder_, names, pictures, megapixels);
}

BrowserHouse::~BrowserHouse()
{
    images_.browser().close();
}

LongestTurn BrowserHouse::turnsUntil(const std::function<bool()> &done)
{
    LongestTurn longest;
    QElapsedTimer sinceTurn;
    sinceTurn.start();
    double before = processorMs();
    while (!done()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        const double now = processorMs();
        longest.gapMs = std::max(longest.gapMs, msSince(sinceTurn));
        longest.processorMs = std::max(longest.processorMs, now - before);
        before = now;
        sinceTurn.restart();
    }
    return longest;
}

bool BrowserHouse::isComplete()
{
    return images_.browser().shown().files.count() == names_ && images_.loader().isIdle() &&
           !window_.findChild<QWidget *>(QStringLiteral("Vue9"))->accessibleDescription().isEmpty();
}

LongestTurn BrowserHouse::open()
{
    window_.present();
    images_.browser().begin();
    return turnsUntil([this] { return isComplete(); });
}

LongestTurn BrowserHouse::step()
{
    pressUp(*window_.findChild<QListView *>(QStringLiteral("LstDir")));
    bool turned = false;
    return turnsUntil([&] { return std::exchange(turned, true) && images_.loader().isIdle(); });
}

LongestTurn BrowserHouse::refresh()
{
    bool isListed = false;
    const auto listed =
        QObject::connect(&images_.browser().fileRows(), &QAbstractItemModel::modelReset,
                         [&isListed] { isListed = true; });
    images_.browser().refresh();
    const LongestTurn longest = turnsUntil([&] { return isListed && images_.loader().isIdle(); });
    QObject::disconnect(listed);
    return longest;
}

double BrowserHouse::settle()
{
    const double begun = processorMs();
    for (int quiet = 0; quiet < kQuietTurns;) {
        const double before = processorMs();
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        quiet = processorMs() - before < kQuietMs ? quiet + 1 : 0;
    }
    return processorMs() - begun;
}

void BrowserHouse::addImage()
{
    addEmptyImage(cameraFolder_, names_++);
}

} // namespace velmora::bench
