// A user who does anything with mouse and keys in a camera's sheet, by chance, and what the rules
// of the sheet make of it.
#pragma once

#include "SheetReference.h"
#include "WindowHouse.h"
#include "cameras/CameraChoices.h"
#include "support/StoredPictures.h"
#include "ui/CameraSheet.h"
#include "ui/PictureView.h"

#include <QClipboard>
#include <QComboBox>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSpinBox>

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

namespace velmora::test {

inline const QStringList kSheetUrls{
    QStringLiteral("http://a/1.jpg"), QStringLiteral("http://a/2.jpg"),
    QStringLiteral("http://b/1.jpg"), QStringLiteral("http://b/2.png"),
    QStringLiteral("http://c/x.jpg")};

inline const QString kForeign = QStringLiteral("日本"); // to the settings file

/// A test of a camera that is under way.
struct SheetTrial
{
    CameraAddress camera;
    SheetContent asked;
    ScriptedReply reply;
    std::chrono::milliseconds ends{0}; // on the test's clock
};

class SheetHands : public testing::Test
{
protected:
    SheetHands() { another_.show(); }

    static constexpr int kUsedGroups = 2;
    static constexpr int kUsedRows = 3;

    int below(int bound) { return static_cast<int>(random_.bounded(bound)); }

    bool oneIn(int chances) { return below(chances) == 0; }

    QString anyOf(const QStringList &texts)
    {
        return texts.at(below(static_cast<int>(texts.size())));
    }

    QString anyUrl() { return anyOf(kSheetUrls); }

    CameraAddress anyCamera()
    {
        return rules_.isOpen() && oneIn(2) ? rules_.camera()
                                           : CameraAddress{below(kUsedGroups), below(kUsedRows)};
    }

    template <typename Control>
    Control &in(const QString &name)
    {
        auto *const control = sheet_.findChild<Control *>(name);
        if (control == nullptr) {
            throw std::runtime_error("no control " + name.toStdString());
        }
        return *control;
    }

    QLineEdit &field(int number)
    {
        return in<QLineEdit>(
            QStringList{QStringLiteral("sheetName"), QStringLiteral("sheetAddress"),
                        QStringLiteral("sheetUser"), QStringLiteral("sheetPassword")}
                .at(number));
    }

    void activate(QWidget &window)
    {
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    bool mayUseSheet()
    {
        if (sheet_.isVisible()) {
            activate(sheet_);
        }
        return sheet_.isVisible();
    }

    // Events.
    void open()
    {
        const CameraAddress camera = anyCamera();
        if (!rooms_.window.isVisible()) {
            rooms_.window.bringUp();
        }
        activate(rooms_.window);
        rooms_.selectTab(camera.group);
        auto &box = rooms_.find<QLineEdit>(QStringLiteral("Source%1").arg(camera.row));
        if (oneIn(2)) {
            QTest::mouseClick(&box, Qt::LeftButton);
        } else {
            box.setFocus(Qt::TabFocusReason);
        }
        QTest::keyClick(&box, Qt::Key_F4);
        QCoreApplication::processEvents();
        if (rules_.present(camera)) {
            endTrial();
            result_.clear();
            difference_.clear();
            notice_ = QStringLiteral("no picture yet");
        }
    }

    QString anyText(int field)
    {
        if (oneIn(12)) {
            return kForeign;
        }
        if (field == 1) {
            return oneIn(10)  ? QStringLiteral("http://a/") + QString(260, u'x')
                   : oneIn(6) ? QString()
                   : oneIn(6) ? u' ' + anyUrl() + u' '
                              : anyUrl();
        }
        return anyOf({QString(), QStringLiteral("Yard"), QStringLiteral(" two words "),
                      QStringLiteral("\"quoted\""), QStringLiteral("é;=[x]"), QString(70, u'n')});
    }

    void type()
    {
        if (!mayUseSheet()) {
            return;
        }
        const int number = below(4);
        QLineEdit &box = field(number);
        const QString before = box.text();
        const QString text = anyText(number);
        QTest::mouseClick(&box, Qt::LeftButton);
        QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&box, Qt::Key_Delete);
        const bool hasKeys = std::ranges::all_of(text, [](QChar letter) { return letter < u'~'; });
        if (!hasKeys || oneIn(2)) {
            QGuiApplication::clipboard()->setText(text);
            QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
        } else {
            QTest::keyClicks(&box, text);
        }
        if (!before.isEmpty() || !text.isEmpty()) {
            constexpr int kLongestName = 60;
            rules_.type(number, number == 0 ? text.left(kLongestName) : text);
        }
    }

