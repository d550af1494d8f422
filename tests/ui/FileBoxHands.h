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
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QTreeView>

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

} // namespace velmora::test
