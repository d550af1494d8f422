// The controls in the corner of the contact sheet, which shrink with it.
#pragma once

#include <QFont>
#include <QList>
#include <QMargins>
#include <QObject>
#include <QSize>

class QLayout;
class QWidget;

namespace velmora {

/// Where the sheet is smaller than designed, the fonts of its controls and the space around them
/// shrink in proportion, so that all of them stay in the corner. They do not grow beyond their
/// usual size, for which there is room enough. Letters that are too large for the corner as it was
/// designed are made smaller, unless the sheet is large enough for them.
class CornerControls : public QObject
{
    Q_OBJECT

public:
    /// Belongs to the controls.
    explicit CornerControls(QWidget &controls);

    /// scale: of the sheet; 1 is the designed size.
    void fit(double scale);

private:
    struct Box
    {
        QWidget *widget = nullptr;
        QSize smallest; // as designed
        QSize largest;
    };

    struct Line
    {
        QLayout *layout = nullptr;
        int spacing = 0;
        QMargins margins;
    };

    QWidget &controls_;
    QFont font_;
    QList<Box> boxes_;
    QList<Line> lines_;
    double scale_ = 1;   // of the space around the controls
    double letters_ = 1; // of their fonts
};

} // namespace velmora
