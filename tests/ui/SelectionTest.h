// The browser's window, with what a user sees of the selection, and mouse buttons pressed and
// released one by one.
#pragma once

#include "BrowserWindowHouse.h"

#include <QAbstractButton>

#include <gtest/gtest.h>

namespace velmora::test {

class SelectionTest : public testing::Test
{
protected:
    /// Rows drawn as selected, and the row from which keys move.
    [[nodiscard]] QList<int> highlighted(const QString &list)
    {
        QList<int> rows;
        for (const QModelIndex &index : view(list).selectionModel()->selectedIndexes()) {
            rows.append(index.row());
        }
        return rows;
    }

    [[nodiscard]] int row(const QString &list) { return view(list).currentIndex().row(); }

    QListView &view(const QString &list) { return house_.find<QListView>(list); }

    QPoint middle(const QString &list, int row)
    {
        QListView &of = view(list);
        const QModelIndex index = of.model()->index(row, 0);
        of.scrollTo(index);
        return of.visualRect(index).center();
    }

    void press(const QString &list, QPoint at, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mousePress(view(list).viewport(), button, modifiers, at);
        house_.settle();
    }

    void release(const QString &list, QPoint at, Qt::MouseButton button = Qt::LeftButton,
                 Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseRelease(view(list).viewport(), button, modifiers, at);
        house_.settle();
    }

    /// A point below the rows of a list, which must leave room there.
    QPoint blankPart(const QString &list) { return {5, view(list).viewport()->height() - 3}; }

    /// What the Delete key's question is about; nothing else is done.
    QString targetOfDelete(const QString &list)
    {
        house_.key(list, Qt::Key_Delete);
        QMessageBox *const box = house_.question();
        if (box == nullptr) {
            return {};
        }
        const QString text = box->text();
        QTest::mouseClick(box->button(QMessageBox::No), Qt::LeftButton);
        house_.settle();
        return text.mid(QStringLiteral("Kill ").size());
    }

    QString position() { return house_.text(QStringLiteral("NbI")); }

    bool isFilmEnabled() { return house_.find<QWidget>(QStringLiteral("bFilm")).isEnabled(); }

    /// Cameras 0, 2 and 5 of the first group with three, two and four images, in group view.
    void openGroup(int row = 0)
    {
        house_.house.settings.write(u"Control", u"Camera", 1);
        house_.house.settings.write(u"Control", u"lstImg", row);
        house_.addImages({0, 0}, 3);
        house_.addImages({0, 2}, 2);
        house_.addImages({0, 5}, 4);
        house_.open();
    }

    /// Another image is in a camera's folder, and the browser refreshes.
    void refreshWith(CameraAddress camera, const QString &name)
    {
        house_.house.putImage(camera, name, pictureBytes(Qt::red));
        house_.keyInWindow(Qt::Key_F5);
    }

    /// A row of the group view and everything that goes with it.
    void expectCamera(int row, int images)
    {
        EXPECT_EQ(highlighted(kRowsOfGroup), QList<int>{row});
        EXPECT_EQ(this->row(kRowsOfGroup), row);
        EXPECT_EQ(highlighted(kCameras), QList<int>{row});
        EXPECT_EQ(house_.framed(), QList<int>{row});
        EXPECT_EQ(position(), QString::number(images));
        EXPECT_EQ(isFilmEnabled(), images > 0);
    }

    /// An image of the camera view and everything that goes with it.
    void expectImage(int index, int count)
    {
        EXPECT_EQ(highlighted(kImages), QList<int>{index});
        EXPECT_EQ(row(kImages), index);
        EXPECT_EQ(position(), QStringLiteral("%1 / %2").arg(index + 1).arg(count));
        ASSERT_EQ(house_.framed().size(), 1);
        EXPECT_EQ(house_.shown(house_.framed().first()), listed(index));
        EXPECT_EQ(targetOfDelete(kImages), listed(index));
    }

    QString listed(int index) { return view(kImages).model()->index(index, 0).data().toString(); }

    const QString kGroups = QStringLiteral("lstGroupe");
    const QString kCameras = QStringLiteral("lstCam");
    const QString kImages = QStringLiteral("LstDir");
    const QString kRowsOfGroup = QStringLiteral("LstDirCam");

    BrowserWindowHouse house_;
};

} // namespace velmora::test
