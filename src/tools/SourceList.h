// The list of the files that the import would copy, and which of them is selected.
#pragma once

#include "tools/NameReader.h"

#include <QAbstractListModel>

namespace velmora {

/// Positions count from 0; no selection is -1, as usual in lists.
class SourceList : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit SourceList(QObject *parent = nullptr);

    /// Lists these names from now on. The selected file stays selected if it is among them, else
    /// the first one is.
    void bind(SortedNames names);

    [[nodiscard]] int count() const;

    [[nodiscard]] int ListIndex() const { return index_; }

    void setListIndex(int index);

    /// The button was pressed on a file: it is meant at the release, wherever it is listed by then.
    void press(int index);

    /// Where that file is listed now; -1 if it is not.
    [[nodiscard]] int pressedIndex() const { return find(pressed_); }

    /// Native bytes; empty when none is selected.
    [[nodiscard]] QByteArray selected() const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

Q_SIGNALS:
    void selectionChanged(int index);

private:
    [[nodiscard]] QByteArrayView name(int index) const;
    [[nodiscard]] int find(const QByteArray &wanted) const;

    SortedNames names_;
    int index_ = -1;
    QByteArray pressed_;
};

} // namespace velmora
