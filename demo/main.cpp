// Starts the demonstration cameras: prints their port, then serves until told to stop. It draws its
// pictures without a display.
#include "demo/HttpResponder.h"
#include "demo/Options.h"
#include "demo/StopRequests.h"
#include "loopback/Server.h"

#include <QGuiApplication>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace velmora::demo {
namespace {

constexpr int kExitBadOption = 2;

QStringList commandLine(int count, char **values)
{
    QStringList arguments;
    for (int i = 0; i < count; ++i) {
        arguments.append(QString::fromLocal8Bit(values[i]));
    }
    return arguments;
}

void print(std::FILE *stream, const QString &text)
{
    std::fputs(text.toLocal8Bit().constData(), stream);
    std::fflush(stream);
}

int serve(const Options &options)
{
    loopback::Server server([](const loopback::Request &request) {
        return answerTo(request, QDateTime::currentDateTime());
    });
    if (!server.listen(options.port)) {
        print(stderr, QStringLiteral("velmora-demo-cameras: cannot listen on port %1: %2\n")
                          .arg(options.port)
                          .arg(server.errorText()));
        return EXIT_FAILURE;
    }
    StopRequests requests(options.lifetime);
    QObject::connect(&requests, &StopRequests::stopRequested, qApp, &QCoreApplication::quit);
    print(stdout, QStringLiteral("PORT %1\n").arg(server.port()));
    return QCoreApplication::exec();
}

int run(const QStringList &arguments)
{
    const Options options = readOptions(arguments);
    switch (options.action) {
    case Action::Print:
        print(stdout, options.text);
        return EXIT_SUCCESS;
    case Action::Refuse:
        print(stderr, options.text);
        return kExitBadOption;
    case Action::Serve:
        break;
    }
    return serve(options);
}

} // namespace
} // namespace velmora::demo

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Qt is given no arguments: it would remove some (such as -platform) before they can be
    // refused.
    int bareCount = std::min(argc, 1);
    const QGuiApplication app(bareCount, argv);
    QCoreApplication::setApplicationName(QStringLiteral("velmora-demo-cameras"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VELMORA_VERSION));
    return velmora::demo::run(velmora::demo::commandLine(argc, argv));
}
