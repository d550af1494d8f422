#include "app/DesktopIdentity.h"

#include <QGuiApplication>
#include <QIcon>

namespace velmora {
namespace {

// The sizes that desktops show in title bars, in lists of windows and when switching programs.
constexpr int kIconPixels[] = {16, 24, 32, 48, 128};

QIcon icon()
{
    QIcon icon;
    for (const int pixels : kIconPixels) {
        icon.addFile(QStringLiteral(":/icons/velmora-%1.png").arg(pixels));
    }
    return icon;
}

} // namespace

void introduceToDesktop()
{
    QGuiApplication::setDesktopFileName(QStringLiteral("velmora"));
    QGuiApplication::setWindowIcon(icon());
}

} // namespace velmora
