// A user who does anything with mouse and keys on the browser's lists, cells, modes and search, by
// chance, while images come and vanish; the roads are told of each event.
#pragma once

#include "ModesWorld.h"
#include "support/ListKeys.h"

#include <utility>

namespace velmora::test {

class ModesHands : public ModesWorld
{
protected:
    // The lists.
    void clickGroup()
    {
        const int group = oneIn(4) ? below(velmora::kGroups) : below(3);
        tell([](ModesRule &rule) { rule.leave(); });
        clickRowOf(kGroups, group);
        tell([group](ModesRule &rule) { rule.chooseGroup(group); });
    }

    void keyGroup()
    {
        const Qt::Key key = pick(kListMoves);
        const int from = row(kGroups);
        const int to = rowAfter(key, from, velmora::kGroups);
        focusOn(kGroups);
        QTest::keyClick(&view(kGroups), key);
        if (to != from) {
            tell([to](ModesRule &rule) { rule.chooseGroup(to); });
        }
    }

    void clickCamera()
    {
        const int row = oneIn(4) ? below(kRows) : pick(kUsed).row;
        tell([](ModesRule &rule) { rule.leave(); });
        clickRowOf(kCameras, row);
        tell([row](ModesRule &rule) { rule.chooseCamera(row); });
    }

    void keyCamera()
    {
        const Qt::Key key = oneIn(4) ? Qt::Key_Insert : pick(kListMoves);
        const int to = rowAfter(key, row(kCameras), kRows);
        focusOn(kCameras);
        QTest::keyClick(&view(kCameras), key);
        tell([to](ModesRule &rule) { rule.chooseCamera(to); });
    }

    void clickImage()
    {
        const QString list = viewsList();
        const int rows = view(list).model()->rowCount();
        if (rows == 0) {
            return;
        }
        const int row = below(rows);
        tell([](ModesRule &rule) { rule.leave(); });
        clickRowOf(list, row);
        tell(
            [row](ModesRule &rule) { rule.isGroup ? rule.chooseRow(row) : rule.chooseImage(row); });
    }

    void keyImage()
    {
        const Qt::Key key = pick(kListMoves);
        focusOn(viewsList());
        QTest::keyClick(&view(viewsList()), key);
        tell([key](ModesRule &rule) {
            const int from = rule.isGroup ? rule.row : rule.index;
            const int to =
                rowAfter(key, from, rule.isGroup ? kRows : static_cast<int>(rule.list.size()));
            if (to != from) {
                rule.isGroup ? rule.chooseRow(to) : rule.chooseImage(to);
            }
        });
    }

    void keyZoom()
    {
        const bool isEnter = oneIn(2);
        if (isEnter) {
            focusOn(viewsList());
        }
        QTest::keyClick(isEnter ? static_cast<QWidget *>(&view(viewsList())) : &house_.window,
                        isEnter ? Qt::Key_Return : Qt::Key_Escape);
        tell([isEnter](ModesRule &rule) { isEnter ? rule.toggleZoom() : rule.hideZoom(); });
    }

    void keyRefresh()
    {
        QTest::keyClick(house_.window.windowHandle(), Qt::Key_F5);
        tell([](ModesRule &rule) { rule.refresh(); });
    }

    // The cells.
    void clickCell()
    {
        const int cell = below(kCells);
        if (isCovered(cell)) {
            clickZoom();
            return;
        }
        QTest::mouseClick(&house_.cell(cell), Qt::LeftButton);
        tell([cell](ModesRule &rule) { rule.clickCell(cell); });
    }

    void pressCellRight()
    {
        const int cell = below(kCells);
        if (isCovered(cell)) {
            return;
        }
        tell([cell](ModesRule &rule) { rule.zoomCell(cell); });
        QTest::mouseClick(&house_.cell(cell), Qt::RightButton);
    }

    void doubleClickCell()
    {
        const int cell = below(kCells);
        if (isCovered(cell)) {
            return;
        }
        const QString image = rule().isGroup ? QString() : rule().cells().at(cell);
        house_.opener.opened.clear();
        QWidget &widget = house_.cell(cell);
        QTest::mouseDClick(house_.window.windowHandle(), Qt::LeftButton, {},
                           widget.mapTo(&house_.window, widget.rect().center()));
        tell([cell](ModesRule &rule) {
            rule.clickCell(cell);
            rule.isScan = rule.isScan && rule.isGroup;
        });
        EXPECT_EQ(house_.opener.opened, image.isEmpty() ? QStringList() : QStringList{image});
    }

