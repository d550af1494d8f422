#include "ui/FolderView.h"

#include "tools/FolderList.h"

#include <QApplication>
#include <QStyle>
#include <QStyledItemDelegate>

namespace velmora {
namespace {

constexpr int kStep = 14; // pixels of indentation for a level
constexpr int kMostSteps = 8;

class FolderDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override
    {
        const int depth = index.data(FolderList::kDepthRole).toInt();
        QStyleOptionViewItem indented = option;
        indented.rect.setLeft(option.rect.left() + kStep * std::min(depth, kMostSteps));
        QStyledItemDelegate::paint(painter, indented, index);
    }

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
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
