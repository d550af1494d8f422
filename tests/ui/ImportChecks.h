// What must be so in the import's window and in every folder, at every instant and at rest.
#pragma once

#include "ImportWorld.h"

namespace velmora::test {

class ImportChecks : public ImportWorld
{
protected:
    // Files that came are whole copies, or the capture's; none is gone or another.
    void checkFiles()
    {
        const QMap<QString, QByteArray> now = everything();
        takeRenames(now);
        for (auto file = now.begin(); file != now.end(); ++file) {
            const auto before = world_.find(file.key());
            if (before == world_.end()) {
                disturb();
                checkNew(file.key(), file.value());
            } else {
                EXPECT_TRUE(before.value() == file.value()) << file.key().toStdString();
            }
        }
        for (auto file = world_.begin(); file != world_.end(); ++file) {
            EXPECT_TRUE(now.contains(file.key()) ||
                        isNamed(file.key(), std::exchange(deleted_, QString())))
                << file.key().toStdString();
        }
        world_ = now;
    }

    // None while a run goes through the names of its source.
    void takeRenames(const QMap<QString, QByteArray> &now)
    {
        QMap<QString, QByteArray> expected = world_;
        for (auto file = world_.begin(); file != world_.end(); ++file) {
            for (auto to = now.begin(); to != now.end() && !now.contains(file.key()); ++to) {
                if (!world_.contains(to.key()) && isRenamed(file.key(), to.key()) &&
                    file.value() == to.value()) {
                    EXPECT_TRUE(!run_ || run_->copies.isEmpty()) << to.key().toStdString();
                    expected.remove(file.key());
                    expected.insert(to.key(), to.value());
                    disturb();
                }
            }
        }
        if (run_ && expected != world_) {
            run_->isAlone = false;
        }
        world_ = expected;
    }

    void checkNew(const QString &path, const QByteArray &bytes)
    {
        hasCaptured_ = hasCaptured_ || captured_.contains(bytes);
        if (captured_.contains(bytes) && !(run_ && path.startsWith(run_->target + u'/'))) {
            return;
        }
        if (run_ && captured_.contains(bytes)) {
            run_->isAlone = false;
            run_->mayAbort = run_->mayAbort || run_->alone.mayRunOut;
        }
        const bool isWhole = known_.contains(bytes) || captured_.contains(bytes);
        EXPECT_TRUE(isWhole) << path.toStdString() << " of " << bytes.size();
        EXPECT_TRUE(run_.has_value()) << path.toStdString();
        if (run_) {
            EXPECT_EQ(QFileInfo(path).path(), run_->target);
            run_->copies.append(QFileInfo(path).fileName());
        }
    }

    void check() override
    {
        hasCaptured_ = false;
        checkFiles();
        isBrowserDue_ = isBrowserDue_ && !hasCaptured_;
        followGo();
        if (run_ && !isRunning()) {
            judge(*std::exchange(run_, std::nullopt));
        }
        EXPECT_EQ(isRunning(), run_.has_value());
        checkStored();
        if (choices_.isOpen) {
            checkControls();
        }
    }

    void followGo() { isGoMeant_ = isGoMeant_ && rooms_.find<QWidget>("cmdGo").isEnabled(); }

    // A run has ended.
    void judge(ImportRunSeen run)
    {
        const QString text = message() != nullptr ? message()->text() : QString();
        const bool isAborted = text == u"Copy aborted";
        bar_ = {rooms_.find<QProgressBar>("Progress").value(),
                rooms_.find<QProgressBar>("Progress").maximum()};
        copied_ = rooms_.find<QLabel>("ctr").text().toInt();
        if (run.isClosed) {
            EXPECT_TRUE(text.isEmpty() || choices_.isOpen) << text.toStdString();
        } else if (run.isAlone) {
            judgeAlone(run, text);
        } else {
            EXPECT_TRUE(!isAborted || run.mayAbort || run.isOvertaken);
            EXPECT_TRUE(!run.isOvertaken || isAborted) << text.toStdString();
            EXPECT_TRUE(isAborted || text == copiedText(copied_))
                << text.toStdString() << " ctr " << copied_;
        }
        failure_ = isAborted ? reasonOf(run) : QString();
        if (isAborted) {
            countText_ = copied_ > 0 ? rooms_.find<QLabel>("NbF").text() : countText_;
        } else if (!text.isEmpty()) {
            count();
            isBrowserDue_ = !isCapturing_ && !hasCaptured_;
        }
    }

    // How the line at the foot begins. It has no reason for a camera that lost its address.
    QString reasonOf(const ImportRunSeen &run)
    {
        const QString aborted = QStringLiteral("Copy aborted: ");
        if (run.isOvertaken) {
            return aborted + QStringLiteral("another storage folder is in use now");
        }
        const QString status = rooms_.find<QLabel>("lStatus").text();
        const QString free = status.startsWith(aborted) ? status : QString();
        EXPECT_TRUE(!free.isEmpty() || address(target()).isEmpty());
        return run.isAlone ? aborted + run.alone.culprit : free;
    }

