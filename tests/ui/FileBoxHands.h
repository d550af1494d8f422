// What a user does with a box that asks for a file or a folder.
#pragma once

#include "support/ReadWatch.h"

#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <QWindow>

#include <gtest/gtest.h>

namespace velmora::test {

/// The window has such a box open.
inline void answerFileBox(QWidget &window, const QString &path)
{
    auto *const box = window.findChild<QFileDialog *>();
    auto *const name = box->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    name->setText(path); // pasted: the box completes typed text from what it has read
    auto *const buttons = box->findChild<QDialogButtonBox *>();
    for (QAbstractButton *const button : buttons->buttons()) {
        if (buttons->buttonRole(button) == QDialogButtonBox::AcceptRole) {
            QTest::mouseClick(button, Qt::LeftButton);
            return;
        }
    }
}

/// A box lists a folder that none has listed before. False when it has not done so in time.
inline bool list(QFileDialog &box, const QString &folder)
{
    QSignalSpy listed(box.findChild<QFileSystemModel *>(), &QFileSystemModel::directoryLoaded);
    box.setDirectory(folder);
    while (!listed.contains({folder}) && listed.wait()) {
    }
    return listed.contains({folder});
}

/// The window has such a box open, which now lists a folder that none has listed before: names of
/// the files in it that are opened for that.
inline QStringList filesOpenedForListing(QWidget &window, const QString &folder)
{
    ReadWatch reads(folder);
    const bool isListed = list(*window.findChild<QFileDialog *>(), folder);
    return isListed ? reads.opened() : QStringList{QStringLiteral("not listed")};
}

/// The window has such a box open, which now lists a folder that none has listed before: whether a
/// press on Del, and a yes to the question that follows, delete a file from it, or a drag could
/// move one to another folder.
inline bool changesFiles(QWidget &window, const QFileInfo &file)
{
    auto *const box = window.findChild<QFileDialog *>();
    EXPECT_TRUE(QTest::qWaitForWindowActive(box) && list(*box, file.path()));
    auto &rows = *box->findChild<QTreeView *>(QStringLiteral("treeView"));
    rows.setFocus();
    rows.keyboardSearch(file.fileName());
    EXPECT_EQ(rows.currentIndex().data(), file.fileName());
    QTimer asked;
    QObject::connect(&asked, &QTimer::timeout, box, [] {
        if (auto *const question = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            question->button(QMessageBox::Yes)->click();
        }
    });
    asked.start(1);
    QTest::keyClick(&rows, Qt::Key_Delete);
    return !file.exists() || rows.dragEnabled() ||
           box->findChild<QAction *>(QStringLiteral("qt_delete_action"))->isVisible();
}

/// The window has such a box open. An action makes it open a menu, or ask something, and the
/// program closes the box beneath that. True when all of it is gone.
template <typename Action>
bool goesWithWhatItOpens(QWidget &window, Action act)
{
    const QPointer<QFileDialog> box = window.findChild<QFileDialog *>();
    bool isCovered = false;
    QTimer covered;
    QObject::connect(&covered, &QTimer::timeout, box, [&] {
        if (QApplication::activePopupWidget() != nullptr ||
            QApplication::activeModalWidget() != box) {
            isCovered = true;
            covered.stop();
            box->close();
        }
    });
    covered.start(1);
    act(*box);
    return isCovered && QTest::qWaitFor([&box] { return box.isNull(); });
}

/// A right click into the rows of the box.
inline void openRowsMenu(QFileDialog &box)
{
    const auto *const rows = box.findChild<QTreeView *>(QStringLiteral("treeView"));
    const QPoint middle = rows->mapTo(&box, rows->rect().center());
    QTest::mouseClick(box.windowHandle(), Qt::RightButton, {}, middle);
}

} // namespace velmora::test
