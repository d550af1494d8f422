// A user who does anything with mouse and keys in the main window that the live view has to do
// with, by chance.
#pragma once

#include "DroppedText.h"
#include "LiveReference.h"
#include "WindowHouse.h"
#include "support/StoredPictures.h"
#include "ui/CameraSheet.h"
#include "ui/PictureView.h"
#include "ui/Zoom.h"

#include <QClipboard>
#include <QDir>
#include <QMessageBox>
#include <QRandomGenerator>
#include <QTabBar>

#include <gtest/gtest.h>

#include <optional>

namespace velmora::test {

inline const QStringList kLiveUrls{
    QStringLiteral("http://a/1.jpg"), QStringLiteral("http://a/2.jpg"),
    QStringLiteral("http://b/1.png"), QStringLiteral("http://c"), QStringLiteral("rtsp://d/s")};

class LiveHands : public testing::Test
{
protected:
    static constexpr int kUsedGroups = 2;
    static constexpr int kUsedRows = 3;

    LiveHands()
    {
        another_.show();
        Interface &main = rooms_.window; // connected as the program does
        QObject::connect(&main, &Interface::zoomWanted, &zoom_, &Zoom::present);
        QObject::connect(&main, &Interface::sheetWanted, &sheet_, &CameraSheet::present);
        QObject::connect(&sheet_, &CameraSheet::addressChosen, &main, &Interface::fillAddress);
        QObject::connect(&sheet_, &CameraSheet::saved, &house_.page, &CameraPage::reread);
        for (int row = 0; row < kUsedRows; ++row) {
            QObject::connect(&box(row), &QLineEdit::textChanged, &another_,
                             [this, row](const QString &text) { change(row, text); });
        }
    }

    int below(int bound) { return static_cast<int>(random_.bounded(bound)); }

    bool oneIn(int chances) { return below(chances) == 0; }

    QString anyUrl() { return kLiveUrls.at(below(static_cast<int>(kLiveUrls.size()))); }

    CameraAddress anyCamera() { return {below(kUsedGroups), below(kUsedRows)}; }

    QLineEdit &box(int row) { return rooms_.find<QLineEdit>(QStringLiteral("Source%1").arg(row)); }

    QLineEdit &storageBox() { return rooms_.find<QLineEdit>(QStringLiteral("StRep")); }

    PictureView &picture(const QString &name) { return rooms_.find<PictureView>(name); }

    int group() { return rooms_.find<QTabBar>(QStringLiteral("Selecteur")).currentIndex(); }

