// The image browser's two boxes for a date and a time by which to find an image.
#pragma once

#include "browser/ImageBrowser.h"
#include "ui/BoxEdit.h"

namespace velmora {

/// Enter searches, and so does whatever the user does next after typing, which takes effect after
/// the search. Activating another window does neither.
class SearchBoxes : public QObject
{
    Q_OBJECT

public:
    /// Everything passed in outlives the object.
    SearchBoxes(BoxEdit &lDate, BoxEdit &lTime, ImageBrowser &browser);

    void setTexts(const QString &lDate, const QString &lTime);
    void setEnabled(bool enabled);

    /// The user moves on to something else: searches for what was typed, if anything.
    void leave();

Q_SIGNALS:
    /// The outcome of a search: why it found nothing or not quite what was wanted, with the form
    /// that is expected; empty when the image was found.
    void searched(const QString &message);

private:
    void search();

    BoxEdit &lDate_;
    BoxEdit &lTime_;
    ImageBrowser &browser_;
};

} // namespace velmora
