#include "ui/SheetCaptions.h"

#include "browser/ImageCaption.h"
#include "cameras/CameraChoices.h"

namespace velmora {

SheetCaptions::SheetCaptions(ContactSheet &widgets, const BrowserData &shown,
                             const CameraRemarks &remarks)
    : widgets_(widgets)
    , shown_(shown)
    , remarks_(remarks)
{
}

void SheetCaptions::takeNames(const SettingsSnapshot &settings)
{
    const int group = shown_.state.camera().group;
    for (int row = 0; row < kRows; ++row) {
        names_.at(static_cast<std::size_t>(row)) = cameraName(settings, {group, row});
    }
}

// In camera view one cell, the first empty one, shows a remark on the camera.
QString SheetCaptions::remarkIn(int cell) const
{
    const CameraAddress camera = shown_.state.camera();
    if (shown_.state.view() == View::Group) {
        return remarks_.of({camera.group, cell});
    }
    const bool isFirst = cell == 0 || !shown_.sheet.image(cell - 1).isNone();
    return isFirst && shown_.sheet.image(cell).isNone() ? remarks_.of(camera) : QString();
}

QString SheetCaptions::captionOf(int cell) const
{
    const QString caption = imageCaption(shown_.sheet.image(cell).name);
    if (shown_.state.view() == View::Camera || caption.isEmpty()) {
        return caption;
    }
    const QString remark = remarkIn(cell);
    const QString numbered = QStringLiteral("%1 · %2").arg(cell).arg(
        name(cell).isEmpty() ? caption : name(cell) + QStringLiteral(" · ") + caption);
    return remark.isEmpty() ? numbered : QStringLiteral("%1 · %2").arg(numbered, remark);
}

void SheetCaptions::show()
{
    for (int cell = 0; cell < kCells; ++cell) {
        widgets_.cell(cell).setCaption(captionOf(cell));
        widgets_.cell(cell).setEmptyText(remarkIn(cell));
    }
    widgets_.zoom().setCaption(imageCaption(shown_.sheet.zoomed().name));
}

} // namespace velmora
