#include "app/WindowSupport.h"

#include "health/SessionBus.h"

#include <QTextStream>

#include <latch>
#include <system_error>
#include <thread>
#include <vector>

namespace velmora {

const QString kNoDisplay = QStringLiteral(
    "there is no display that can be opened. Use --capture to capture without windows.");

namespace {

const QString kNoThreads = QStringLiteral(
    "the system allows no more threads or memory, without which there can be no windows");

// As many as the toolkit will make, one for the display and one for the message bus.
bool tryThreads()
{
    constexpr int kThreads = 2;
    std::latch end(1);
    std::vector<std::jthread> threads;
    bool isMade = true;
    try {
        for (int i = 0; i < kThreads; ++i) {
            threads.emplace_back([&end] { end.wait(); });
        }
    } catch (const std::system_error &) {
        isMade = false;
    }
    end.count_down();
    return isMade;
}

} // namespace

bool namesDisplay(const QStringList &arguments)
{
    return arguments.contains(QStringLiteral("-platform")) ||
           arguments.contains(QStringLiteral("-display")) ||
           !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

QString missingForWindows(const QStringList &arguments)
{
    if (!namesDisplay(arguments)) {
        return kNoDisplay;
    }
    return tryThreads() ? QString() : kNoThreads;
}

void avoidHangingBus()
{
    constexpr std::chrono::seconds kPatience{2};
    const auto bus = sessionBus();
    if (bus && !answers(*bus, kPatience)) {
        QTextStream(stderr) << "velmora: the desktop's message bus does not answer; going on "
                               "without it"
                            << Qt::endl;
        qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    }
}

} // namespace velmora
