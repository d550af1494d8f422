#include "ui/AddressPaste.h"

#include <QMessageBox>

namespace velmora {
namespace {

QString rowList(const QList<int> &rows)
{
    QStringList numbers;
    for (const int row : rows) {
        numbers.append(QString::number(row));
    }
    const QString last = numbers.takeLast();
    return numbers.isEmpty()
               ? last
               : AddressPaste::tr("%1 and %2").arg(numbers.join(QStringLiteral(", ")), last);
}

QString fate(const PastedAddresses &pasted)
{
    switch (pasted.overwritten.size()) {
    case 0:
        return AddressPaste::tr("No address is overwritten.");
    case 1:
        return AddressPaste::tr("The address that row %1 has now is overwritten.")
            .arg(pasted.overwritten.constFirst());
    default:
        return AddressPaste::tr("The addresses that rows %1 have now are overwritten.")
            .arg(rowList(pasted.overwritten));
    }
}

// why: the reason for asking again; empty the first time.
QString question(const PastedAddresses &pasted, const QString &why)
{
    const qsizetype count = pasted.addresses.size() + pasted.leftOut;
    const QString rows =
        pasted.addresses.size() == 1
            ? AddressPaste::tr("row %1 with the first").arg(pasted.firstRow)
            : AddressPaste::tr("rows %1 to %2").arg(pasted.firstRow).arg(pasted.lastRow());
    QStringList sentences{
        why, AddressPaste::tr("%1 addresses were pasted. Fill %2?").arg(count).arg(rows),
        fate(pasted)};
    sentences.removeAll(QString());
    if (pasted.leftOut > 0) {
        sentences.append(AddressPaste::tr("%1 of them find no row in this group and are left out.")
                             .arg(pasted.leftOut));
    }
    return sentences.join(QStringLiteral("\n\n"));
}

} // namespace

AddressPaste::AddressPaste(std::span<CameraRowBoxes *const> rows, CameraPage &page,
                           const CameraTable &table, QWidget &window)
    : QObject(&window)
    , rows_(rows)
    , page_(page)
    , table_(table)
    , window_(window)
{
}

void AddressPaste::offer(int firstRow, const QStringList &addresses)
{
    ask(firstRow, addresses, {});
}

PastedAddresses AddressPaste::placed(int firstRow, const QStringList &addresses) const
{
    QStringList shown;
    for (int row = 0; row < kRows; ++row) {
        shown.append(page_.row(row).url);
    }
    return placeAddresses(addresses, firstRow, shown);
}

QStringList AddressPaste::stored(const PastedAddresses &pasted) const
{
    QStringList stored;
    for (int row = pasted.firstRow; row <= pasted.lastRow(); ++row) {
        stored.append(table_.url({page_.group(), row}));
    }
    return stored;
}

void AddressPaste::ask(int firstRow, const QStringList &addresses, const QString &why)
{
    const PastedAddresses pasted = placed(firstRow, addresses);
    auto *const box =
        new QMessageBox(QMessageBox::Question, tr("Several addresses"), question(pasted, why),
                        QMessageBox::Yes | QMessageBox::No, &window_);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->setDefaultButton(pasted.overwritten.isEmpty() ? QMessageBox::Yes : QMessageBox::No);
    connect(box, &QMessageBox::finished, this,
            [this, offer = Offer{addresses, pasted, stored(pasted)},
             group = page_.group()](int answer) {
                if (answer == QMessageBox::Yes && group == page_.group()) {
                    accept(offer);
                }
            });
    box->open();
}

// The answer was given for the rows as they were: another program may have put cameras there while
// the question was open, with or without this one's hearing of it.
void AddressPaste::accept(const Offer &offer)
{
    if (stored(offer.pasted) == offer.stored) {
        fill(offer.pasted);
        return;
    }
    page_.reread();
    ask(offer.pasted.firstRow, offer.addresses, tr("The rows have changed meanwhile."));
}

void AddressPaste::fill(const PastedAddresses &pasted)
{
    for (int row = pasted.firstRow; row <= pasted.lastRow(); ++row) {
        rows_[static_cast<std::size_t>(row)]->fill(pasted.addresses.at(row - pasted.firstRow));
    }
    page_.changeSource(pasted.firstRow, pasted.addresses.constFirst());
    Q_EMIT filled();
}

} // namespace velmora
