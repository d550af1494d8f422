#include "app/Program.h"

#include "app/ProgramWindows.h"
#include "cameras/CameraChoices.h"
#include "ui/HiddenInput.h"
#include "ui/NoOpener.h"
#include "ui/PictureClipboard.h"
#include "ui/ToFront.h"
#include "ui/TopMost.h"

#include <QApplication>
#include <QDialog>
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

// What they ask about is given up, so that an answer would do nothing. Hidden only: the toolkit's
// own dialogs may be waiting for one over them.
void hideQuestions()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *const window : windows) {
        auto *const dialog = qobject_cast<QDialog *>(window);
        if (dialog != nullptr && dialog->isVisible() && dialog->isModal()) {
            dialog->hide();
        }
    }
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
    , windows_(std::make_unique<ProgramWindows>(
          ProgramWindows::Uses{engine_, view_, images_, health_, import_, opener_}))
    , shutdown_([this](const QString &text) { leaveAfterError(text); })
{
    connectMain();
    connectSheet();
    connectBrowser();
    connectAlarm();
    connectKeeping();
    connectHealth();
    connectConformity();
    connectProblems();
}

Program::~Program() = default;

void Program::connectMain()
{
    links_.setLink(guide());
    windows_->interface.followLinks(links_);
    connect(&windows_->interface, &Interface::hiddenByUser, this, &Program::showImages);
    connect(&windows_->interface, &Interface::endWanted, this, &Program::end);
    connect(&windows_->interface, &Interface::importWanted, &windows_->import, &frmImport::present);
    connect(&view_.page(), &CameraPage::addressStored, &import_.import(), &Import::noticeAddress);
    connect(&windows_->interface, &Interface::zoomWanted, &windows_->zoom, &Zoom::present);
    connect(&windows_->closing, &TitleBox::dismissed, this,
            [this] { engine_.scheduler().giveUp(); });
}

void Program::connectSheet()
{
    connect(&windows_->interface, &Interface::sheetWanted, this,
            [this](CameraAddress camera) { windows_->sheet.wanted().present(camera); });
    windows_->sheet.onMade([this](CameraSheet &sheet) {
        connect(&sheet, &CameraSheet::addressChosen, &windows_->interface, &Interface::fillAddress);
        connect(&sheet, &CameraSheet::saved, &view_.page(), &CameraPage::reread);
    });
    connect(&windows_->interface, &Interface::listWanted, this,
            [this] { windows_->list.wanted().present(); });
    windows_->list.onMade([this](CameraListWindow &list) {
        connect(&list, &CameraListWindow::storing, &windows_->interface, &Interface::endAddress);
        connect(&list, &CameraListWindow::stored, &view_.page(), &CameraPage::reread);
    });
}

void Program::connectBrowser()
{
    connect(&windows_->browser, &planche::setUpPressed, this, [this] {
        showSettings();
        images_.browser().closeFilm();
    });
    connect(&windows_->browser, &planche::setUpReleased, &windows_->interface, &QWidget::show);
    connect(&windows_->browser, &planche::closeWanted, this, &Program::closeImages);
    connect(&windows_->browser, &planche::copyWanted, this, &copyPicture);
    connect(&windows_->browser, &planche::openWanted, this, &Program::open);
    connect(&windows_->browser, &planche::playWanted, &images_.film(),
            &Slideshow::PauseCine_MouseDown);
    connect(&engine_.retention(), &Retention::imagesDeleted, &images_.browser(),
            &ImageBrowser::showDeletion);
    connect(&engine_.store(), &ImageStore::imageStored, &windows_->browser, &planche::showStored);
    connect(&engine_.store(), &ImageStore::cameraFailed, &windows_->browser, &planche::showFailed);
    connect(&engine_.store(), &ImageStore::undatedNoticed, this, &Program::tellUndated);
    connect(&windows_->browser, &planche::cameraShown, this, &Program::nameFilm);
    connect(&images_.film(), &Slideshow::begun, this, &Program::nameFilm);
    connect(&images_.film(), &Slideshow::cameraChanged, this, &Program::nameFilm);
    connect(&view_.page(), &CameraPage::pageReread, &windows_->browser, &planche::showCamera);
    connect(&view_.page(), &CameraPage::rowReread, &windows_->browser, &planche::showCamera);
}

// A paused film keeps its camera while the browser shows another.
void Program::nameFilm()
{
    const CameraAddress camera = images_.film().camera();
    windows_->film.nameCamera(namedTitle(engine_.settings().snapshot(), camera));
}

// A line rather than a box: it appears unasked, and nothing is wrong.
void Program::tellUndated(CameraAddress camera)
{
    const QString text = undatedNotice(engine_.settings().snapshot(), camera);
    engine_.log().trace(text);
    windows_->interface.showMessage(text);
    windows_->browser.showNotice(text);
}

// A mail that fails is reported once and not logged.
void Program::connectAlarm()
{
    connect(&windows_->browser, &planche::alarmWanted, &windows_->alarm, &Alarm::present);
    connect(&images_.mail(), &AlarmMail::failed, this, [this](const QString &text) {
        if (!ending_) {
            messages_.warn(text);
        }
    });
}

