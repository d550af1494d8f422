// Several addresses pasted into one address box: after a question, they fill its row and those
// below.
#pragma once

#include "cameras/PastedAddresses.h"
#include "ui/CameraRowBoxes.h"
#include "view/CameraPage.h"

#include <span>

namespace velmora {

class AddressPaste : public QObject
{
    Q_OBJECT

public:
    /// rows: the boxes of the group on screen, from row 0 on. Everything passed in outlives this
    /// object, which belongs to the window.
    AddressPaste(std::span<CameraRowBoxes *const> rows, CameraPage &page, const CameraTable &table,
                 QWidget &window);

    /// Asks, and fills the rows if the answer is yes; asks again if they have changed by then.
    /// firstRow: 0-based.
    void offer(int firstRow, const QStringList &addresses);

Q_SIGNALS:
    /// The rows have their addresses, and no box is being edited any more.
    void filled();

private:
    /// Addresses on their way into rows, and those that the rows had when the user was asked.
    struct Offer
    {
        QStringList addresses;
        PastedAddresses pasted;
        QStringList stored;
    };

    [[nodiscard]] PastedAddresses placed(int firstRow, const QStringList &addresses) const;
    [[nodiscard]] QStringList stored(const PastedAddresses &pasted) const;
    void ask(int firstRow, const QStringList &addresses, const QString &why);
    void accept(const Offer &offer);
    void fill(const PastedAddresses &pasted);

    std::span<CameraRowBoxes *const> rows_;
    CameraPage &page_;
    const CameraTable &table_;
    QWidget &window_;
};

} // namespace velmora
