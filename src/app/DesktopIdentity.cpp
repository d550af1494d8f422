#include "app/DesktopIdentity.h"

#include <QGuiApplication>
#include <QIcon>

namespace velmora {
namespace {

// Those that desktops show beside a window's title, in lists of windows and between programs.
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
