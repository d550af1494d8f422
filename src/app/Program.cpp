#include "app/Program.h"

#include "cameras/CameraChoices.h"
#include "cameras/Credentials.h"
#include "ui/PictureClipboard.h"
#include "ui/ToFront.h"

#include <QCoreApplication>
#include <QDir>
#include <QTimer>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr auto kSplashTime = 2s;

// The guide is beside the program, in a build folder as well as where it is installed.
QString guide()
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() +
                           QStringLiteral("/../share/velmora/guide/index.html"));
}

} // namespace

Program::Program(CaptureEngine &engine, DesktopOpener &opener, MailSender &sender)
    : engine_(engine)
    , opener_(opener)
    , view_(engine_)
    , images_(engine_, sender)
    , health_(engine_, sender)
    , import_(engine_, images_)
    , links_(opener_, engine_.paths(), engine_.scope())
    , interface_(engine_, view_, opener_)
    , sheet_(engine_.settings(), engine_.trial())
    , list_(engine_.settings())
    , planche_(images_.browser(), engine_, view_, images_.loader())
    , film_(images_.film(), engine_.settings(), engine_.storage())
    , importWindow_(import_.import(), import_.loader())
    , alarm_(images_.alarm(), images_.mail())
    , calendar_(images_.calendar())
    , healthWindow_(health_.book(), health_.watch(), engine_.settings())
    , filmKeep_(images_.filmMaker(), images_.film())
    , shutdown_([this](const QString &text) { leaveAfterError(text); })
{
    film_.standAbove(planche_);
    connectMain();
    connectSheet();
    connectBrowser();
    connectAlarm();
    connectKeeping();
    connectHealth();
    connectConformity();
    connectProblems();
}

void Program::connectMain()
{
    links_.setLink(guide());
    interface_.followLinks(links_);
    connect(&interface_, &Interface::hiddenByUser, this, &Program::showImages);
    connect(&interface_, &Interface::endWanted, this, &Program::end);
    connect(&interface_, &Interface::importWanted, &importWindow_, &frmImport::present);
    connect(&view_.page(), &CameraPage::addressStored, &import_.import(), &Import::noticeAddress);
    connect(&interface_, &Interface::zoomWanted, &zoom_, &Zoom::present);
    connect(&closing_, &TitleBox::dismissed, this, [this] { engine_.scheduler().giveUp(); });
}

void Program::connectSheet()
{
    connect(&interface_, &Interface::sheetWanted, &sheet_, &CameraSheet::present);
    connect(&sheet_, &CameraSheet::addressChosen, &interface_, &Interface::fillAddress);
    connect(&sheet_, &CameraSheet::saved, &view_.page(), &CameraPage::reread);
    connect(&interface_, &Interface::listWanted, &list_, &CameraListWindow::present);
    connect(&list_, &CameraListWindow::storing, &interface_, &Interface::endAddress);
    connect(&list_, &CameraListWindow::stored, &view_.page(), &CameraPage::reread);
}

void Program::connectBrowser()
{
    connect(&planche_, &planche::setUpPressed, this, [this] {
        showSettings();
        images_.film().close();
    });
    connect(&planche_, &planche::setUpReleased, &interface_, &QWidget::show);
    connect(&planche_, &planche::closeWanted, this, &Program::closeImages);
    connect(&planche_, &planche::copyWanted, this, &copyPicture);
    connect(&planche_, &planche::openWanted, this, &Program::open);
    connect(&planche_, &planche::playWanted, &images_.film(), &Slideshow::PauseCine_MouseDown);
    connect(&engine_.retention(), &Retention::imagesDeleted, &images_.browser(),
            &ImageBrowser::showDeletion);
    connect(&engine_.store(), &ImageStore::imageStored, &planche_, &planche::showStored);
    connect(&engine_.store(), &ImageStore::cameraFailed, &planche_, &planche::showFailed);
    connect(&engine_.store(), &ImageStore::undatedNoticed, this, &Program::tellUndated);
    connect(&planche_, &planche::cameraShown, this, [this](CameraAddress camera) {
        film_.nameCamera(namedTitle(engine_.settings().snapshot(), camera));
    });
    connect(&view_.page(), &CameraPage::pageReread, &planche_, &planche::rename);
}

