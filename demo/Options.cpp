#include "demo/Options.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <optional>

namespace velmora::demo {
namespace {

Options printing(const QString &text)
{
    return {.action = Action::Print, .text = text};
}

Options refusal(const QString &reason)
{
    const QString name = QCoreApplication::applicationName();
    return {.action = Action::Refuse,
            .text = QStringLiteral("%1: %2\nTry \"%1 --help\".\n").arg(name, reason)};
}

std::optional<quint16> portNumber(const QString &text)
{
    bool good = false;
    const quint16 port = text.toUShort(&good);
    return good ? std::optional(port) : std::nullopt;
}

struct Switches
{
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")},
                            QStringLiteral("Show this help.")};
    QCommandLineOption version{{QStringLiteral("v"), QStringLiteral("version")},
                               QStringLiteral("Show the version.")};
    QCommandLineOption port{QStringLiteral("port"),
                            QStringLiteral("Listen on port N; 0 (the default) takes a free one."),
                            QStringLiteral("N"), QStringLiteral("0")};
    QCommandLineOption stdinCloses{QStringLiteral("until-stdin-closes"),
                                   QStringLiteral("Also stop when standard input ends.")};
};

Options serving(const QString &portText, Lifetime lifetime)
{
    const std::optional<quint16> port = portNumber(portText);
    if (!port) {
        return refusal(QStringLiteral("'%1' is not a port number (0 to 65535).").arg(portText));
    }
    return {.text = {}, .port = *port, .lifetime = lifetime};
}

} // namespace

Options readOptions(const QStringList &arguments)
{
    const Switches switches;
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.setApplicationDescription(QStringLiteral(
        "Serves ten demonstration cameras on 127.0.0.1. Prints \"PORT n\" and runs until "
        "SIGTERM or SIGINT."));
    parser.addOptions({switches.help, switches.version, switches.port, switches.stdinCloses});
    if (!parser.parse(arguments)) {
        return refusal(parser.errorText());
    }
    if (const QStringList extra = parser.positionalArguments(); !extra.isEmpty()) {
        return refusal(QStringLiteral("Unexpected argument '%1'.").arg(extra.constFirst()));
    }
    if (parser.isSet(switches.help)) {
        return printing(parser.helpText());
    }
    if (parser.isSet(switches.version)) {
        return printing(QStringLiteral("%1 %2\n").arg(QCoreApplication::applicationName(),
                                                      QCoreApplication::applicationVersion()));
    }
    return serving(parser.value(switches.port), parser.isSet(switches.stdinCloses)
                                                    ? Lifetime::UntilSignalOrStdinCloses
                                                    : Lifetime::UntilSignal);
}

} // namespace velmora::demo