    void takeBack()
    {
        if (mayUseSheet()) {
            const int number = below(4);
            const QString before = field(number).text();
            QTest::keyClick(&field(number), Qt::Key_End);
            QTest::keyClick(&field(number), Qt::Key_Backspace);
            if (!before.isEmpty()) {
                rules_.type(number, before.chopped(1));
            }
        }
    }

    void chooseKeep()
    {
        if (mayUseSheet()) {
            auto &box = in<QComboBox>(QStringLiteral("sheetKeep"));
            const int row = below(3);
            box.setFocus(Qt::TabFocusReason);
            QTest::keyClick(&box, Qt::Key_Home);
            for (int i = 0; i < row; ++i) {
                QTest::keyClick(&box, Qt::Key_Down);
            }
            rules_.chooseKeep(row);
        }
    }

    void choosePercent()
    {
        auto &box = in<QSpinBox>(QStringLiteral("sheetPercent"));
        if (!mayUseSheet() || !box.isEnabled()) {
            return;
        }
        box.setFocus(Qt::TabFocusReason);
        if (oneIn(3)) {
            constexpr int kMost = 100;
            QTest::keyClick(&box, Qt::Key_Up);
            rules_.choosePercent(std::min(kMost, rules_.shown().percent + 1));
            return;
        }
        const QString digits = anyOf({QStringLiteral("1"), QStringLiteral("40"),
                                      QStringLiteral("100"), QStringLiteral("7")});
        QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(&box, digits);
        rules_.choosePercent(digits.toInt());
    }

    void test()
    {
        if (!mayUseSheet()) {
            return;
        }
        auto &button = in<QPushButton>(QStringLiteral("sheetTest"));
        const int presses = oneIn(4) ? 2 : 1;
        for (int i = 0; i < presses; ++i) {
            if (oneIn(3)) {
                button.setFocus(Qt::TabFocusReason);
                QTest::keyClick(&button, Qt::Key_Space);
            } else {
                QTest::mouseClick(&button, Qt::LeftButton);
            }
            beginTrial();
        }
    }

    void save()
    {
        if (!mayUseSheet()) {
            return;
        }
        if (oneIn(3)) {
            QTest::keyClick(&field(below(4)), Qt::Key_Return);
        } else {
            QTest::mouseClick(&in<QPushButton>(QStringLiteral("sheetSave")), Qt::LeftButton);
        }
        rules_.save();
        if (!rules_.isOpen()) {
            endTrial();
        }
    }

    void cancel()
    {
        if (!mayUseSheet()) {
            return;
        }
        const int way = below(3);
        if (way == 0) {
            QTest::mouseClick(&in<QPushButton>(QStringLiteral("sheetCancel")), Qt::LeftButton);
        } else if (way == 1) {
            QTest::keyClick(sheet_.windowHandle(), Qt::Key_Escape);
        } else {
            sheet_.close();
        }
        rules_.close();
        endTrial();
    }

    virtual ScriptedReply reply(const QString &url) = 0; // that it gives now

    void beginTrial()
    {
        constexpr std::chrono::milliseconds kLimit{5000};
        const SheetContent asked = rules_.shown().asMeant();
        const ScriptedReply now = reply(asked.url);
        const auto ends = rooms_.clock.monotonicNow() + std::min(now.delay, kLimit);
        trial_ = SheetTrial{rules_.camera(), asked, now, ends};
        result_ = QStringLiteral("Fetching…");
    }

    void endTrial() { trial_.reset(); }

    WindowHouse rooms_;
    CaptureHouse &house_ = rooms_.house;
    CameraSheet sheet_{house_.settings, house_.view.trial()};
    QWidget another_;
    QRandomGenerator random_;
    SheetReference rules_;
    std::optional<SheetTrial> trial_;
    QString result_;
    QString difference_; // how its label begins
    QString notice_;     // instead of a picture
};

} // namespace velmora::test
