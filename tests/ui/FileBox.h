// The answer to a box that asks for a file or a folder.
#pragma once

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

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

} // namespace velmora::test
