#include "capture/RenameFile.h"

#include "base/SystemCalls.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace velmora {
namespace {

std::error_code result(int returned)
{
    return returned == 0 ? std::error_code() : lastError();
}

// A hard link never replaces either. A name that cannot go leaves the file as it was.
std::error_code renameByLink(const QByteArray &from, const QByteArray &to)
{
    if (const std::error_code error = result(::link(from.constData(), to.constData()))) {
        return error;
    }
    const std::error_code error = result(::unlink(from.constData()));
    if (error) {
        ::unlink(to.constData());
    }
    return error;
}

} // namespace

std::error_code renameFile(const QByteArray &from, const QByteArray &to)
{
    const std::error_code error =
        result(::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE));
    const bool unknownHere =
        error == std::errc::invalid_argument || error == std::errc::function_not_supported;
    return unknownHere ? renameByLink(from, to) : error;
}

} // namespace velmora
