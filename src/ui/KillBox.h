// The question asked before an image is deleted.
#pragma once

#include "browser/ImageBrowser.h"
#include "settings/SettingsFile.h"

#include <QWidget>

namespace velmora {

/// Asks over a window, and has the image deleted if the answer is "Yes". The browser outlives the
/// window.
void askToKill(QWidget &window, ImageBrowser &browser, const KillQuestion &question,
               const SettingsSnapshot &settings);

} // namespace velmora
