#include "ui/SearchBoxes.h"

#include "base/OneLine.h"
#include "browser/TypedDate.h"

namespace velmora {
namespace {

// The typed day, as it was understood.
QString dayOf(const QString &date)
{
    const std::optional<WallTime> typed = typedDate(date);
    return typed ? dayText(*typed) : QString();
}

} // namespace

SearchBoxes::SearchBoxes(BoxEdit &lDate, BoxEdit &lTime, ImageBrowser &browser)
    : lDate_(lDate)
    , lTime_(lTime)
    , browser_(browser)
{
    for (BoxEdit *const box : {&lDate_, &lTime_}) {
        connect(box, &BoxEdit::enterPressed, this, &SearchBoxes::search);
        connect(box, &BoxEdit::left, this, &SearchBoxes::leave);
    }
}

void SearchBoxes::setTexts(const QString &lDate, const QString &lTime)
{
    lDate_.setText(lDate);
    lTime_.setText(lTime);
}

void SearchBoxes::setEnabled(bool enabled)
{
    lDate_.setEnabled(enabled);
    lTime_.setEnabled(enabled);
}

void SearchBoxes::leave()
{
    if (lDate_.isModified() || lTime_.isModified()) {
        search();
    }
}

void SearchBoxes::search()
{
    lDate_.setModified(false);
    lTime_.setModified(false);
    const QString date = lDate_.text();
    switch (browser_.search(date, lTime_.text())) {
    case SearchOutcome::Found:
        Q_EMIT searched(QString());
        break;
    case SearchOutcome::DayFound:
        Q_EMIT searched(tr("No image at \"%1\" (hours:minutes): this is the first of %2")
                            .arg(onOneLine(lTime_.text()), dayOf(date)));
        break;
    case SearchOutcome::NoImageOfTheDay:
        Q_EMIT searched(tr("No image of %1 (day/month/year) in this list").arg(dayOf(date)));
        break;
    case SearchOutcome::NoDate:
        Q_EMIT searched(tr("\"%1\" is no date: day/month/year is meant, as in 07/03/2006")
                            .arg(onOneLine(date)));
        break;
    }
}

} // namespace velmora
