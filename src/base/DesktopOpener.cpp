#include "base/DesktopOpener.h"

#include <QProcess>
#include <QStandardPaths>

namespace velmora {

OpenOutcome XdgOpener::open(const QString &target)
{
    const QString program = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    const bool started = !program.isEmpty() && QProcess::startDetached(program, {target});
    return started ? OpenOutcome::Started : OpenOutcome::NoOpener;
}

} // namespace velmora
