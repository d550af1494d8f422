#include "app/WindowsRun.h"

#include "app/DesktopIdentity.h"
#include "app/DesktopSession.h"
#include "app/Program.h"
#include "app/WindowSupport.h"
#include "base/DesktopOpener.h"
#include "start/Console.h"
#include "ui/Accessibility.h"
#include "ui/ToFront.h"

#include <QApplication>
#include <QMessageBox>

#include <cstdlib>

namespace velmora {
namespace {

// When a display cannot be opened, the toolkit aborts with a core dump; a message serves the user
// better.
void onToolkitMessage(QtMsgType type, const QMessageLogContext &, const QString &)
{
    if (type == QtFatalMsg) {
        std::_Exit(fail(kNoDisplay, 1));
    }
}

} // namespace

std::unique_ptr<QCoreApplication> WindowsRun::makeApplication(int &argc, char **argv)
{
    avoidHangingBus();
    const QtMessageHandler usual = qInstallMessageHandler(onToolkitMessage);
    auto application = std::make_unique<QApplication>(argc, argv);
    qInstallMessageHandler(usual);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    introduceToDesktop();
    installAccessibility();
    return application;
}

void WindowsRun::showRefusal(const QString &fault, SignalWatcher &signalWatcher,
                             SingleInstance &instance)
{
    QMessageBox box(QMessageBox::Critical, QCoreApplication::applicationName(), fault);
    QObject::connect(&instance, &SingleInstance::shown, &box, [&box] { bringToFront(box); });
    QObject::connect(&signalWatcher, &SignalWatcher::endRequested, &box, &QDialog::reject);
    QObject::connect(&box, &QDialog::finished, &QCoreApplication::quit);
    box.open();
    QApplication::exec();
}

int WindowsRun::capture(const Parts &parts)
{
    XdgOpener opener;
    SmtpClient mail;
    const DesktopSession session(parts.folder);
    Program program(parts.engine, opener, mail);
    const Follower follower(parts.desk, program.health());
    QObject::connect(&parts.signalWatcher, &SignalWatcher::endRequested, &program, &Program::end);
    QObject::connect(&session, &DesktopSession::ended, &program, &Program::end);
    QObject::connect(&parts.instance, &SingleInstance::shown, &program, &Program::bringToFront);
    QObject::connect(&program, &Program::ending, &parts.instance, &SingleInstance::stopAnswering);
    program.start();
    tellTrouble(parts);
    return QApplication::exec();
}

} // namespace velmora
