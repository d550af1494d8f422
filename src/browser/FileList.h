// A camera's list of images, and which of them is selected.
#pragma once

#include "browser/ImageFile.h"
#include "browser/ImageNames.h"
#include "cameras/CameraAddress.h"

#include <QAbstractListModel>

#include <memory>
#include <optional>

namespace velmora {

/// Positions count from 0; no selection is -1, as usual in lists. A name is shown on one line,
/// whatever it holds.
class FileList : public QAbstractListModel
{
    Q_OBJECT

public:
    /// An entry and where it stands; a position of -1 for none.
    struct Selected
    {
        int index = -1;
        ImageFile image;
    };

    explicit FileList(QObject *parent = nullptr);

    /// Lists these images of a camera's folder (text form, ending with "\") from now on; none is
    /// selected.
    void bind(CameraAddress camera, const QString &folder, std::shared_ptr<const ImageNames> names);

    /// The camera whose images are listed. Another one may already be chosen while its folder is
    /// being read.
    [[nodiscard]] CameraAddress camera() const { return camera_; }

    /// The folder listed, text form; empty before the first bind().
    [[nodiscard]] const QString &folder() const { return folder_; }

    [[nodiscard]] int count() const;

    /// Selected position of the list of images; -1 for none.
    [[nodiscard]] int ListIndex() const { return index_; }

    /// Selects an entry, or none.
    void setListIndex(int index);

    /// The file at a position; none if out of range.
    [[nodiscard]] ImageFile file(int position) const;

    [[nodiscard]] ImageFile selected() const { return file(index_); }

    [[nodiscard]] Selected selection() const { return {index_, selected()}; }

    /// A file's position in the list; nothing if it is not listed.
    [[nodiscard]] std::optional<int> find(const ImageFile &image) const;

    [[nodiscard]] const ImageNames &names() const { return *names_; }

    /// The same names, to be kept after the list has moved on to others.
    [[nodiscard]] std::shared_ptr<const ImageNames> shared() const { return names_; }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

Q_SIGNALS:
    void selectionChanged(int index);

private:
    CameraAddress camera_;
    QString folder_;
    std::shared_ptr<const ImageNames> names_;
    int index_ = -1;
};

} // namespace velmora