    void activate(QWidget &window)
    {
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    bool mayUseMain()
    {
        if (!rooms_.window.isVisible()) {
            return false;
        }
        activate(rooms_.window);
        followFocus();
        return true;
    }

    void followFocus()
    {
        if (const auto row = rowWithFocus()) {
            taken_ = row;
        }
    }

    // The toolkit says that the text of a box is another one, and that did not come from a file.
    void change(int row, const QString &text)
    {
        current_ = row;
        typed_.insert(row);
        if (text != lastUrl_) {
            lastUrl_ = text;
            show(row, text);
        }
    }

    // A click or Enter in a box.
    void take(int row)
    {
        current_ = row;
        show(row, box(row).text());
    }

    void show(int row, const QString &url)
    {
        live_.show({group(), row}, url);
        began_ = url.isEmpty() ? began_ : storedUrl(row);
    }

    // Events.
    void clickBox()
    {
        if (mayUseMain()) {
            const int row = below(kUsedRows);
            QTest::mouseClick(&box(row), Qt::LeftButton);
            taken_ = row;
            take(row);
        }
    }

    int rowWithCursor()
    {
        for (int row = 0; row < kUsedRows; ++row) {
            if (box(row).hasFocus()) {
                return row;
            }
        }
        return -1;
    }

    void enterKey()
    {
        if (mayUseMain() && rowWithCursor() >= 0) {
            const int row = rowWithCursor();
            QTest::keyClick(&box(row), Qt::Key_Return);
            take(row);
        }
    }

    void paste()
    {
        if (mayUseMain() && rowWithCursor() >= 0) {
            QLineEdit &box = this->box(rowWithCursor());
            QGuiApplication::clipboard()->setText(anyUrl());
            QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(&box, oneIn(6) ? Qt::Key_Delete : Qt::Key_Shift);
            QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
        }
    }

    void typeLetter()
    {
        if (mayUseMain() && rowWithCursor() >= 0) {
            QLineEdit &box = this->box(rowWithCursor());
            QTest::keyClick(&box, Qt::Key_End);
            QTest::keyClick(&box, oneIn(2) ? Qt::Key_X : Qt::Key_Backspace);
        }
    }

    void empty()
    {
        if (mayUseMain() && rowWithCursor() >= 0) {
            QLineEdit &box = this->box(rowWithCursor());
            QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(&box, Qt::Key_Delete);
        }
    }

    // Two addresses, one a line, fill two rows after a question.
    void pasteLines()
    {
        if (!mayUseMain() || rowWithCursor() < 0 || rowWithCursor() == kUsedRows - 1) {
            return;
        }
        const int row = rowWithCursor();
        const QString first = anyUrl();
        const QString second = anyUrl();
        const QStringList stored{storedUrl(row), storedUrl(row + 1)};
        QGuiApplication::clipboard()->setText(first + u'\n' + second);
        QTest::keyClick(&box(row), Qt::Key_V, Qt::ControlModifier);
        auto *const question = rooms_.window.findChild<QMessageBox *>();
        ASSERT_NE(question, nullptr);
        const bool isYes = !oneIn(3);
        QTest::mouseClick(question->button(isYes ? QMessageBox::Yes : QMessageBox::No),
                          Qt::LeftButton);
        QCoreApplication::sendPostedEvents(question, QEvent::DeferredDelete);
        if (isYes) {
            give(row, stored.at(0), first);
            give(row + 1, stored.at(1), second);
            change(row, first);
        }
    }

    // Another address for the camera, or none.
    void saveInSheet()
    {
        if (!mayUseMain()) {
            return;
        }
        const int row = below(kUsedRows);
        box(row).setFocus(Qt::TabFocusReason);
        taken_ = row;
        QTest::keyClick(&box(row), Qt::Key_F4);
        ASSERT_TRUE(sheet_.isVisible());
        auto &address = *sheet_.findChild<QLineEdit *>(QStringLiteral("sheetAddress"));
        const QString before = address.text();
        const QString url = oneIn(5) ? QString() : anyUrl();
        address.selectAll();
        QTest::keyClick(&address, Qt::Key_Delete);
        QTest::keyClicks(&address, url);
        QTest::keyClick(&address, Qt::Key_Return);
        EXPECT_FALSE(sheet_.isVisible());
        give(row, before, url);
    }

    // Elsewhere than in the box.
    void give(int row, const QString &before, const QString &url)
    {
        typed_.insert(row);
        if (url != before) {
            live_.replace({group(), row});
        }
    }

    QString storedUrl(int row) { return house_.table.url({group(), row}); }

    void tabKey()
    {
        if (mayUseMain() && rowWithCursor() >= 0) {
            QTest::keyClick(&box(rowWithCursor()), Qt::Key_Tab);
        }
    }

    // From elsewhere, whichever window is active.
    void drop()
    {
        if (rooms_.window.isVisible()) {
            const int row = below(kUsedRows);
            dropText(box(row), anyUrl());
        }
    }

    void clickTab()
    {
        if (mayUseMain()) {
            const int group = below(kUsedGroups + 1);
            rooms_.selectTab(group);
            loaded();
        }
    }

    // The rows of a group were loaded.
    void loaded()
    {
        current_ = 0;
        typed_.clear();
        live_.clear();
        taken_ = rowWithFocus();
    }

    std::optional<int> rowWithFocus()
    {
        const QWidget *const focused = QApplication::focusWidget();
        for (int row = 0; focused != nullptr && row < kRows; ++row) {
            for (const QString &word :
                 {QStringLiteral("Source"), QStringLiteral("AutoDelay"), QStringLiteral("BestTime"),
                  QStringLiteral("EffM"), QStringLiteral("n")}) {
                if (focused->objectName() == word + QString::number(row)) {
                    return row;
                }
            }
        }
        return std::nullopt;
    }

    void hide()
    {
        if (mayUseMain() && QFileInfo::exists(storagePath())) {
            rooms_.click(QStringLiteral("Cache"));
            activate(another_);
        }
    }

    void bringUp()
    {
        rooms_.window.bringUp();
        activate(rooms_.window);
        loaded();
    }

    void otherWindow() { activate(another_); }

    void enterStorage()
    {
        if (mayUseMain()) {
            QTest::mouseClick(&storageBox(), Qt::LeftButton);
        }
    }

    void typeStorage()
    {
        if (mayUseMain() && storageBox().hasFocus()) {
            QGuiApplication::clipboard()->setText(oneIn(2) ? QStringLiteral("C:\\other")
                                                           : QStringLiteral("C:\\in"));
            QTest::keyClick(&storageBox(), Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(&storageBox(), Qt::Key_V, Qt::ControlModifier);
        }
    }

    void leaveStorage()
    {
        if (mayUseMain() && storageBox().hasFocus()) {
            QTest::keyClick(&storageBox(), oneIn(2) ? Qt::Key_Tab : Qt::Key_Return);
        }
    }

    void resize()
    {
        static const QList<QSize> sizes{{980, 760}, {1100, 860}, {1000, 900}};
        rooms_.window.resize(sizes.at(below(3)));
        QApplication::sendPostedEvents();
    }

    QString enlarged()
    {
        return zoom_.isVisible() ? zoom_.findChild<PictureView *>(QStringLiteral("iZoom"))->path()
                                 : QString();
    }

    void closeZoom()
    {
        if (zoom_.isVisible()) {
            QTest::mouseClick(zoom_.findChild<QWidget *>(QStringLiteral("iZoom")), Qt::LeftButton);
            EXPECT_FALSE(zoom_.isVisible());
        }
    }

    void clickTarget()
    {
        closeZoom();
        if (mayUseMain()) {
            const CameraAddress camera =
                live_.camera() ? live_.camera()->camera : CameraAddress{group(), current_};
            rooms_.click(QStringLiteral("iTarget"));
            rooms_.clock.advance(std::chrono::milliseconds{0});
            EXPECT_EQ(enlarged(), newest(camera));
        }
    }

    [[nodiscard]] QString storagePath() { return house_.storage.native(house_.storage.inForce()); }

    QString newest(CameraAddress camera)
    {
        const QString folder = house_.storage.cameraFolder(camera);
        const QStringList images =
            QDir(folder).entryList({QStringLiteral("*_??????????.*")}, QDir::Files, QDir::Name);
        return folder.isEmpty() || images.isEmpty() ? QString()
                                                    : folder + u'/' + images.constLast();
    }

    virtual LiveScript script(const QString &url) = 0;

    WindowHouse rooms_;
    CaptureHouse &house_ = rooms_.house;
    Zoom zoom_;
    CameraSheet sheet_{house_.settings, house_.view.trial()};
    QWidget another_;
    QRandomGenerator random_;
    LiveReference live_{{[this](const QString &url) { return script(url); },
                         [this](CameraAddress camera) { return newest(camera); },
                         [this] { return house_.storage.inForce(); },
                         [this] { return QFileInfo::exists(storagePath()); },
                         [this] { return rooms_.clock.monotonicNow(); }}};
    QString lastUrl_;
    QString began_;            // the stored address as the fetch began
    QSet<int> typed_;          // rows, since they were loaded
    int current_ = 0;          // row
    std::optional<int> taken_; // row that was clicked last or has the focus
};

} // namespace velmora::test
