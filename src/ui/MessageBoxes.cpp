#include "ui/MessageBoxes.h"

#include <QApplication>

namespace velmora {
namespace {

constexpr qsizetype kMaxTexts = 10;

// A dialog takes with it what was opened over it, read or not: as it ends, the box passes to the
// window behind it.
void openOver(QMessageBox &box, QWidget *window)
{
    box.setParent(window, box.windowFlags());
    if (const auto *const dialog = qobject_cast<QDialog *>(window)) {
        const auto passOn = [&box, dialog] {
            if (box.isVisible()) {
                openOver(box, dialog->parentWidget()); // which hides it
                box.show();
            }
        };
        QObject::connect(dialog, &QDialog::finished, &box, passOn, Qt::SingleShotConnection);
    }
}

} // namespace

QMessageBox *newWarningBox(const QString &title)
{
    auto *const box = new QMessageBox(QMessageBox::Warning, title, {}, QMessageBox::Ok);
    openOver(*box, QApplication::activeWindow());
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->setWindowModality(Qt::NonModal);
    return box;
}

bool isOpen(const QMessageBox *box)
{
    return box != nullptr && box->isVisible();
}

void MessageBoxes::warn(const QString &text)
{
    if (!isOpen(box_)) {
        texts_.clear();
        box_ = newWarningBox(QCoreApplication::applicationName());
    }
    texts_.append(text);
    const bool tooMany = texts_.size() > kMaxTexts;
    const QStringList shown =
        tooMany ? texts_.first(kMaxTexts) + QStringList(QStringLiteral("…")) : texts_;
    box_->setText(shown.join(QStringLiteral("\n\n")));
    box_->show();
}

void MessageBoxes::standAbove(QWidget &window)
{
    if (isOpen(box_) && box_->parentWidget() == nullptr) {
        openOver(*box_, &window);
        box_->show();
    }
}

} // namespace velmora
