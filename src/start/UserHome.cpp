#include "start/UserHome.h"

#include <QByteArray>
#include <QtGlobal>

#include <pwd.h>
#include <unistd.h>

namespace velmora {

void provideHome()
{
    if (qgetenv("HOME").startsWith('/')) {
        return;
    }
    const passwd *const account = ::getpwuid(::geteuid());
    if (account != nullptr && account->pw_dir != nullptr && *account->pw_dir == '/') {
        qputenv("HOME", account->pw_dir);
    }
}

} // namespace velmora
