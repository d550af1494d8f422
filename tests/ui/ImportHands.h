// A user of the import, the main window and the browser, other programs and the capture, by chance,
// and what the rules make of the import's choices meanwhile.
#pragma once

#include "ImportReference.h"
#include "ImportRooms.h"

#include <QDir>
#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <array>
#include <optional>

namespace velmora::test {

class ImportHands
{
public:
    Q_DISABLE_COPY_MOVE(ImportHands)
    virtual ~ImportHands() = default;

protected:
    ImportHands() = default;

    static constexpr std::array<CameraAddress, 3> kUsed{CameraAddress{0, 0}, CameraAddress{0, 1},
                                                        CameraAddress{1, 0}};

    int below(int bound) { return static_cast<int>(random_.bounded(bound)); }

    bool oneIn(int chances) { return below(chances) == 0; }

    template <typename List>
    auto any(const List &list)
    {
        return list[static_cast<decltype(list.size())>(below(static_cast<int>(list.size())))];
    }

    CaptureHouse &house() { return rooms_.house; }

    QString tree(const QString &relative) { return house().tree.path(relative); }

    // "C:\card" is drives/c/card.
    QString native(const QString &folder)
    {
        QString path = folder;
        path.replace(u'\\', u'/');
        return QDir::cleanPath(
            tree(QStringLiteral("drives/") + path.left(1).toLower() + path.mid(2)));
    }

    QString &address(CameraAddress camera) { return addresses_[camera.group * kRows + camera.row]; }

    CameraAddress target() const { return {choices_.group, choices_.row}; }

    // Of a camera without an address, the storage folder itself.
    QString targetFolder(const QString &storage)
    {
        return QDir::cleanPath(native(storage) + u'/' + encodedAddress(address(target())));
    }

    QString inForce() { return house().storage.inForce(); }

    QMessageBox *message() { return rooms_.window.findChild<QMessageBox *>(); }

    bool isRunning() { return !rooms_.find<QWidget>("Drive1").isEnabled(); }

    QListView &list(const char *name) { return rooms_.find<QListView>(name); }

    QMap<QString, QByteArray> everything()
    {
        return allFiles_.read(tree(QStringLiteral("drives")));
    }

    virtual void check() = 0;

    // One turn of the event loop, and what must be so after it.
    void turn()
    {
        QCoreApplication::processEvents();
        check();
    }

    void activate(QWidget &window)
    {
        if (QApplication::activeWindow() != &window) {
            window.activateWindow();
            turn();
        }
    }

    // With its message open a window takes nothing else.
    bool mayUseImport()
    {
        if (!choices_.isOpen || message() != nullptr || isGoPressed_ || isFilePressed_) {
            return false;
        }
        activate(rooms_.window);
        return QApplication::activeWindow() == &rooms_.window;
    }

    bool mayChoose() { return mayUseImport() && !isRunning(); }

    bool mayUse(QWidget &window)
    {
        if (isGoPressed_ || isFilePressed_) {
            return false;
        }
        activate(window);
        return QApplication::activeWindow() == &window; // no message has come in between
    }

    bool mayUseMain() { return mayUse(rooms_.main); }

    void store(const QString &key, const QString &value) { choices_.stored[key] = value; }

    // Events in the import's window.
    void open()
    {
        auto &button = rooms_.inMain<QAbstractButton>(QStringLiteral("Import"));
        if (!mayUseMain() || !button.isEnabled()) {
            return;
        }
        QTest::mouseClick(&button, Qt::LeftButton); // may find the storage folder missing
        EXPECT_TRUE(rooms_.window.isVisible() || !button.isEnabled());
        if (!std::exchange(choices_.isOpen, rooms_.window.isVisible()) && choices_.isOpen) {
            load();
        }
    }

    void load()
    {
        const auto &stored = choices_.stored;
        const QString filter = stored.value(QStringLiteral("Patern"));
        choices_.filter = filter.isEmpty() ? QStringLiteral("*.jpg") : filter;
        const QString drive = stored.value(QStringLiteral("Drive"));
        const bool isThere = drive == u"E:" && QFileInfo(tree(QStringLiteral("drives/e"))).isDir();
        choices_.drive = isThere ? drive : QStringLiteral("C:");
        const QString folder = stored.value(QStringLiteral("Dir"));
        choices_.folder = !folder.isEmpty() && QFileInfo(native(folder)).isDir()
                              ? folder
                              : choices_.drive + u'\\';
        choices_.group = stored.value(QStringLiteral("ICam")).toInt();
        choices_.row = stored.value(QStringLiteral("ILien")).toInt();
        failure_.clear();
        copied_ = 0;
        bar_ = {0, 1};
        selected_.clear();
        count();
        folders_ = targetImage_ = {true};
    }

    // What an earlier list had selected is not known if nothing was settled since.
    void count()
    {
        isSelectionFree_ = isSelectionFree_ || files_.isDue;
        files_ = {true, isFailing_};
        mayBeUnread_ = isFailing_;
        countText_.clear();
    }

