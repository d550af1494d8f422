#include "ui/FolderView.h"

#include "tools/FolderList.h"
#include "ui/ToolTips.h"

#include <QApplication>
#include <QStyle>

namespace velmora {
namespace {

constexpr int kStep = 14; // pixels of indentation for a level
constexpr int kMostSteps = 8;

QStyleOptionViewItem indented(const QStyleOptionViewItem &option, const QModelIndex &index)
{
    const int depth = index.data(FolderList::kDepthRole).toInt();
    QStyleOptionViewItem moved = option;
    moved.rect.setLeft(option.rect.left() + kStep * std::min(depth, kMostSteps));
    return moved;
}

class FolderDelegate final : public ElidedTips
{
public:
    using ElidedTips::ElidedTips;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override
    {
        ElidedTips::paint(painter, indented(option, index), index);
    }

    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override
    {
        return ElidedTips::helpEvent(event, view, indented(option, index), index);
    }

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        ElidedTips::initStyleOption(option, index);
        const bool open = index.data(FolderList::kOpenRole).toBool();
        option->features |= QStyleOptionViewItem::HasDecoration;
        option->icon =
            QApplication::style()->standardIcon(open ? QStyle::SP_DirOpenIcon : QStyle::SP_DirIcon);
        const int side = QApplication::style()->pixelMetric(QStyle::PM_SmallIconSize);
        option->decorationSize = {side, side};
    }
};

} // namespace

FolderView::FolderView(QWidget *parent)
    : FileView(parent)
{
    setItemDelegate(new FolderDelegate(this));
    connect(this, &FileView::rowReleased, this, [this](int row) { showRow(row); });
    connect(this, &FileView::chosen, this, [this](int row) { showRow(row); });
}

void FolderView::reset()
{
    forgetPress();
    FileView::reset();
}

} // namespace velmora
