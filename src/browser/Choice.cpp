#include "browser/Choice.h"

namespace velmora {

Choice::Choice(const BrowserData &data, Selection &selection, BrowserLists &lists, ActionLine &line)
    : data_(data)
    , selection_(selection)
    , lists_(lists)
    , line_(line)
{
}

CameraAddress Choice::now() const
{
    const CameraAddress shown = data_.state.camera();
    return {nextGroup_.value_or(shown.group), nextRow_.value_or(shown.row)};
}

void Choice::takeGroup(int group)
{
    nextGroup_ = group;
    line_.launch(ActionLine::Kind::Rebuild, [this, group] { return showGroup(group); });
    selection_.announce();
}

QCoro::Task<> Choice::showGroup(int group)
{
    if (nextGroup_ == group) {
        nextGroup_.reset();
    }
    selection_.setGroup(group);
    co_await lists_.lstGroupe_MouseUp();
}

void Choice::takeCamera(int row)
{
    nextRow_ = row;
    line_.launch(ActionLine::Kind::Rebuild, [this, row] { return showCamera(row); });
    selection_.announce();
}

QCoro::Task<> Choice::showCamera(int row)
{
    if (nextRow_ == row) {
        nextRow_.reset();
    }
    selection_.setCamera(row);
    co_await lists_.lstCam_MouseUp();
}

} // namespace velmora