    static QString copiedText(int copied)
    {
        return QString::number(copied) +
               (copied > 1 ? QStringLiteral(" files copied") : QStringLiteral(" file copied"));
    }

    void judgeAlone(const ImportRunSeen &run, const QString &text)
    {
        const RunOutcome &outcome = run.alone;
        const int copied = static_cast<int>(outcome.copied.size());
        QStringList names = outcome.copiedTo;
        QStringList came = run.copies;
        names.sort();
        came.sort();
        EXPECT_EQ(came, names);
        EXPECT_EQ(text, outcome.isAborted ? QStringLiteral("Copy aborted") : copiedText(copied));
        EXPECT_EQ(copied_, copied);
        EXPECT_EQ(bar_.first, copied);
        if (outcome.isAborted && copied > 0 && run.isCounted) {
            EXPECT_EQ(rooms_.find<QLabel>("NbF").text(),
                      QString::number(run.captions.trimmed().toInt() - outcome.collisions));
        }
    }

    void checkStored()
    {
        for (auto value = choices_.stored.begin(); value != choices_.stored.end(); ++value) {
            EXPECT_EQ(house().settings.read(u"Control", value.key()), value.value())
                << value.key().toStdString();
        }
    }

    // True at every instant.
    void checkControls()
    {
        const bool isOn = !run_;
        for (const char *const name : {"Drive1", "Dir1", "Filtre", "Cam", "Lien"}) {
            EXPECT_EQ(rooms_.find<QWidget>(name).isEnabled(), isOn) << name;
        }
        EXPECT_TRUE(rooms_.find<QWidget>("cmdQuit").isEnabled());
        EXPECT_EQ(rooms_.find<QComboBox>("Drive1").currentText(), choices_.drive);
        EXPECT_EQ(rooms_.find<QLineEdit>("Filtre").text(), choices_.filter);
        EXPECT_EQ(rooms_.find<QComboBox>("Cam").currentIndex(), choices_.group);
        EXPECT_EQ(rooms_.find<QComboBox>("Lien").currentIndex(), choices_.row);
        checkButton();
    }

    void checkButton()
    {
        auto &go = rooms_.find<QWidget>("cmdGo");
        const bool hasAddress = !address(target()).isEmpty();
        const bool isEdited = house().storage.isBeingEdited();
        EXPECT_EQ(go.isEnabled(), !run_ && hasAddress && !isEdited);
        const QString status = rooms_.find<QLabel>("lStatus").text();
        const QString why = !hasAddress ? QStringLiteral("Camera %1:%2 has no address")
                                              .arg(choices_.group)
                                              .arg(choices_.row)
                            : isEdited ? QStringLiteral("The storage folder is being edited")
                                       : QString();
        const QString meant = !failure_.isEmpty() ? failure_ : run_ ? QString() : why;
        const bool isUnread = mayBeUnread_ && status.startsWith(u"the folder could not be read");
        EXPECT_TRUE(meant.isEmpty() ? status.isEmpty() || isUnread : status.startsWith(meant))
            << status.toStdString() << " for " << meant.toStdString();
        const QString tip = go.isEnabled() ? QStringLiteral("Copy files")
                            : run_         ? QStringLiteral("Files are being copied")
                                           : why;
        EXPECT_TRUE(go.toolTip().startsWith(tip)) << go.toolTip().toStdString();
        if (run_) {
            EXPECT_LE(rooms_.find<QLabel>("ctr").text().toInt(), run_->copies.size());
        }
    }

    // All that was begun is done, except a run that waits for the storage box.
    void checkAtRest()
    {
        EXPECT_TRUE(house().scope.running() == 0 || house().storage.isBeingEdited());
        EXPECT_TRUE(!run_ || house().storage.isBeingEdited());
        if (!choices_.isOpen) {
            return;
        }
        checkFolders();
        checkFileList();
        checkSource();
        checkTarget();
        checkNumbers();
        checkBrowser();
        isStirred_ = false;
    }

    QStringList shown(const char *name)
    {
        QStringList names;
        for (int row = 0; row < list(name).model()->rowCount(); ++row) {
            names.append(list(name).model()->index(row, 0).data().toString());
        }
        return names;
    }

    void checkFolders()
    {
        const auto levels = openRow() + 1;
        const QStringList names = shown("Dir1");
        QStringList open = choices_.folder.split(u'\\', Qt::SkipEmptyParts);
        open.first() += u'\\';
        EXPECT_EQ(names.first(levels), open);
        if (const Reading read = std::exchange(folders_, {}); read.isDue && !read.isDisturbed) {
            EXPECT_EQ(withoutMade(names.sliced(levels)),
                      withoutMade(subFoldersOf(native(choices_.folder))));
        }
    }