    void close()
    {
        if (!choices_.isOpen || message() != nullptr || isGoPressed_ || isFilePressed_) {
            return;
        }
        switch (below(3)) {
        case 0:
            if (mayUseImport()) {
                QTest::mouseClick(&rooms_.find<QWidget>("cmdQuit"), Qt::LeftButton);
            }
            break;
        case 1:
            QTest::keyClick(&rooms_.window, Qt::Key_Escape);
            break;
        default:
            rooms_.window.close();
        }
        choices_.isOpen = rooms_.window.isVisible();
        if (run_ && !choices_.isOpen) {
            run_->isClosed = true;
            run_->isAlone = false;
        }
    }

    void reopen()
    {
        close();
        open();
    }

    void dismiss()
    {
        if (QMessageBox *const box = message()) {
            QTest::keyClick(box, oneIn(2) ? Qt::Key_Return : Qt::Key_Escape);
            QCoreApplication::sendPostedEvents(box, QEvent::DeferredDelete);
        }
    }

    // With keys, even the one that it already has.
    void pick(const char *name, int entry)
    {
        auto &box = rooms_.find<QComboBox>(name);
        box.showPopup();
        QAbstractItemView *const list = box.view();
        QTest::keyClick(list, Qt::Key_Home);
        for (int row = 0; row < entry; ++row) {
            QTest::keyClick(list, Qt::Key_Down);
        }
        QTest::keyClick(list, Qt::Key_Return);
    }

    void pickCamera()
    {
        if (!mayChoose()) {
            return;
        }
        const bool isGroup = oneIn(2);
        const int entry = below(isGroup ? 2 : 3);
        pick(isGroup ? "Cam" : "Lien", entry);
        (isGroup ? choices_.group : choices_.row) = entry;
        store(isGroup ? QStringLiteral("ICam") : QStringLiteral("ILien"), QString::number(entry));
        failure_.clear();
        targetImage_ = {true};
    }

    void pickDrive()
    {
        if (!mayChoose()) {
            return;
        }
        auto &box = rooms_.find<QComboBox>("Drive1");
        const int entry = below(std::max(1, box.findText(QStringLiteral("E:")) + 1));
        const QString drive = box.itemText(entry);
        pick("Drive1", entry);
        if (drive != choices_.drive) {
            choices_.drive = drive;
            store(QStringLiteral("Drive"), drive);
            goTo(drive + u'\\');
        }
    }

    void goTo(const QString &folder)
    {
        choices_.folder = folder;
        store(QStringLiteral("Dir"), folder);
        selected_.clear();
        folders_ = {true};
        count();
    }

