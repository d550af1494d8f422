#include "browser/Selection.h"

namespace velmora {

Selection::Selection(BrowserData &data)
    : data_(data)
{
}

ImageFile Selection::image() const
{
    if (data_.state.view() == View::Camera) {
        return data_.files.selected();
    }
    return row_ < 0 ? ImageFile() : data_.state.DerniereImage(row_);
}

void Selection::choose(CameraAddress camera)
{
    data_.state.cameraChosen(camera);
    Q_EMIT changed();
}

void Selection::setGroup(int group)
{
    choose({group, data_.state.camera().row});
}

void Selection::setCamera(int row)
{
    choose({data_.state.camera().group, row});
}

void Selection::setView(View view)
{
    data_.state.viewSwitched(view);
    showPosition(ShownPosition::None);
}

QString Selection::NbI() const
{
    switch (shown_) {
    case ShownPosition::None:
        return {};
    case ShownPosition::Count:
        return QString::number(count_);
    case ShownPosition::Position:
        break;
    }
    return QStringLiteral("%1 / %2").arg(position_).arg(count_);
}

void Selection::showPosition(ShownPosition shown)
{
    shown_ = shown;
    position_ = data_.files.ListIndex() + 1;
    count_ = data_.files.count();
    Q_EMIT changed();
}

void Selection::selectRow(int row)
{
    if (row != row_) {
        showPosition(ShownPosition::None); // of the previous row
    }
    row_ = row;
    data_.sheet.clearFrames();
    data_.sheet.setFrame(row, FrameStyle::Framed);
    data_.state.cellFramed(row);
    setCamera(row);
    data_.sheet.followZoom(data_.state.DerniereImage(row));
}

void Selection::drop()
{
    if (data_.state.view() == View::Camera) {
        data_.files.setListIndex(-1);
    }
    row_ = -1;
    data_.sheet.clearFrames();
    showPosition(ShownPosition::None);
}

void Selection::frame(int cell)
{
    data_.sheet.setFrame(cell, FrameStyle::Framed);
    data_.state.cellFramed(cell);
    data_.sheet.followZoom(data_.files.selected());
}

} // namespace velmora
