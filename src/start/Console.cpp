#include "start/Console.h"

#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>

namespace velmora {
namespace {

constexpr int kOutputStatus = 1;

} // namespace

void nameProgram()
{
    QCoreApplication::setApplicationName(QStringLiteral(VELMORA_TITLE));
    QCoreApplication::setApplicationVersion(QStringLiteral(VELMORA_VERSION));
}

int fail(const QString &text, int status)
{
    QTextStream(stderr) << "velmora: " << text << Qt::endl;
    return status;
}

int print(const QString &text, int status)
{
    QTextStream out(stdout);
    out << text << Qt::flush;
    const bool isWritten =
        out.status() == QTextStream::Ok && std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
    return isWritten ? status
                     : fail(QStringLiteral("standard output cannot be written"), kOutputStatus);
}

} // namespace velmora
