#include "ui/FileBox.h"

#include <QAbstractFileIconProvider>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QIcon>
#include <QMenu>
#include <QMimeDatabase>
#include <QShortcut>
#include <QStyle>
#include <QTimer>

#include <chrono>

namespace velmora {
namespace {

// What a file's name says about it. A thread of the box asks too.
class KindsByName : public QAbstractFileIconProvider
{
public:
    [[nodiscard]] QString type(const QFileInfo &file) const override
    {
        return file.isFile()
                   ? QMimeDatabase().mimeTypeForFile(file, QMimeDatabase::MatchExtension).comment()
                   : QAbstractFileIconProvider::type(file);
    }

    [[nodiscard]] QIcon icon(const QFileInfo &file) const override
    {
        return icon(file.isRoot() ? Drive : file.isDir() ? Folder : File);
    }

    [[nodiscard]] QIcon icon(IconType kind) const override
    {
        switch (kind) {
        case Computer:
            return computer_;
        case Drive:
            return drive_;
        case Folder:
            return folder_;
        default:
            return file_;
        }
    }

private:
    static QIcon styled(QStyle::StandardPixmap name)
    {
        return QApplication::style()->standardIcon(name);
    }

    // The style draws them anew each time that it is asked, and a folder may have 100,000 files.
    QIcon computer_ = styled(QStyle::SP_ComputerIcon);
    QIcon drive_ = styled(QStyle::SP_DriveHDIcon);
    QIcon folder_ = styled(QStyle::SP_DirIcon);
    QIcon file_ = styled(QStyle::SP_FileIcon);
};

// The kinds are there before the box, and until its thread has ended.
class Box final : private KindsByName, public QFileDialog
{
public:
    Box(QWidget &window, const QString &title, const QString &folder)
        : QFileDialog(&window, title, folder)
    {
        setIconProvider(this);
        leaveFilesAlone();
    }

protected:
    // The toolkit runs the menus and questions of a box in loops of their own, and goes on with the
    // box when they end, so it stays until then.
    bool event(QEvent *event) override
    {
        if (event->type() != QEvent::DeferredDelete || !closeMenusAndQuestions()) {
            return QFileDialog::event(event);
        }
        QTimer::singleShot(kMomentToEnd, this, &QObject::deleteLater);
        return true;
    }

private:
    static constexpr std::chrono::milliseconds kMomentToEnd{10};

    // True when there were any.
    bool closeMenusAndQuestions()
    {
        bool any = false;
        for (auto *const inside : findChildren<QWidget *>()) {
            if (qobject_cast<QMenu *>(inside) != nullptr ||
                qobject_cast<QDialog *>(inside) != nullptr) {
                inside->close();
                any = true;
            }
        }
        return any;
    }

    // Not read-only, since a folder may be made for what is to be written.
    void leaveFilesAlone()
    {
        for (auto *const shortcut : findChildren<QShortcut *>()) {
            if (shortcut->key() == QKeySequence(QKeySequence::Delete)) {
                shortcut->setEnabled(false);
            }
        }
        for (auto *const inMenu : findChildren<QAction *>(QStringLiteral("qt_delete_action"))) {
            inMenu->setVisible(false);
        }
        for (auto *const rows : findChildren<QAbstractItemView *>()) {
            rows->setDragEnabled(false);
        }
    }
};

} // namespace

QFileDialog *newFileBox(QWidget &window, const QString &title, const QString &folder)
{
    auto *const box = new Box(window, title, folder);
    box->setAttribute(Qt::WA_DeleteOnClose);
    return box;
}

} // namespace velmora
