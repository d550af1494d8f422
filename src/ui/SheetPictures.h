// Brings the contact sheet's pictures to its cells: the selected one first, each as soon as it is
// decoded, skipping those already there.
#pragma once

#include "browser/Sheet.h"
#include "cameras/StorageFolder.h"
#include "pictures/PictureLoader.h"
#include "ui/ContactSheet.h"

#include <QTimer>

namespace velmora {

/// A cell keeps its picture until the next one arrives. Everything passed in outlives this object.
class SheetPictures : public QObject
{
    Q_OBJECT

public:
    SheetPictures(ContactSheet &widgets, const Sheet &sheet, const StorageFolder &storage,
                  PictureLoader &loader);

    /// Looks at the files again and shows what has changed.
    void refresh();

private:
    void bindSheet();
    void fill();
    void show(const PictureOrder &order, const QImage &image);
    void showFrame(int cell);
    void showZoom();
    [[nodiscard]] QString wanted(int place) const;
    void order(int place, QList<PictureOrder> &orders);
    [[nodiscard]] PictureView &view(int place);

    ContactSheet &widgets_;
    const Sheet &sheet_;
    const StorageFolder &storage_;
    PictureLoader &loader_;
    QTimer fillSoon_;
};

} // namespace velmora
