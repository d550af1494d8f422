#include "start/ErrorExit.h"

#include <QCoreApplication>

#include <new>
#include <utility>

namespace velmora {

bool ErrorExit::begin(const std::function<void()> &leave)
{
    if (std::exchange(began_, true)) {
        QCoreApplication::exit();
        return false;
    }
    try {
        leave();
    } catch (const std::bad_alloc &) {
        QCoreApplication::exit();
    }
    return true;
}

} // namespace velmora
