#include "start/WindowsLibrary.h"

#include "base/OwnLibrary.h"

namespace velmora {

RunWithWindows loadWindows()
{
    return reinterpret_cast<RunWithWindows>(
        libraryFunction(QStringLiteral("libvelmora-windows.so"), "velmoraRunWithWindows"));
}

} // namespace velmora
