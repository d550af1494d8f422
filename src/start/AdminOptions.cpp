#include "start/AdminOptions.h"

#include "cameras/CameraChoices.h"
#include "cameras/Credentials.h"

#include <QList>

#include <algorithm>

namespace velmora {
namespace {

using Parsed = std::variant<AdminCommand, QString>;

const QString kAdd = QStringLiteral("add");
const QString kCamera = QStringLiteral("camera");
const QString kName = QStringLiteral("name");
const QString kKeep = QStringLiteral("keep");
const QString kRemove = QStringLiteral("remove");
const QString kList = QStringLiteral("list");
const QString kStatus = QStringLiteral("status");
const QString kJson = QStringLiteral("json");
const QString kImportList = QStringLiteral("import-list");
const QString kExportList = QStringLiteral("export-list");
const QString kSet = QStringLiteral("set");
const QString kGet = QStringLiteral("get");

const QStringList kCommands{kAdd, kRemove, kList, kStatus, kImportList, kExportList, kSet, kGet};

const QStringList kDetails{kCamera, kName, kKeep, kJson};

// Details, each with the commands that it goes with.
QString strayDetail(const QCommandLineParser &parser, const QString &command)
{
    for (const QString &detail : {kCamera, kName, kKeep}) {
        if (parser.isSet(detail) && command != kAdd) {
            return QStringLiteral("--%1 goes with --add.").arg(detail);
        }
    }
    if (parser.isSet(kJson) && command != kList && command != kStatus) {
        return QStringLiteral("--json goes with --list or --status.");
    }
    return {};
}

QString noCamera(const QString &text)
{
    return QStringLiteral("'%1' is not a camera; a camera is GROUP:ROW, each from 0 to 9.")
        .arg(withoutCredentials(text));
}

Parsed addCommand(const QCommandLineParser &parser)
{
    AddCommand command;
    command.address = parser.value(kAdd).trimmed();
    command.name = parser.value(kName);
    if (isLeftOut(command.address) || command.address == u'-') {
        return QStringLiteral("--add needs an address.");
    }
    if (parser.isSet(kCamera)) {
        command.camera = cameraFromText(parser.value(kCamera));
        if (!command.camera) {
            return noCamera(parser.value(kCamera));
        }
    }
    if (parser.isSet(kKeep)) {
        const std::optional<KeepChoice> keep = keepFromText(parser.value(kKeep));
        if (!keep) {
            return QStringLiteral("--keep takes dated, differing or clearly:PERCENT.");
        }
        command.keep = *keep;
    }
    return AdminCommand{command};
}

Parsed removeCommand(const QCommandLineParser &parser)
{
    const auto camera = cameraFromText(parser.value(kRemove));
    return camera ? Parsed(AdminCommand{RemoveCommand{*camera}}) : noCamera(parser.value(kRemove));
}

Parsed parsedCommand(const QCommandLineParser &parser, const QString &command)
{
    const ListForm form = parser.isSet(kJson) ? ListForm::Json : ListForm::Plain;
    if (command == kAdd) {
        return addCommand(parser);
    }
    if (command == kRemove) {
        return removeCommand(parser);
    }
    if (command == kList) {
        return AdminCommand{ListCommand{form}};
    }
    if (command == kStatus) {
        return AdminCommand{StatusCommand{form}};
    }
    if (command == kSet) {
        return AdminCommand{SetCommand{parser.values(kSet)}};
    }
    if (command == kGet) {
        return AdminCommand{GetCommand{parser.values(kGet)}};
    }
    if (isLeftOut(parser.value(command))) {
        return QStringLiteral("--%1 needs a file.").arg(command);
    }
    return command == kImportList ? AdminCommand{ImportListCommand{parser.value(command)}}
                                  : AdminCommand{ExportListCommand{parser.value(command)}};
}

} // namespace

void addAdminOptions(QCommandLineParser &parser)
{
    const auto add = [&parser](const QString &name, const char *meaning, const char *value = "") {
        parser.addOption({name, QString::fromLatin1(meaning), QString::fromLatin1(value)});
    };
    add(kAdd, "Adds a camera in the first free row and prints its group:row.", "address");
    add(kCamera, "With --add: in this row.", "group:row");
    add(kName, "With --add: gives the camera a name.", "name");
    add(kKeep,
        "With --add: keeps what is dated (the usual rule), differing, or clearly:PERCENT "
        "different when the camera sends no date.",
        "choice");
    add(kRemove, "Takes a camera out of the table; its images stay.", "group:row");
    add(kList, "Lists the cameras.");
    add(kStatus, "Tells whether the program runs and how the cameras are: status 0 all well, 1 "
                 "something is wrong, 2 nothing runs.");
    add(kJson, "With --list or --status: as JSON.");
    add(kImportList, "Adds the cameras of a list: addresses, or name,address,group,row.", "file");
    add(kExportList, "Writes the cameras as a list that --import-list reads.", "file");
    add(kSet,
        "Changes a setting: storage, tick, timeout, debug, group.G, camera.G:R.keep, .name, "
        ".auto, .delete.",
        "key=value");
    add(kGet, "Prints a setting.", "key");
}

QStringList repeatableOptions()
{
    return {kSet, kGet};
}

bool isLeftOut(const QString &value)
{
    return value.isEmpty() || (value.startsWith(u'-') && value != u'-');
}

std::optional<Parsed> adminCommand(const QCommandLineParser &parser)
{
    QStringList given;
    std::ranges::copy_if(kCommands, std::back_inserter(given),
                         [&parser](const QString &command) { return parser.isSet(command); });
    const QString command = given.value(0);
    const bool anyDetail = std::ranges::any_of(
        kDetails, [&parser](const QString &detail) { return parser.isSet(detail); });
    if (given.isEmpty() && !anyDetail) {
        return std::nullopt;
    }
    if (given.size() > 1) {
        return QStringLiteral("--%1 and --%2 do not go together.").arg(given[0], given[1]);
    }
    const QString stray = strayDetail(parser, command);
    return stray.isEmpty() ? parsedCommand(parser, command) : Parsed(stray);
}

} // namespace velmora
