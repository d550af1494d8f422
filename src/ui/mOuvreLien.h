// Opens documents and links through the desktop, and says in French why one cannot be opened.
#pragma once

#include "base/DesktopOpener.h"
#include "base/NativePaths.h"
#include "base/TaskScope.h"

#include <QMessageBox>
#include <QObject>
#include <QPointer>

#include <optional>

namespace velmora {

class mOuvreLien : public QObject
{
    Q_OBJECT

public:
    /// Everything passed in outlives this object; the scope is joined before it is destroyed.
    mOuvreLien(DesktopOpener &opener, const NativePaths &paths, TaskScope &scope);

    /// The link that link buttons open; to be set before one is shown.
    void setLink(const QString &link) { link_ = link; }

    [[nodiscard]] const QString &link() const { return link_; }

    /// Opens a link ("ouvre le lien"): hands a file, a document or an address to the desktop, which
    /// finds a program for it. target: a path text, a native path, or an address. A failure shows a
    /// warning box titled "Erreur"; nothing is logged or retried.
    void OuvreLien(const QString &target);

    /// The message for a result of the desktop's shell: none above 32, which means success.
    [[nodiscard]] static std::optional<QString> message(int result);

private:
    QCoro::Task<> run(QString target);
    QCoro::Task<int> result(QString target);
    void show(const QString &message);

    DesktopOpener &opener_;
    const NativePaths &paths_;
    TaskScope &scope_;
    QString link_;
    QPointer<QMessageBox> box_;
};

} // namespace velmora
