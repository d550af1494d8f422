#include "ui/BrowserListBoxes.h"

#include "cameras/CameraChoices.h"

#include <algorithm>

namespace velmora {

BrowserListBoxes::BrowserListBoxes(const Widgets &widgets, ImageBrowser &browser,
                                   PressedEntry &pressed)
    : widgets_(widgets)
    , browser_(browser)
    , pressed_(pressed)
{
    connect(&widgets_.lstGroupe, &ChoiceList::chosen, &browser_, &ImageBrowser::chooseGroup);
    connect(&widgets_.lstCam, &ChoiceList::chosen, &browser_, &ImageBrowser::chooseCamera);
    connect(&widgets_.lstCam, &ChoiceList::keyUsed, &browser_, &ImageBrowser::chooseCameraAgain);
    bindFiles();
    bindCameraRows();
    connect(&browser_, &ImageBrowser::filesWanted, this, &BrowserListBoxes::focusFiles);
    connect(&browser_, &ImageBrowser::camerasWanted, &widgets_.lstCam,
            qOverload<>(&QWidget::setFocus));
}

void BrowserListBoxes::bindFiles()
{
    FileView *const list = &widgets_.LstDir;
    list->setModel(&browser_.fileRows());
    connect(list, &FileView::chosen, &browser_, &ImageBrowser::chooseFile);
    connect(list, &FileView::rowPressed, this, [this](int row) { pressed_.pressFile(row); });
    connect(list, &FileView::rowReleased, this, [this] { pressed_.releaseFile(); });
    connect(list, &FileView::keyUsed, this, &BrowserListBoxes::keyUsed);
    connect(list, &FileView::opened, &browser_, &ImageBrowser::openFolder);
    connect(&browser_.shown().files, &FileList::selectionChanged, list, &FileView::showRow);
}

void BrowserListBoxes::bindCameraRows()
{
    FileView *const list = &widgets_.LstDirCam;
    list->setModel(&browser_.cameraRows());
    connect(list, &FileView::chosen, &browser_, &ImageBrowser::chooseCameraRow);
    connect(list, &FileView::rowPressed, this, [this](int row) { pressed_.pressCameraRow(row); });
    connect(list, &FileView::rowReleased, this, [this] { pressed_.releaseCameraRow(); });
    connect(list, &FileView::keyUsed, this, &BrowserListBoxes::keyUsed);
}

void BrowserListBoxes::focusFiles()
{
    for (FileView *const list : {&widgets_.LstDir, &widgets_.LstDirCam}) {
        if (list->isVisible()) {
            list->setFocus();
        }
    }
}

void BrowserListBoxes::show(const BrowserFace &face)
{
    widgets_.lstGroupe.showRow(face.choice.group);
    widgets_.lstCam.showRow(face.choice.row);
    showViewsList(face.view);
    widgets_.LstDirCam.showRow(face.cameraRow);
    showMarks(face.choice.group);
}

// If either list has the keyboard focus, the visible one keeps it.
void BrowserListBoxes::showViewsList(View view)
{
    FileView &list = view == View::Group ? widgets_.LstDirCam : widgets_.LstDir;
    FileView &other = view == View::Group ? widgets_.LstDir : widgets_.LstDirCam;
    const bool hadFocus = list.window()->focusWidget() == &other;
    list.show();
    if (hadFocus) {
        list.setFocus();
    }
    other.hide();
}

void BrowserListBoxes::showNames(const SettingsSnapshot &settings)
{
    const int group = browser_.shown().state.camera().group;
    for (int row = 0; row < kRows; ++row) {
        const CameraAddress camera{group, row};
        widgets_.lstCam.describe(row, shownCamera(settings, camera), cameraName(settings, camera));
    }
}

void BrowserListBoxes::showLate(const std::vector<CameraAddress> &late)
{
    late_ = late;
    showMarks(browser_.face().choice.group);
}

// Red where something is late; the lists' texts stay.
void BrowserListBoxes::showMarks(int group)
{
    for (int i = 0; i < kRows; ++i) {
        const auto isOf = [i](CameraAddress camera) { return camera.group == i; };
        widgets_.lstGroupe.mark(i, std::ranges::any_of(late_, isOf));
        widgets_.lstCam.mark(i, std::ranges::find(late_, CameraAddress{group, i}) != late_.end());
    }
}

} // namespace velmora