    void openFolder()
    {
        if (!mayChoose() || list("Dir1").model()->rowCount() == 0) {
            return;
        }
        QListView &view = list("Dir1");
        const QModelIndex index = view.model()->index(below(view.model()->rowCount()), 0);
        QString folder;
        for (int row = 0; row <= std::min(index.row(), openRow() + 1); ++row) {
            const bool isLast = row == std::min(index.row(), openRow() + 1);
            const QString name =
                isLast ? index.data().toString() : view.model()->index(row, 0).data().toString();
            folder +=
                (folder.isEmpty() || folder.endsWith(u'\\') ? QString() : QStringLiteral("\\")) +
                name;
        }
        view.scrollTo(index);
        const QPoint at = view.visualRect(index).center();
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, at);
        if (oneIn(4)) {
            return;
        }
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, at);
        if (folder != choices_.folder) {
            goTo(folder);
        }
    }

    // Levels of the open folder, less one.
    int openRow() const
    {
        return static_cast<int>(choices_.folder.split(u'\\', Qt::SkipEmptyParts).size()) - 1;
    }

    void typeFilter()
    {
        static const QStringList kFilters{QStringLiteral("*.jpg"), QStringLiteral("*"),
                                          QStringLiteral("*.*"),   QStringLiteral("2*.jpg"),
                                          QStringLiteral("?.jpg"), QString()};
        if (!mayChoose()) {
            return;
        }
        auto &box = rooms_.find<QLineEdit>("Filtre");
        QTest::mouseClick(&box, Qt::LeftButton);
        isSelectionFree_ = true; // by what the filter was in between
        if (oneIn(3) && box.text().endsWith(u'g')) {
            QTest::keyClick(&box, Qt::Key_End);
            QTest::keyClick(&box, Qt::Key_Backspace);
        } else {
            QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(&box, Qt::Key_Delete);
            QTest::keyClicks(&box, any(kFilters));
        }
        if (!box.text().isEmpty() || !choices_.filter.isEmpty()) {
            choices_.filter = box.text();
            store(QStringLiteral("Patern"), box.text());
            count();
        }
    }

    void pressFile()
    {
        QListView &view = list("File1");
        if (!mayUseImport() || files_.isDue || view.model()->rowCount() == 0) {
            return;
        }
        const QModelIndex index = view.model()->index(below(view.model()->rowCount()), 0);
        view.scrollTo(index);
        filePressedAt_ = view.visualRect(index).center();
        pressedFile_ = index.data().toString();
        isFilePressed_ = true;
        QTest::mousePress(view.viewport(), Qt::LeftButton, {}, filePressedAt_);
    }

    void releaseFile()
    {
        if (!std::exchange(isFilePressed_, false)) {
            return;
        }
        QTest::mouseRelease(list("File1").viewport(), Qt::LeftButton, {}, filePressedAt_);
        if (!files_.isDue && listed_.contains(pressedFile_) && choices_.isOpen) {
            selected_ = pressedFile_;
            sourceImage_ = {true};
        } else if (files_.isDue) {
            selected_ = QString(); // it may be listed or not
        }
    }

    void clickFile()
    {
        pressFile();
        releaseFile();
    }

    void useKeyOnFiles()
    {
        static constexpr std::array kKeys{Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End};
        QListView &view = list("File1");
        if (!mayUseImport() || files_.isDue || listed_.isEmpty()) {
            return;
        }
        const Qt::Key key = any(kKeys);
        const auto last = listed_.size() - 1;
        const auto now = listed_.indexOf(selected_);
        QTest::keyClick(&view, key);
        const auto next = key == Qt::Key_Up     ? std::max<qsizetype>(now - 1, 0)
                          : key == Qt::Key_Down ? std::min(now + 1, last)
                          : key == Qt::Key_Home ? 0
                                                : last;
        if (std::exchange(selected_, listed_.at(next)) != selected_) {
            sourceImage_ = {true};
        }
    }

    void pressGo()
    {
        auto &go = rooms_.find<QWidget>("cmdGo");
        if (mayUseImport()) {
            turn(); // which puts away what was picked from
        }
        if (!mayUseImport()) {
            return;
        }
        isGoPressed_ = true;
        isGoMeant_ = go.isEnabled();
        goFor_ = address(target());
        goInto_ = inForce();
        QTest::mousePress(&go, Qt::LeftButton);
    }

    void releaseGo()
    {
        if (!std::exchange(isGoPressed_, false)) {
            return;
        }
        auto &go = rooms_.find<QWidget>("cmdGo");
        const bool isElsewhere = oneIn(5);
        const bool isMeant = isGoMeant_ && go.isEnabled() && choices_.isOpen && !isElsewhere;
        std::optional<ImportRunSeen> run;
        const bool isSameFolder = goInto_ == inForce();
        if (isMeant && goFor_ == address(target()) && isSameFolder) {
            run = runNow();
        }
        QTest::mouseRelease(&go, Qt::LeftButton, {}, isElsewhere ? QPoint(-200, 5) : QPoint(5, 5));
        if (isMeant && !run) {
            failure_ = isSameFolder
                           ? QStringLiteral("Copy aborted: camera %1:%2 has another address now")
                                 .arg(choices_.group)
                                 .arg(choices_.row)
                           : QStringLiteral("Copy aborted: another storage folder is in use now");
        }
        begin(run);
    }

    void begin(const std::optional<ImportRunSeen> &run)
    {
        if (run) {
            EXPECT_TRUE(isRunning());
            run_ = run;
            failure_.clear();
            copied_ = 0;
        }
    }

    ImportRunSeen runNow()
    {
        ImportRunSeen run;
        run.target = targetFolder(inForce());
        run.storage = inForce();
        run.captions = rooms_.find<QLabel>("NbF").text();
        run.isCounted = !files_.isDue;
        run.alone = runOutcome(native(choices_.folder), choices_.filter, run.target);
        run.mayAbort = run.alone.isAborted;
        run.isAlone = QFileInfo(run.target).isDir(); // otherwise the browser may make it
        return run;
    }

    void clickGo()
    {
        pressGo();
        releaseGo();
    }

    // The space bar on the button.
    void useKeyOnGo()
    {
        auto &go = rooms_.find<QWidget>("cmdGo");
        if (!mayUseImport() || !go.isEnabled()) {
            return;
        }
        go.setFocus();
        const ImportRunSeen run = runNow();
        QTest::keyClick(&go, Qt::Key_Space);
        begin(run);
    }

    AllFiles allFiles_;
    QRandomGenerator random_;
    ImportRooms rooms_;
    ImportChoices choices_;
    std::optional<ImportRunSeen> run_;
    QMap<QString, QByteArray> world_; // every file that must be there
    QMap<int, QString> addresses_;
    Reading files_;
    Reading folders_;
    Reading sourceImage_;
    Reading targetImage_;
    QStringList listed_; // in File1
    QString selected_;   // of them; empty for the first
    bool isSelectionFree_ = false;
    bool isFailing_ = false;   // one of the next folders that are read
    bool mayBeUnread_ = false; // the end of the folder, which was gone before
    QString failure_;          // beginning of the line at the foot
    QString countText_; // NbF after a run that was aborted; empty when it is the number listed
    int copied_ = 0;
    std::pair<int, int> bar_{0, 1};
    bool isGoPressed_ = false;
    bool isGoMeant_ = false;
    QString goFor_;
    QString goInto_; // the storage folder then
    bool isFilePressed_ = false;
    QPoint filePressedAt_;
    QString pressedFile_;
};

} // namespace velmora::test