    // The program makes some when it needs them: its own "tmp", and those of cameras on show.
    static QStringList withoutMade(QStringList folders)
    {
        folders.removeIf(
            [](const QString &name) { return name == u"tmp" || name.startsWith(u"http"); });
        return folders;
    }

    void checkFileList()
    {
        const QStringList names = shown("File1");
        const Reading read = std::exchange(files_, {});
        if (read.isDue && !read.isDisturbed) {
            EXPECT_EQ(names, wantedFiles(native(choices_.folder), choices_.filter))
                << choices_.filter.toStdString() << " in " << choices_.folder.toStdString();
        } else if (!read.isDue) {
            EXPECT_EQ(names, listed_);
        }
        listed_ = names;
        if (read.isDisturbed && names != wantedFiles(native(choices_.folder), choices_.filter) &&
            !isStirred_) {
            // That, or what keeps the button off, or the last run's reason.
            EXPECT_NE(rooms_.find<QLabel>("lStatus").text(), QString());
        }
        if (read.isDue) {
            const QString shown = list("File1").currentIndex().data().toString();
            isSelectionFree_ = isSelectionFree_ || read.isDisturbed;
            selected_ = std::exchange(isSelectionFree_, false) ? shown
                        : names.contains(selected_)            ? selected_
                                                               : names.value(0);
            sourceImage_ = {true, read.isDisturbed};
        }
        if (!isFilePressed_) {
            EXPECT_EQ(list("File1").currentIndex().data().toString(), selected_);
        }
    }

    static QString pictureAt(const QString &path)
    {
        return !path.isEmpty() && isPicture(bytesOf(path)) ? path : QString();
    }

    void checkSource()
    {
        const QString path = rooms_.find<QWidget>("iSource").accessibleDescription();
        const QString selected =
            selected_.isEmpty() ? QString() : native(choices_.folder) + u'/' + selected_;
        if (const Reading read = std::exchange(sourceImage_, {}); read.isDue && !read.isDisturbed) {
            EXPECT_EQ(path, pictureAt(selected)) << selected.toStdString();
        }
        EXPECT_TRUE(path.isEmpty() || path == selected) << path.toStdString();
    }

    // Whatever became of its file since it was chosen, which may be unknown.
    void checkTarget()
    {
        const QString path = rooms_.find<QWidget>("iTarget").accessibleDescription();
        const QString first = firstStored(targetFolder(inForce()));
        const Reading read = std::exchange(targetImage_, {});
        const bool mayBeNew = std::exchange(mayLookAgain_, false) && target_.isEmpty();
        isTargetFree_ = read.isDue ? read.isDisturbed : isTargetFree_ || mayBeNew;
        if (read.isDue && !read.isDisturbed) {
            EXPECT_EQ(path, pictureAt(first));
            target_ = first;
        } else if (isTargetFree_ && QFileInfo(path).path() == targetFolder(inForce())) {
            target_ = path;
            isTargetFree_ = false;
        } else if (!read.isDue) {
            EXPECT_TRUE(path == target_ || path.isEmpty()) << path.toStdString();
            EXPECT_TRUE(isStirred_ || path == shownTarget_ || path == pictureAt(target_));
        }
        shownTarget_ = path;
    }

    void checkNumbers()
    {
        if (run_) {
            return;
        }
        const QString number =
            listed_.isEmpty() ? QStringLiteral("0") : u' ' + QString::number(listed_.size());
        EXPECT_EQ(rooms_.find<QLabel>("NbF").text(), countText_.isEmpty() ? number : countText_);
        EXPECT_EQ(rooms_.find<QLabel>("ctr").text(), QString::number(copied_));
        const auto &bar = rooms_.find<QProgressBar>("Progress");
        EXPECT_EQ(std::pair(bar.value(), bar.maximum()), bar_);
    }

    // After a run it has read its folder again: the storage folder for a row without an address.
    void checkBrowser()
    {
        if (!std::exchange(isBrowserDue_, false) || !house().storage.isUsable() ||
            !inBrowser("LstDir").isVisible()) {
            return;
        }
        const CameraAddress camera = rooms_.rooms.data.state.camera();
        QStringList names;
        for (const QString &name :
             wantedFiles(native(inForce()) + u'/' + encodedAddress(address(camera)), QString())) {
            if (name.startsWith(u"20")) {
                names.append(name);
            }
        }
        QStringList listed;
        const QAbstractItemModel &model = *inBrowser("LstDir").model();
        for (int row = 0; row < model.rowCount(); ++row) {
            listed.append(model.index(row, 0).data().toString());
        }
        EXPECT_EQ(listed, names);
    }

private:
    QString target_;
    bool isTargetFree_ = false;
    QString shownTarget_;      // that file, or none when it is no picture
    bool hasCaptured_ = false; // since the last check
};

} // namespace velmora::test
