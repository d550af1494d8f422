// Paints the state of a camera in a cell of the health table as a lamp.
#pragma once

#include "health/HealthTable.h"

#include <QIcon>
#include <QStyledItemDelegate>

#include <array>

namespace velmora {

/// Its colour stays the same in a selected row, where the toolkit's own would be tinted. Each lamp
/// is drawn once: the toolkit keeps what it has shown of every new icon, and a table that is
/// refreshed each second would fill its memory with them.
class LampDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    struct Icons
    {
        struct Made
        {
            QSize size;
            qreal scale = 0;

            bool operator==(const Made &) const = default;
        };

        Made made;
        std::array<QIcon, HealthTable::kStates> icons; // in the order of the states
    };

    [[nodiscard]] const QIcon &icon(QSize size, qreal scale, HealthTable::State state) const;

    mutable Icons icons_;
};

} // namespace velmora
