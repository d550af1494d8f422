#include "app/Program.h"

#include <QCoreApplication>
#include <QTimer>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr auto kSplashTime = 2s;

} // namespace

Program::Program(CaptureEngine &engine, DesktopOpener &opener)
    : engine_(engine)
    , opener_(opener)
    , interface_(engine.services(), engine.debugSwitch(), opener_, engine.timer())
    , planche_(engine.settings(), engine.log())
{
    connectWindows();
}

void Program::connectWindows()
{
    connect(&interface_, &Interface::hiddenByUser, this, &Program::showImages);
    connect(&interface_, &Interface::endWanted, this, &Program::end);
    connect(&planche_, &planche::setUpWanted, this, &Program::showSettings);
    connect(&planche_, &planche::closeWanted, this, [this] {
        if (interface_.isVisible()) {
            planche_.hide();
        } else {
            end();
        }
    });
    connect(&closing_, &TitleBox::dismissed, this, [this] { engine_.scheduler().giveUp(); });
    connect(&engine_.store(), &ImageStore::imageStored, &planche_, &planche::showStored);
    connect(&engine_.store(), &ImageStore::cameraFailed, &planche_, &planche::showFailed);
    connect(&engine_.problems(), &Problems::warned, this, [this](const QString &text) {
        interface_.showMessage(text);
        planche_.showMessage(text);
        messages_.warn(text);
    });
}

void Program::start()
{
    engine_.launch(startUp());
}

QCoro::Task<> Program::startUp()
{
    engine_.debugSwitch().load();
    engine_.log().trace(QStringLiteral("********* Interface Form Load ***************"));
    showSplash();
    co_await engine_.clock().yield();
    SetTopMost(splash_, TopMost::Off);
    co_await Initialise();
    if (ending_) {
        co_return;
    }
    engine_.storage().testSA();
    engine_.start();
    if (engine_.storage().lamp() == LampColour::Red) {
        showSettings();
    } else {
        showImages();
    }
    co_await engine_.clock().yield();
    if (!ending_) {
        co_await engine_.scheduler().Timer_Timer();
    }
}

void Program::showSplash()
{
    splash_.present();
    SetTopMost(splash_, TopMost::On);
    QTimer::singleShot(kSplashTime, &splash_, &QWidget::close);
}

QCoro::Task<> Program::Initialise()
{
    co_await engine_.clock().yield();
    engine_.storage().load();
    planche_.moveTo(readPlace(engine_.settings(), kBrowserPlace, engine_.problems()));
    slideshowPlace_ = readPlace(engine_.settings(), kSlideshowPlace, engine_.problems());
    planche_.show();
    co_await engine_.clock().yield();
    engine_.debugSwitch().load();
    engine_.options().load();
    engine_.page().load();
    engine_.log().trace(QStringLiteral("Fin Init"));
}

void Program::showSettings()
{
    interface_.bringUp();
}

void Program::showImages()
{
    planche_.show();
    planche_.raise();
    planche_.activateWindow();
}

void Program::bringToFront()
{
    if (ending_) {
        return;
    }
    if (interface_.isVisible()) {
        interface_.showNormal();
        showSettings();
    } else {
        planche_.showNormal();
        showImages();
    }
}

void Program::end()
{
    if (ending_) {
        engine_.scheduler().giveUp();
        return;
    }
    ending_ = true;
    leave();
}

void Program::hideWindows()
{
    interface_.allowClose();
    planche_.allowClose();
    interface_.close();
    planche_.close();
    splash_.close();
}

QCoro::Task<> Program::lastPass()
{
    closing_.present();
    const std::chrono::milliseconds limit = 2 * engine_.options().downloadLimit() + 5s;
    QTimer::singleShot(limit, this, [this] { engine_.scheduler().giveUp(); });
    co_await engine_.scheduler().lastTick();
    closing_.close();
}

QCoro::Task<> Program::leave()
{
    co_await engine_.clock().yield(); // a window cannot be closed from its own close event
    hideWindows();
    if (engine_.storage().lamp() == LampColour::Green) {
        co_await lastPass();
    }
    co_await engine_.close();
    QCoreApplication::quit();
}

} // namespace velmora