    void clickZoom()
    {
        QTest::mouseClick(&house_.find<QWidget>(QStringLiteral("ZoomImage")), Qt::LeftButton);
        tell([](ModesRule &rule) { rule.hideZoom(); });
    }

    // The modes.
    void clickAuto()
    {
        clickBox(QStringLiteral("cAuto"));
        tell([](ModesRule &rule) {
            rule.leave();
            rule.setAuto(!rule.isAuto);
        });
    }

    void clickView()
    {
        clickBox(QStringLiteral("cCamera"));
        tell([](ModesRule &rule) {
            rule.leave();
            rule.setGroupView(!rule.isGroup);
        });
        tell([at = now()](ModesRule &rule) { rule.isGroup ? rule.showNow(at) : void(); });
    }

    void clickScan()
    {
        clickBox(QStringLiteral("cScan"));
        tell([](ModesRule &rule) {
            rule.leave();
            rule.hideZoom();
            rule.isScan = !rule.isScan;
        });
    }

    void walk()
    {
        if (house_.find<QTimer>(QStringLiteral("TimerScan")).isActive()) {
            house_.fire(QStringLiteral("TimerScan"));
            tell([](ModesRule &rule) { rule.walk(); });
        }
    }

    void walkOn()
    {
        for (int steps = 1 + below(12); steps > 0; --steps) {
            walk();
            house_.settle();
        }
    }

    // The search.
    void type()
    {
        const bool isDate = oneIn(2);
        const QString text = isDate ? anyDate() : anyTime();
        if (rule().isGroup) {
            return;
        }
        auto &box =
            house_.find<QLineEdit>(isDate ? QStringLiteral("lDate") : QStringLiteral("lTime"));
        if (!box.hasFocus()) {
            box.setFocus(Qt::TabFocusReason);
            tell([](ModesRule &rule) { rule.leave(); });
        }
        QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(&box, text);
        tell([=](ModesRule &rule) {
            (isDate ? rule.date : rule.time) = text;
            rule.isTyped = true;
        });
    }

    void enterSearch()
    {
        type();
        QWidget *const box = QApplication::focusWidget();
        if (!rule().isGroup && box != nullptr) {
            QTest::keyClick(box, Qt::Key_Return);
            tell([](ModesRule &rule) { rule.search(); });
            checkOutcome();
        }
    }

    void checkOutcome()
    {
        using Found = ModesRule::Found;
        const QString text = house_.text(QStringLiteral("txtLog"));
        const QString day = rule().dayFound();
        const bool isDay = text == QStringLiteral("No image at \"%1\" (hours:minutes): this is the "
                                                  "first of %2")
                                       .arg(rule().time, day);
        const bool isNone =
            text == QStringLiteral("No image of %1 (day/month/year) in this list").arg(day);
        const bool isNoDate = text == QStringLiteral("\"%1\" is no date: day/month/year is meant, "
                                                     "as in 07/03/2006")
                                          .arg(rule().date);
        EXPECT_EQ(isDay, rule().found == Found::Day) << text.toStdString();
        EXPECT_EQ(isNone, rule().found == Found::None) << text.toStdString();
        EXPECT_EQ(isNoDate, rule().found == Found::NoDate) << text.toStdString();
    }

    void tab()
    {
        QWidget *const box = house_.window.focusWidget();
        if (box != nullptr && qobject_cast<QLineEdit *>(box) != nullptr) {
            QTest::keyClick(box, Qt::Key_Tab);
            tell([](ModesRule &rule) { rule.leave(); });
        }
    }