// A line rather than a box: it appears unasked, and nothing is wrong.
void Program::tellUndated(CameraAddress camera)
{
    const QString text = undatedNotice(engine_.settings().snapshot(), camera);
    engine_.log().trace(text);
    interface_.showMessage(text);
    planche_.showNotice(text);
}

// A mail that fails is reported once and not logged.
void Program::connectAlarm()
{
    connect(&planche_, &planche::alarmWanted, &alarm_, &Alarm::present);
    connect(&images_.mail(), &AlarmMail::failed, this, [this](const QString &text) {
        if (!ending_) {
            messages_.warn(text);
        }
    });
}

void Program::connectKeeping()
{
    connect(&planche_, &planche::calendarWanted, &calendar_, &CalendarWindow::present);
    connect(&planche_, &planche::keepWanted, this, &Program::keepFilm);
    connect(&images_.calendar(), &Calendar::rangeChosen, &filmKeep_, &FilmKeep::takeDays);
    connect(&film_, &fCine::keepWanted, this, [this] { filmKeep_.present({}); });
    connect(&filmKeep_, &FilmKeep::openWanted, this, &Program::open);
}

// For the days chosen in the calendar, if it is open.
void Program::keepFilm()
{
    filmKeep_.present(calendar_.isVisible() ? images_.calendar().range() : std::nullopt);
}

void Program::connectHealth()
{
    connect(&planche_, &planche::healthWanted, &healthWindow_, &HealthWindow::present);
    connect(&healthWindow_, &HealthWindow::cameraWanted, this, &Program::goTo);
    connect(&health_, &HealthEngine::noticed, &planche_, &planche::showNotice);
    connect(&health_.watch(), &HealthWatch::lateChanged, this, [this] {
        planche_.showLate(health_.watch().late());
        interface_.showLate(health_.watch().late());
    });
    connect(&health_.watch(), &HealthWatch::roomChanged, this, &Program::showRoom);
    connect(&health_.oldest(), &OldestFirst::imagesDeleted, &images_.browser(),
            &ImageBrowser::showDeletion);
    connect(&import_.import(), &Import::imagesAdded, &health_.book(), &HealthBook::recountFolder);
    connect(&images_.browser(), &ImageBrowser::imageDeleted, this, [this](const ImageFile &image) {
        health_.book().recountFolder(engine_.storage().native(image.folder));
    });
}

// Shown where a user looks for what was stored: how long that can go on.
void Program::showRoom()
{
    const auto &room = health_.watch().room();
    planche_.showRoom(room ? roomText(*room, health_.book().bytesADay()) : QString());
}

void Program::goTo(CameraAddress camera)
{
    showImages();
    images_.browser().chooseGroup(camera.group);
    images_.browser().chooseCamera(camera.row);
}

void Program::connectConformity()
{
    Conformity &conformity = engine_.conformity();
    connect(&conformity, &Conformity::began, &interface_, &Interface::holdButtons);
    connect(&conformity, &Conformity::ended, &interface_, &Interface::releaseButtons);
    connect(&conformity, &Conformity::statusChanged, &interface_, &Interface::showWork);
    connect(&conformity, &Conformity::statusChanged, &planche_, &planche::showMessage);
    connect(&conformity, &Conformity::ended, this, [this] { interface_.showWork(QString()); });
    connect(&conformity, &Conformity::ended, &health_.book(), &HealthBook::recountAll);
}

