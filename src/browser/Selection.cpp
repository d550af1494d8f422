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

void Selection::setGroup(int group)
{
    data_.state.choose({group, data_.state.camera().row});
    Q_EMIT changed();
}

void Selection::setCamera(int row)
{
    data_.state.choose({data_.state.camera().group, row});
    Q_EMIT changed();
}

void Selection::setView(View view)
{
    data_.state.show(view);
    setCount(QString());
}

void Selection::setCount(const QString &text)
{
    count_ = text;
    Q_EMIT changed();
}

void Selection::selectRow(int row)
{
    if (row != row_) {
        setCount(QString()); // of the previous row
    }
    row_ = row;
    data_.sheet.clearFrames();
    data_.sheet.setFrame(row, FrameStyle::Framed);
    data_.state.frame(row);
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
    setCount(QString());
}

void Selection::frame(int cell)
{
    data_.sheet.setFrame(cell, FrameStyle::Framed);
    data_.state.frame(cell);
    data_.sheet.followZoom(data_.files.selected());
}

} // namespace velmora
