#include "ui/MessageBoxes.h"

#include <QApplication>

namespace velmora {
namespace {

constexpr qsizetype kMaxTexts = 10;

} // namespace

void MessageBoxes::warn(const QString &text)
{
    if (!box_) {
        texts_.clear();
        box_ = new QMessageBox(QMessageBox::Warning, QCoreApplication::applicationName(), {},
                               QMessageBox::Ok, QApplication::activeWindow());
        box_->setAttribute(Qt::WA_DeleteOnClose);
        box_->setTextFormat(Qt::PlainText);
        box_->setWindowModality(Qt::NonModal);
    }
    texts_.append(text);
    const bool tooMany = texts_.size() > kMaxTexts;
    const QStringList shown =
        tooMany ? texts_.first(kMaxTexts) + QStringList(QStringLiteral("…")) : texts_;
    box_->setText(shown.join(QStringLiteral("\n\n")));
    box_->show();
}

} // namespace velmora