void Program::connectProblems()
{
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
    if (ending_) {
        co_return;
    }
    Initialise();
    engine_.storage().testSA();
    engine_.start();
    health_.start();
    if (engine_.storage().lamp() == LampColour::Red) {
        showSettings();
        bringBefore(interface_, planche_);
        splash_.standAbove(interface_);
    } else {
        showImages();
        splash_.standAbove(planche_);
    }
    engine_.checkSettings(); // after the windows, so that its messages appear in front of them
    images_.browser().begin();
    co_await engine_.clock().yield();
    if (!ending_) {
        co_await engine_.scheduler().firstTick();
    }
}

void Program::showSplash()
{
    splash_.present();
    SetTopMost(splash_, TopMost::On);
    QTimer::singleShot(kSplashTime, &splash_, &QWidget::close);
}

// In one go: each turn of the event loop would paint the browser once more before it has anything
// to show.
void Program::Initialise()
{
    engine_.storage().load();
    planche_.moveTo(readPlace(engine_.settings(), kBrowserPlace, engine_.problems()));
    film_.moveTo(readPlace(engine_.settings(), kSlideshowPlace, engine_.problems()));
    planche_.present();
    engine_.debugSwitch().load();
    engine_.options().load();
    view_.page().load();
    engine_.log().trace(QStringLiteral("Fin Init"));
}

void Program::showSettings()
{
    interface_.bringUp();
}

void Program::showImages()
{
    planche_.present();
}

// Beside the main window only the images are closed; alone, they are the program.
void Program::closeImages()
{
    if (interface_.isVisible()) {
        planche_.unload();
    } else {
        end();
    }
}

void Program::open(const QString &path)
{
    if (opener_.open(path) == OpenOutcome::NoOpener) {
        planche_.showMessage(
            tr("%1 cannot be opened: xdg-open is not installed").arg(pathWithoutCredentials(path)));
    }
}

// Starting the program a second time does not leave a box of the first: its rows stay as they are.
void Program::bringToFront()
{
    if (ending_) {
        return;
    }
    if (interface_.isVisible()) {
        velmora::bringToFront(interface_);
    } else {
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
    shutdown_.launch(leave());
}

void Program::hideWindows()
{
    interface_.allowClose();
    planche_.allowClose();
    images_.browser().close();
    film_.close();
    importWindow_.close();
    alarm_.close();
    sheet_.close();
    list_.close();
    calendar_.close();
    healthWindow_.close();
    images_.filmMaker().cancel();
    filmKeep_.close();
    zoom_.close();
    interface_.close();
    planche_.close();
    splash_.close();
}

QCoro::Task<> Program::lastPass()
{
    closing_.present();
    const std::chrono::milliseconds limit = 2 * engine_.options().downloadLimit() + 5s;
    engine_.launch(giveUpAfter(limit));
    co_await engine_.scheduler().lastTick();
    closing_.close();
}

QCoro::Task<> Program::giveUpAfter(std::chrono::milliseconds limit)
{
    const Wake wake = co_await engine_.clock().sleep(limit, engine_.scope().stopToken());
    if (wake == Wake::Elapsed) {
        engine_.scheduler().giveUp();
    }
}

QCoro::Task<> Program::leave()
{
    co_await engine_.clock().yield(); // a window cannot be closed from its own close event
    hideWindows();
    engine_.storage().takeBackEmptied();
    if (engine_.storage().isUsable()) {
        co_await lastPass();
    }
    co_await engine_.close();
    QCoreApplication::quit();
}

// Whatever is thrown on the way out, the program does not stay behind without windows.
void Program::leaveAfterError(const QString &text)
{
    // Before the text is logged: that may fail too.
    if (errorExit_.begin([this] { shutdown_.launch(leaveAtOnce()); })) {
        engine_.log().trace(text);
    }
}

QCoro::Task<> Program::leaveAtOnce()
{
    interface_.allowClose();
    planche_.allowClose();
    closing_.close();
    co_await engine_.close();
    QCoreApplication::quit();
}

} // namespace velmora