void Program::connectKeeping()
{
    connect(&windows_->browser, &planche::calendarWanted, this,
            [this] { windows_->calendar.wanted().present(); });
    connect(&windows_->browser, &planche::keepWanted, this, &Program::keepFilm);
    connect(&windows_->film, &fCine::keepWanted, this,
            [this] { windows_->filmKeep.wanted().present({}); });
    windows_->filmKeep.onMade([this](FilmKeep &keep) {
        connect(&images_.calendar(), &Calendar::rangeChosen, &keep, &FilmKeep::takeDays);
        connect(&keep, &FilmKeep::openWanted, this, &Program::open);
    });
}

// For the days chosen in the calendar, if it is open.
void Program::keepFilm()
{
    windows_->filmKeep.wanted().present(windows_->calendar.isVisible() ? images_.calendar().range()
                                                                       : std::nullopt);
}

void Program::connectHealth()
{
    connect(&windows_->browser, &planche::healthWanted, this,
            [this] { windows_->health.wanted().present(); });
    windows_->health.onMade([this](HealthWindow &health) {
        connect(&health, &HealthWindow::cameraWanted, this, &Program::goTo);
    });
    connect(&health_, &HealthEngine::noticed, &windows_->browser, &planche::showNotice);
    connect(&health_.watch(), &HealthWatch::lateChanged, this, [this] {
        windows_->browser.showLate(health_.watch().late());
        windows_->interface.showLate(health_.watch().late());
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
    windows_->browser.showRoom(room ? roomText(*room, health_.book().bytesADay()) : QString());
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
    connect(&conformity, &Conformity::began, &windows_->interface, &Interface::holdButtons);
    connect(&conformity, &Conformity::ended, &windows_->interface, &Interface::releaseButtons);
    connect(&conformity, &Conformity::statusChanged, &windows_->interface, &Interface::showWork);
    connect(&conformity, &Conformity::statusChanged, &windows_->browser, &planche::showMessage);
    connect(&conformity, &Conformity::ended, this,
            [this] { windows_->interface.showWork(QString()); });
    connect(&conformity, &Conformity::ended, &health_.book(), &HealthBook::recountAll);
}

void Program::connectProblems()
{
    connect(&engine_.problems(), &Problems::warned, this, [this](const QString &text) {
        windows_->interface.showMessage(text);
        windows_->browser.showMessage(text);
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
    SetTopMost(windows_->splash, TopMost::Off);
    if (ending_) {
        co_return;
    }
    Initialise();
    engine_.storage().testSA();
    engine_.start();
    health_.start();
    if (engine_.storage().lastCheck() == StorageCheck::Missing) {
        showSettings();
        bringBefore(windows_->interface, windows_->browser);
        windows_->splash.standAbove(windows_->interface);
        messages_.standAbove(windows_->interface);
    } else {
        showImages();
        windows_->splash.standAbove(windows_->browser);
        messages_.standAbove(windows_->browser);
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
    windows_->splash.present();
    SetTopMost(windows_->splash, TopMost::On);
    QTimer::singleShot(kSplashTime, &windows_->splash, &QWidget::close);
}

// In one go: each turn of the event loop would paint the browser once more before it has anything
// to show. Which window gets the keyboard is seen later: of two that ask for it one after the
// other, a slow window manager may give it to the first.
void Program::Initialise()
{
    engine_.storage().load();
    windows_->browser.moveTo(readPlace(engine_.settings(), kBrowserPlace, engine_.problems()));
    windows_->film.moveTo(readPlace(engine_.settings(), kSlideshowPlace, engine_.problems()));
    windows_->browser.appear();
    engine_.debugSwitch().load();
    engine_.options().load();
    view_.page().load();
    engine_.log().trace(QStringLiteral("Fin Init"));
}

void Program::showSettings()
{
    windows_->interface.bringUp();
}

void Program::showImages()
{
    windows_->browser.present();
}

// Beside the main window only the images are closed; alone, they are the program.
void Program::closeImages()
{
    if (windows_->interface.isVisible()) {
        windows_->browser.unload();
    } else {
        end();
    }
}

void Program::open(const QString &path)
{
    if (opener_.open(path) == OpenOutcome::NoOpener) {
        windows_->browser.showMessage(noOpenerText(path));
    }
}

// Starting the program a second time does not leave a box of the first: its rows stay as they are.
void Program::bringToFront()
{
    if (ending_) {
        return;
    }
    if (windows_->interface.isVisible()) {
        velmora::bringToFront(windows_->interface);
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
    Q_EMIT ending();
    shutdown_.launch(leave());
}

void Program::hideWindows()
{
    hideQuestions();
    windows_->interface.allowClose();
    windows_->browser.allowClose();
    images_.browser().close();
    windows_->film.close();
    windows_->import.close();
    windows_->alarm.close();
    windows_->sheet.close();
    windows_->list.close();
    windows_->calendar.close();
    windows_->health.close();
    images_.filmMaker().cancel();
    windows_->filmKeep.close();
    windows_->zoom.close();
    windows_->interface.close();
    windows_->browser.close();
    windows_->splash.close();
    new HiddenInput(this); // which would open windows again
}

QCoro::Task<> Program::lastPass()
{
    windows_->closing.present();
    co_await engine_.conformity().finish(); // it holds the captures
    const std::chrono::milliseconds limit = 2 * engine_.options().downloadLimit() + 5s;
    engine_.launch(giveUpAfter(limit));
    co_await engine_.scheduler().lastTick();
    windows_->closing.close();
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
    QCoreApplication::exit();
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
    windows_->interface.allowClose();
    windows_->browser.allowClose();
    windows_->closing.close();
    co_await engine_.close();
    QCoreApplication::exit();
}

} // namespace velmora
