// The two boxes of the image browser in which a date and a time are typed to find an image.
#pragma once

#include "browser/ImageBrowser.h"

#include <QLineEdit>

namespace velmora {

/// Enter searches, and so does whatever the user does next after typing: it counts after the
/// search. Another window that comes up is neither.
class SearchBoxes : public QObject
{
    Q_OBJECT

public:
    /// Everything given outlives the object.
    SearchBoxes(QLineEdit &lDate, QLineEdit &lTime, ImageBrowser &browser);

    void setTexts(const QString &lDate, const QString &lTime);
    void setEnabled(bool enabled);

    /// The user goes on to something else: searches what was typed, if anything was.
    void leave();

Q_SIGNALS:
    /// What came of a search: why it found nothing or not quite what was wanted, with the form that
    /// is meant; empty when the image was found.
    void searched(const QString &message);

private:
    void search();

    QLineEdit &lDate_;
    QLineEdit &lTime_;
    ImageBrowser &browser_;
};

} // namespace velmora
