#include "ui/MessageBoxes.h"

#include <QApplication>

namespace velmora {
namespace {

constexpr qsizetype kMaxTexts = 10;

} // namespace

QMessageBox *newWarningBox(const QString &title)
{
    auto *const box = new QMessageBox(QMessageBox::Warning, title, {}, QMessageBox::Ok,
                                      QApplication::activeWindow());
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->setWindowModality(Qt::NonModal);
    return box;
}

void MessageBoxes::warn(const QString &text)
{
    if (!box_) {
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

} // namespace velmora