    // The images.
    void capture()
    {
        const CameraAddress camera = anyCamera();
        const QString url = rule().address(camera);
        if (url.isEmpty()) {
            return;
        }
        const QDateTime stamp = kFirstStamp.addSecs(++captures_);
        house_.source.answer(
            url, {picture().leftJustified(1000) + QByteArray::number(captures_),
                  QLocale::c().toString(stamp, QStringLiteral("ddd, dd MMM yyyy HH:mm:ss")) +
                      QStringLiteral(" GMT"),
                  {},
                  {},
                  {}});
        house_.house.load(camera);
        const QString name = stamp.toString(QStringLiteral("yyyyMMdd_HHmmss")) +
                             now().toString(QStringLiteral("ddHH")) + QStringLiteral(".jpg");
        files_.insert(rule().folderOf(camera) + u'/' + name);
        tell([=](ModesRule &rule) { rule.stored(camera, name); });
    }

    /// By another program.
    void addImage()
    {
        const QString path = anyFolder() + u'/' + anyName();
        if (!QFile::exists(path)) {
            write(path);
        }
    }

    void vanish()
    {
        if (files_.empty()) {
            return;
        }
        const QString path = *std::next(files_.begin(), below(static_cast<int>(files_.size())));
        QFile::remove(path);
        files_.erase(path);
        gone_.insert(path);
    }

    void vanishWhole()
    {
        const QString folder = rule().folderOf(anyCamera());
        if (oneIn(3) && folder != root()) {
            QDir(folder).removeRecursively();
            for (auto at = files_.begin(); at != files_.end();) {
                const bool isThere = at->startsWith(folder + u'/');
                isThere ? void(gone_.insert(*at)) : void();
                at = isThere ? files_.erase(at) : std::next(at);
            }
        }
    }

    void deleteImage()
    {
        focusOn(viewsList());
        const QString target = rule().selected();
        const bool isAsked = !target.isEmpty() && (rule().isGroup || QFileInfo::exists(target));
        QTest::keyClick(&view(viewsList()), Qt::Key_Delete);
        QMessageBox *const box = house_.question();
        EXPECT_EQ(box != nullptr, isAsked) << target.toStdString();
        if (box == nullptr) {
            return;
        }
        EXPECT_EQ(box->text(), QStringLiteral("Kill ") + QFileInfo(target).fileName());
        for (int events = below(3); events > 0; --events) {
            oneIn(2) ? walk() : oneIn(2) ? capture() : vanish();
            house_.settle();
        }
        answer(*box, target);
    }

    void answer(QMessageBox &box, const QString &target)
    {
        const bool isYes = oneIn(2);
        if (isYes && files_.erase(target) > 0) {
            gone_.insert(target);
        }
        QTest::mouseClick(box.button(isYes ? QMessageBox::Yes : QMessageBox::No), Qt::LeftButton);
        house_.settle();
        if (isYes) {
            tell([](ModesRule &rule) { rule.deleted(); });
        }
    }

    void clickRowOf(const QString &list, int row)
    {
        QTest::mouseClick(view(list).viewport(), Qt::LeftButton, {}, middle(list, row));
    }

private:
    QString anyDate()
    {
        static const QStringList kNone{QStringLiteral("31/02/2006"), QStringLiteral("7/3"),
                                       QStringLiteral("x"), QStringLiteral("7 marx 2006")};
        static const QStringList kWritten = [] {
            QStringList forms = ModesRule::writtenDays().keys();
            forms.sort();
            return forms;
        }();
        if (oneIn(5)) {
            return pick(kNone);
        }
        QString date = pick(kWritten);
        for (int tries = 0; tries < 20 && !kDays.contains(ModesRule::writtenDays().value(date));
             ++tries) {
            date = pick(kWritten);
        }
        return date;
    }

    QString anyTime()
    {
        static const QStringList kTimes{
            QStringLiteral("00:00"),    QStringLiteral("09:30"), QStringLiteral("14:05:10"),
            QStringLiteral("23:59:50"), QStringLiteral("0930"),  QStringLiteral("2"),
            QStringLiteral("16:00"),    QStringLiteral("12:12"), QStringLiteral("x")};
        return pick(kTimes);
    }

    // The enlarged image lies over the first nine.
    bool isCovered(int cell) { return rule().isZoomed && cell < kCells - 1; }

    void clickBox(const QString &name)
    {
        auto &box = house_.find<QWidget>(name);
        QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(8, box.height() / 2));
    }

    int captures_ = 0;
};

} // namespace velmora::test
