// The list of a camera's images, and which of them is selected.
#pragma once

#include "browser/ImageFile.h"
#include "browser/ImageNames.h"

#include <QAbstractListModel>

#include <memory>
#include <optional>

namespace velmora {

/// Positions count from 0; no selection is -1, as lists have it. A name is shown on one line,
/// whatever stands in it.
class FileList : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit FileList(QObject *parent = nullptr);

    /// Lists these images of a folder (text form, ending with "\") from now on; none is selected.
    void bind(const QString &folder, std::shared_ptr<const ImageNames> names);

    /// The folder listed, text form; empty before the first.
    [[nodiscard]] const QString &folder() const { return folder_; }

    [[nodiscard]] int count() const;

    [[nodiscard]] int ListIndex() const { return index_; }

    /// Selects an entry, or none.
    void setListIndex(int index);

    /// The file at a position; none outside the list.
    [[nodiscard]] ImageFile file(int position) const;

    [[nodiscard]] ImageFile selected() const { return file(index_); }

    /// Where a file stands in the list; nothing when it is not listed.
    [[nodiscard]] std::optional<int> find(const ImageFile &image) const;

    [[nodiscard]] const ImageNames &names() const { return *names_; }

    /// The same names, to be kept after the list has taken others.
    [[nodiscard]] std::shared_ptr<const ImageNames> shared() const { return names_; }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

Q_SIGNALS:
    void selectionChanged(int index);

private:
    QString folder_;
    std::shared_ptr<const ImageNames> names_;
    int index_ = -1;
};

} // namespace velmora
