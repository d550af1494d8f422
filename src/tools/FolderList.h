// The import's folder list: the levels of the open folder, one below another, and its subfolders.
#pragma once

#include "tools/NameReader.h"

#include <QAbstractListModel>
#include <QStringList>

namespace velmora {

class FolderList : public QAbstractListModel
{
    Q_OBJECT

public:
    /// How deep an entry is indented, from 0; and whether it is one of the open levels.
    static constexpr int kDepthRole = Qt::UserRole;
    static constexpr int kOpenRole = Qt::UserRole + 1;

    explicit FolderList(QObject *parent = nullptr);

    /// The open folder's path text.
    [[nodiscard]] const QString &path() const { return path_; }

    /// Opens a folder, whose subfolders are not known yet.
    void open(const QString &path);

    /// The open folder's subfolders.
    void setSubFolders(SortedNames names);

    /// The row of the open folder.
    [[nodiscard]] int openRow() const { return static_cast<int>(levels_.size()) - 1; }

    /// Path text of an entry; empty if out of range.
    [[nodiscard]] QString pathAt(int row) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

private:
    [[nodiscard]] int subFolders() const;
    [[nodiscard]] QString nameAt(int row) const;

    QString path_;
    QStringList levels_;
    SortedNames names_;
};

} // namespace velmora
