// A user who does anything with mouse and keys on the browser's lists and cells, by chance.
#pragma once

#include "SelectionTest.h"

#include <QDir>
#include <QRandomGenerator>

namespace velmora::test {

/// Of what is pressed and released, checks what must be so at that instant.
class RandomHands : public SelectionTest
{
protected:
    RandomHands()
    {
        QObject::connect(&house_.browser, &ImageBrowser::copyWanted, &house_.window,
                         [this](const QString &path) { copied_.append(path); });
    }

    void seed(int number) { random_.seed(static_cast<quint32>(number)); }

    /// 0 up to below the bound.
    int below(int bound) { return static_cast<int>(random_.bounded(bound)); }

    bool isGroupView() { return house_.find<QCheckBox>(QStringLiteral("cCamera")).isChecked(); }

    QString anyList()
    {
        const QString ofView = isGroupView() ? kRowsOfGroup : kImages;
        return QStringList{kGroups, kCameras, ofView, ofView, ofView}.at(below(5));
    }

    QPoint anyPlace(const QString &list)
    {
        const QRect area = view(list).viewport()->rect();
        return {below(area.width()), below(area.height())};
    }

    Qt::MouseButton anyButton() { return below(4) == 0 ? Qt::RightButton : Qt::LeftButton; }

    Qt::KeyboardModifiers anyModifiers()
    {
        return below(5) == 0 ? Qt::ControlModifier : Qt::NoModifier;
    }

    // The button last pressed is released, where it was pressed or elsewhere.
    void letGo()
    {
        if (pressed_ == nullptr) {
            return;
        }
        const QPoint at = below(3) == 0 ? pressedAt_ + QPoint(-400, 7) : pressedAt_;
        QTest::mouseRelease(std::exchange(pressed_, nullptr), button_, {}, at);
        const bool isClick = std::exchange(pressedCell_, -1) >= 0 && at == pressedAt_;
        if (isClick && button_ == Qt::LeftButton && wasCameraView_ && !isGroupView() &&
            house_.data.files.find(pressedImage_)) {
            EXPECT_EQ(house_.data.files.selected(), pressedImage_);
        }
    }

    void pressAt(QWidget *widget, QPoint at)
    {
        letGo();
        pressed_ = widget;
        pressedAt_ = at;
        button_ = anyButton();
        modifiers_ = anyModifiers();
        QTest::mousePress(widget, button_, modifiers_, at);
    }

    void pressAnotherButton()
    {
        if (pressed_ != nullptr) {
            const Qt::MouseButton other =
                button_ == Qt::RightButton || below(2) == 0 ? Qt::MiddleButton : Qt::RightButton;
            QTest::mousePress(pressed_, other, {}, pressedAt_);
            QTest::mouseRelease(pressed_, other, {}, pressedAt_);
        }
    }

    void pressRow()
    {
        const QString list = anyList();
        pressAt(view(list).viewport(), anyPlace(list));
    }

    void pressCell()
    {
        letGo();
        pressedCell_ = below(kCells);
        pressedImage_ = sheet().image(pressedCell_);
        wasCameraView_ = !isGroupView();
        const bool mayZoom = !sheet().isZoomVisible() && !house_.data.state.DirCamEnCours();
        copied_.clear();
        pressAt(&house_.cell(pressedCell_), QPoint(20, 20));
        const bool zooms = mayZoom && button_ == Qt::RightButton && modifiers_ == Qt::NoModifier &&
                           !pressedImage_.isNone();
        EXPECT_EQ(copied_, zooms ? QStringList{native(pressedImage_)} : QStringList());
        EXPECT_TRUE(!zooms || sheet().zoomed() == pressedImage_);
    }

    void clickRow()
    {
        pressRow();
        letGo();
    }

    void clickCell()
    {
        pressCell();
        letGo();
    }

    void doubleClickRow()
    {
        letGo();
        const QString list = anyList();
        QTest::mouseDClick(view(list).viewport(), Qt::LeftButton, {}, anyPlace(list));
    }

    void key()
    {
        static const QList<Qt::Key> kKeys{Qt::Key_Up,     Qt::Key_Down,   Qt::Key_Home,
                                          Qt::Key_End,    Qt::Key_PageUp, Qt::Key_PageDown,
                                          Qt::Key_Return, Qt::Key_2,      Qt::Key_Shift,
                                          Qt::Key_Down,   Qt::Key_Insert, Qt::Key_Escape};
        QTest::keyClick(&view(anyList()), kKeys.at(below(static_cast<int>(kKeys.size()))),
                        anyModifiers());
    }

    void wheel()
    {
        QWidget *const viewport = view(anyList()).viewport();
        const QPointF at = viewport->rect().center();
        QWheelEvent event(at, viewport->mapToGlobal(at), {}, {0, below(2) == 0 ? 120 : -120},
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(viewport, &event);
    }

    void focus() { view(anyList()).setFocus(Qt::TabFocusReason); }

    const Sheet &sheet() { return house_.data.sheet; }

    StorageFolder &storage() { return house_.house.storage; }

    QString native(const ImageFile &image) { return QDir::cleanPath(nativePath(storage(), image)); }

    /// The cell on which a button is being pressed; -1 for none.
    [[nodiscard]] int pressedCell() const { return pressedCell_; }

private:
    QRandomGenerator random_;
    QWidget *pressed_ = nullptr;
    QPoint pressedAt_;
    Qt::MouseButton button_ = Qt::LeftButton;
    Qt::KeyboardModifiers modifiers_;
    int pressedCell_ = -1;
    ImageFile pressedImage_; // in that cell
    bool wasCameraView_ = false;
    QStringList copied_; // since a cell was last pressed
};

} // namespace velmora::test
