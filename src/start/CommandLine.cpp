#include "start/CommandLine.h"

#include "cameras/Credentials.h"
#include "start/AdminOptions.h"

#include <QCommandLineParser>

namespace velmora {
namespace {

const QString kFolder = QStringLiteral("program-folder");
const QString kCapture = QStringLiteral("capture");
const QString kPasses = QStringLiteral("passes");

void addOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(QStringLiteral(
        "Captures still images from network cameras and manages what it has stored."));
    parser.addOption(
        {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Shows this help.")});
    parser.addOption(
        {{QStringLiteral("v"), QStringLiteral("version")}, QStringLiteral("Shows the version.")});
    parser.addOption(
        {kFolder,
         QStringLiteral("Keeps settings and log in <dir> instead of beside the program "
                        "(also: environment variable VELMORA_PROGRAM_FOLDER)."),
         QStringLiteral("dir")});
    parser.addOption(
        {kCapture, QStringLiteral("Captures without windows and prints what it stores. A pass "
                                  "in which nothing was due is not mentioned, unless passes are "
                                  "counted.")});
    parser.addOption(
        {kPasses, QStringLiteral("With --capture: ends after <n> passes."), QStringLiteral("n")});
    addAdminOptions(parser);
    addFilmOptions(parser);
}

// Of the toolkit; each is followed by its value.
const QStringList kToolkitValues{
    QStringLiteral("-platform"),        QStringLiteral("-plugin"),
    QStringLiteral("-style"),           QStringLiteral("-stylesheet"),
    QStringLiteral("-platformtheme"),   QStringLiteral("-platformpluginpath"),
    QStringLiteral("-qwindowgeometry"), QStringLiteral("-geometry"),
    QStringLiteral("-qwindowtitle"),    QStringLiteral("-title"),
    QStringLiteral("-qwindowicon"),     QStringLiteral("-icon"),
    QStringLiteral("-display"),         QStringLiteral("-visual"),
    QStringLiteral("-session")}; // added by desktops that restore what was open

const QStringList kToolkitSwitches{QStringLiteral("-reverse"), QStringLiteral("-nograb"),
                                   QStringLiteral("-dograb"), QStringLiteral("-widgetcount")};

bool isToolkitSwitch(const QString &argument)
{
    return kToolkitSwitches.contains(argument) || argument.startsWith(QStringLiteral("-style=")) ||
           argument.startsWith(QStringLiteral("-stylesheet="));
}

QStringList withoutToolkitOptions(QStringList arguments)
{
    for (qsizetype i = arguments.size() - 2; i > 0; --i) {
        if (kToolkitValues.contains(arguments.at(i))) {
            arguments.remove(i, 2);
        }
    }
    arguments.removeIf(isToolkitSwitch);
    return arguments;
}

StartRequest usageError(const QString &text)
{
    return UsageError{text + QStringLiteral("\nTry 'velmora --help'.")};
}

// What is given twice would hold once only, and all else be dropped without a word.
QString optionGivenTwice(const QCommandLineParser &parser)
{
    QStringList given = parser.optionNames();
    for (const QString &option : repeatableOptions()) {
        given.removeAll(option);
    }
    while (!given.isEmpty()) {
        const QString option = given.takeFirst();
        if (given.contains(option)) {
            return option;
        }
    }
    return {};
}

StartRequest adminRequest(const QCommandLineParser &parser,
                          const std::variant<AdminCommand, QString> &asked)
{
    if (const auto *const wrong = std::get_if<QString>(&asked)) {
        return usageError(*wrong);
    }
    if (parser.isSet(kCapture) || parser.isSet(kPasses)) {
        return usageError(QStringLiteral("--capture goes with no other command."));
    }
    return AdminRequest{parser.value(kFolder), std::get<AdminCommand>(asked)};
}

StartRequest runRequest(const QCommandLineParser &parser)
{
    RunRequest run;
    run.programFolder = parser.value(kFolder);
    run.headless = parser.isSet(kCapture);
    if (!parser.isSet(kPasses)) {
        return run;
    }
    bool isNumber = false;
    const int passes = parser.value(kPasses).toInt(&isNumber);
    if (!isNumber || passes < 1) {
        return usageError(QStringLiteral("--passes needs a number from 1 on."));
    }
    if (!run.headless) {
        return usageError(QStringLiteral("--passes goes with --capture."));
    }
    run.passes = passes;
    return run;
}

StartRequest filmStart(const QCommandLineParser &parser)
{
    if (parser.isSet(kCapture) || parser.isSet(kPasses) || adminCommand(parser)) {
        return usageError(QStringLiteral("--film goes with no other command."));
    }
    auto asked = filmRequest(parser);
    if (const auto *const problem = std::get_if<QString>(&asked)) {
        return usageError(*problem);
    }
    FilmRequest film = std::get<FilmRequest>(std::move(asked));
    film.programFolder = parser.value(kFolder);
    return film;
}

} // namespace

QStringList argumentList(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    return arguments;
}

StartRequest parseCommandLine(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    addOptions(parser);
    if (!parser.parse(withoutToolkitOptions(arguments))) {
        return usageError(parser.errorText());
    }
    if (parser.isSet(QStringLiteral("help"))) {
        // The parser knows the program's name only from an application object, which help must do
        // without.
        return PrintRequest{parser.helpText().replace(QStringLiteral("<executable_name>"),
                                                      QStringLiteral("velmora"))};
    }
    if (parser.isSet(QStringLiteral("version"))) {
        return PrintRequest{QStringLiteral("Velmora " VELMORA_VERSION "\n")};
    }
    if (const QString twice = optionGivenTwice(parser); !twice.isEmpty()) {
        return usageError(QStringLiteral("--%1 can be given only once.").arg(twice));
    }
    if (parser.isSet(kFolder) && isLeftOut(parser.value(kFolder))) {
        return usageError(QStringLiteral("--program-folder needs a folder."));
    }
    if (asksForFilm(parser)) {
        return filmStart(parser);
    }
    if (const QString stray = strayFilmOption(parser); !stray.isEmpty()) {
        return usageError(QStringLiteral("--%1 goes with --film.").arg(stray));
    }
    if (!parser.positionalArguments().isEmpty()) {
        return usageError(QStringLiteral("Unexpected argument '%1'.")
                              .arg(withoutCredentials(parser.positionalArguments().first())));
    }
    const auto admin = adminCommand(parser);
    return admin ? adminRequest(parser, *admin) : runRequest(parser);
}

} // namespace velmora
