#include "admin/Administration.h"

#include "admin/CameraCommands.h"
#include "admin/RunningProgram.h"
#include "admin/SettingKeys.h"
#include "admin/StatusReport.h"
#include "settings/SettingsFaults.h"

namespace velmora {
namespace {

/// Passes each command to the part that handles it.
class Desk
{
public:
    Desk(const QString &programFolder, const FindHolder &findHolder)
        : settings_(programFolder)
        , paths_(programFolder)
        , findHolder_(findHolder)
    {
    }

    CommandResult operator()(const AddCommand &command) { return addCamera(settings_, command); }

    CommandResult operator()(const RemoveCommand &command)
    {
        return removeCamera(settings_, command);
    }

    CommandResult operator()(const ListCommand &command) { return listCameras(settings_, command); }

    CommandResult operator()(const ImportListCommand &command)
    {
        return importList(settings_, command);
    }

    CommandResult operator()(const ExportListCommand &command)
    {
        return exportList(settings_, command);
    }

    CommandResult operator()(const SetCommand &command)
    {
        return setKeys(settings_, paths_, command);
    }

    CommandResult operator()(const GetCommand &command)
    {
        return getKeys(settings_, paths_, command);
    }

    CommandResult operator()(const StatusCommand &command)
    {
        const QString &folder = settings_.programFolder();
        return statusResult(
            programStatus(settings_, paths_, findHolder_(folder), askProgram(folder)), command);
    }

private:
    SettingsFile settings_;
    NativePaths paths_;
    const FindHolder &findHolder_;
};

// Cameras and their choices are read from the file at every pass; the rest is read at the start.
// The way to the program may be taken by another user's, or lead into another container.
QString deafNote(qint64 process)
{
    return QStringLiteral("the running program (%1) does not answer; what was changed for "
                          "cameras holds from its next pass on, anything else when it is started "
                          "again.")
        .arg(processText(process));
}

} // namespace

CommandResult administer(const QString &programFolder, const AdminCommand &command,
                         const FindHolder &findHolder)
{
    if (const auto fault = readingFault(SettingsFile(programFolder))) {
        return CommandResult::refused(*fault);
    }
    CommandResult result = std::visit(Desk(programFolder, findHolder), command);
    if (result.changed && !tellChange(programFolder)) {
        const std::optional<qint64> process = findHolder(programFolder);
        QStringList notes{result.error, process ? deafNote(*process) : QString()};
        notes.removeAll(QString());
        result.error = notes.join(u'\n');
    }
    return result;
}

} // namespace velmora
