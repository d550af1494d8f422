// Whatever a user and the program's own events do to the browser, in any order: what is highlighted
// is selected, framed, counted and acted on by keys. Sequences of random events, each followed by a
// check of the window. VELMORA_SEQUENCES sets their number, VELMORA_FIRST_SEQUENCE the first of
// them.
#include "SelectionTest.h"

#include <QRandomGenerator>

namespace velmora::test {
namespace {

constexpr int kEvents = 50;
constexpr int kSequences = 60;

int numberFrom(const char *variable, int otherwise)
{
    bool isNumber = false;
    const int number = qEnvironmentVariableIntValue(variable, &isNumber);
    return isNumber ? number : otherwise;
}

class SelectionModel : public SelectionTest
{
protected:
    SelectionModel()
    {
        house_.house.settings.write(u"Control", u"Vitesse", 1000);
        for (const int group : {0, 1}) {
            house_.house.settings.write(QStringLiteral("Liste%1").arg(group), u"LstAct", 1);
        }
        const QByteArray picture = pictureBytes(Qt::blue, {16, 12});
        addCamera({0, 0}, 14, picture);
        addCamera({0, 1}, 3, picture);
        addCamera({0, 4}, 0, picture);
        addCamera({1, 0}, 6, picture);
        addCamera({1, 2}, 11, picture);
        house_.open();
    }

    void addCamera(CameraAddress camera, int images, const QByteArray &picture)
    {
        house_.house.addCamera(camera, cameraUrl(camera));
        for (int i = 0; i < images; ++i) {
            house_.house.putImage(camera, storedName(i), picture);
        }
        names_ = std::max(names_, images);
    }

    void play(int sequence)
    {
        random_.seed(static_cast<quint32>(sequence));
        for (int event = 0; event < kEvents && !HasFailure(); ++event) {
            const int kind = below(static_cast<int>(kKinds.size()));
            done_.append(QString::fromLatin1(kKinds.at(kind).name));
            (this->*kKinds.at(kind).run)();
            if (below(3) > 0) {
                house_.settle();
                SCOPED_TRACE(("sequence " + std::to_string(sequence) + ": " +
                              done_.join(QStringLiteral(", ")).toStdString()));
                lookAtRest();
            } else {
                look();
            }
        }
        letGo();
        done_.clear();
    }

    bool HasFailure() { return testing::Test::HasFailure(); }

private:
    struct Kind
    {
        const char *name;
        void (SelectionModel::*run)();
    };

    int below(int bound) { return static_cast<int>(random_.bounded(bound)); }

    bool isGroupView() { return house_.find<QCheckBox>(QStringLiteral("cCamera")).isChecked(); }

    QString anyList()
    {
        const QString ofView = isGroupView() ? kRowsOfGroup : kImages;
        return QStringList{kGroups, kCameras, ofView, ofView, ofView}.at(below(5));
    }

    QPoint anyPlace(const QString &list)
    {
        const QRect area = view(list).viewport()->rect();
        return {below(area.width()), below(area.height())};
    }

    Qt::MouseButton anyButton() { return below(4) == 0 ? Qt::RightButton : Qt::LeftButton; }

    Qt::KeyboardModifiers anyModifiers()
    {
        return below(5) == 0 ? Qt::ControlModifier : Qt::NoModifier;
    }

    // The button last pressed is released, where it was pressed or elsewhere.
    void letGo()
    {
        if (pressed_ == nullptr) {
            return;
        }
        const QPoint at = below(3) == 0 ? pressedAt_ + QPoint(-400, 7) : pressedAt_;
        QTest::mouseRelease(std::exchange(pressed_, nullptr), button_, {}, at);
        pressedCell_ = -1;
    }

    void pressAt(QWidget *widget, QPoint at)
    {
        letGo();
        pressed_ = widget;
        pressedAt_ = at;
        button_ = anyButton();
        QTest::mousePress(widget, button_, anyModifiers(), at);
    }

    void pressRow()
    {
        const QString list = anyList();
        pressAt(view(list).viewport(), anyPlace(list));
    }

    void pressCell()
    {
        letGo();
        pressedCell_ = below(kCells);
        pressAt(&house_.cell(pressedCell_), QPoint(20, 20));
    }

    void clickRow()
    {
        pressRow();
        letGo();
    }

    void clickCell()
    {
        pressCell();
        letGo();
    }

    void doubleClickRow()
    {
        letGo();
        const QString list = anyList();
        QTest::mouseDClick(view(list).viewport(), Qt::LeftButton, {}, anyPlace(list));
    }

    void key()
    {
        static const QList<Qt::Key> kKeys{Qt::Key_Up,     Qt::Key_Down,   Qt::Key_Home,
                                          Qt::Key_End,    Qt::Key_PageUp, Qt::Key_PageDown,
                                          Qt::Key_Return, Qt::Key_2,      Qt::Key_Shift,
                                          Qt::Key_Down,   Qt::Key_Insert, Qt::Key_Escape};
        QTest::keyClick(&view(anyList()), kKeys.at(below(static_cast<int>(kKeys.size()))),
                        anyModifiers());
    }

    void wheel()
    {
        QWidget *const viewport = view(anyList()).viewport();
        const QPointF at = viewport->rect().center();
        QWheelEvent event(at, viewport->mapToGlobal(at), {}, {0, below(2) == 0 ? 120 : -120},
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(viewport, &event);
    }

    void focus() { view(anyList()).setFocus(Qt::TabFocusReason); }

    void otherWindow()
    {
        QWidget *const next = house_.filmWindow.isVisible() && below(2) == 0
                                  ? static_cast<QWidget *>(&house_.filmWindow)
                                  : &other_;
        other_.show();
        next->activateWindow();
        QCoreApplication::processEvents();
        house_.window.activateWindow();
        QCoreApplication::processEvents();
    }

    void type()
    {
        if (!isGroupView()) {
            house_.retype(QStringLiteral("lTime"),
                          QStringLiteral("00:00:%1").arg(below(20), 2, 10, QLatin1Char('0')));
        }
    }

    void mode()
    {
        house_
            .find<QCheckBox>(QStringList{QStringLiteral("cCamera"), QStringLiteral("cCamera"),
                                         QStringLiteral("cAuto")}
                                 .at(below(3)))
            .click();
    }

    void film()
    {
        house_.find<QAbstractButton>(QStringLiteral("bFilm")).click();
        house_.settle();
        house_.holdFilm();
    }

    void tick()
    {
        if (house_.filmWindow.isVisible()) {
            house_.fire(QStringLiteral("cine"));
        }
    }

    void scan() { house_.fire(QStringLiteral("TimerScan")); }

    void storedImage()
    {
        const CameraAddress camera = cameras_.at(below(static_cast<int>(cameras_.size())));
        house_.house.putImage(camera, storedName(++names_), pictureBytes(Qt::red, {16, 12}));
        house_.browser.follow(camera);
    }

    void vanishedImage()
    {
        const CameraAddress camera = cameras_.at(below(static_cast<int>(cameras_.size())));
        QFile::remove(house_.imagePath(camera, storedName(below(names_))));
    }

    void refresh() { QTest::keyClick(house_.window.windowHandle(), Qt::Key_F5); }

    void imported() { house_.browser.chooseCameraAgain(); }

    // True at every instant, even while a folder is being read.
    void look()
    {
        for (const QString &list : {kGroups, kCameras, kImages, kRowsOfGroup}) {
            const int current = row(list);
            EXPECT_EQ(highlighted(list), current < 0 ? QList<int>() : QList<int>{current})
                << list.toStdString();
        }
        EXPECT_EQ(row(kImages), house_.data.files.ListIndex());
        EXPECT_EQ(row(kRowsOfGroup), house_.browser.face().cameraRow);
        lookAtFrame();
    }

    // The cell of the selected entry of the view's list; -1 for none.
    int selectedCell()
    {
        if (isGroupView()) {
            return row(kRowsOfGroup);
        }
        return row(kImages) < 0 ? -1 : house_.data.state.CadreActif();
    }

    // Without the frame of a cell being pressed, besides which the selected one keeps its own.
    QList<int> frames()
    {
        QList<int> cells = house_.framed();
        if (pressedCell_ != selectedCell()) {
            cells.removeOne(pressedCell_);
        }
        return cells;
    }

    void lookAtFrame()
    {
        if (frames().isEmpty()) {
            return;
        }
        EXPECT_EQ(frames(), QList<int>{selectedCell()});
        if (!isGroupView()) {
            EXPECT_EQ(house_.data.sheet.image(selectedCell()), house_.data.files.selected());
        }
    }

    void lookAtRest()
    {
        look();
        EXPECT_EQ(row(kGroups), house_.data.state.camera().group);
        EXPECT_EQ(row(kCameras), house_.data.state.camera().row);
        if (isGroupView()) {
            lookAtGroup();
        } else {
            lookAtImages();
        }
        house_.settle();
    }

    void lookAtGroup()
    {
        const int selected = row(kRowsOfGroup);
        EXPECT_EQ(view(kRowsOfGroup).model()->rowCount(), kRows);
        if (selected < 0) {
            const bool isCount = position() == QString::number(house_.data.files.count());
            EXPECT_TRUE(position().isEmpty() || isCount); // the film button counts its images
            EXPECT_EQ(frames(), QList<int>());
            EXPECT_EQ(targetOfDelete(kRowsOfGroup), QString());
            return;
        }
        EXPECT_EQ(frames(), QList<int>{selected});
        EXPECT_EQ(row(kCameras), selected);
        EXPECT_EQ(position(), QString::number(house_.data.files.count()));
        EXPECT_EQ(targetOfDelete(kRowsOfGroup),
                  view(kRowsOfGroup).model()->index(selected, 0).data().toString().trimmed());
    }

    void lookAtImages()
    {
        const int selected = row(kImages);
        const int count = view(kImages).model()->rowCount();
        EXPECT_EQ(position(), count == 0 ? QStringLiteral("0")
                                         : QStringLiteral("%1 / %2").arg(selected + 1).arg(count));
        EXPECT_EQ(selected < 0, count == 0);
        EXPECT_EQ(isFilmEnabled(), count > 0);
        EXPECT_EQ(frames().size(), count > 0 ? 1 : 0);
        const QString target = targetOfDelete(kImages); // none for a file that is gone
        EXPECT_TRUE(target.isEmpty() || target == listed(selected));
    }

    static const QList<Kind> kKinds;

    const QList<CameraAddress> cameras_{{0, 0}, {0, 1}, {0, 4}, {1, 0}, {1, 2}};
    QRandomGenerator random_;
    QStringList done_;
    QWidget other_;
    QWidget *pressed_ = nullptr;
    QPoint pressedAt_;
    Qt::MouseButton button_ = Qt::LeftButton;
    int pressedCell_ = -1;
    int names_ = 0;
};

const QList<SelectionModel::Kind> SelectionModel::kKinds{
    {"press a row", &SelectionModel::pressRow},
    {"press a row", &SelectionModel::pressRow},
    {"let go", &SelectionModel::letGo},
    {"let go", &SelectionModel::letGo},
    {"press a cell", &SelectionModel::pressCell},
    {"click a row", &SelectionModel::clickRow},
    {"click a row", &SelectionModel::clickRow},
    {"click a cell", &SelectionModel::clickCell},
    {"double click a row", &SelectionModel::doubleClickRow},
    {"key", &SelectionModel::key},
    {"key", &SelectionModel::key},
    {"key", &SelectionModel::key},
    {"wheel", &SelectionModel::wheel},
    {"focus", &SelectionModel::focus},
    {"other window", &SelectionModel::otherWindow},
    {"type", &SelectionModel::type},
    {"mode", &SelectionModel::mode},
    {"film", &SelectionModel::film},
    {"tick", &SelectionModel::tick},
    {"scan", &SelectionModel::scan},
    {"stored image", &SelectionModel::storedImage},
    {"vanished image", &SelectionModel::vanishedImage},
    {"refresh", &SelectionModel::refresh},
    {"import", &SelectionModel::imported}};

TEST_F(SelectionModel, HoldsAfterEveryEventOfRandomSequences)
{
    const int first = numberFrom("VELMORA_FIRST_SEQUENCE", 0);
    const int last = first + numberFrom("VELMORA_SEQUENCES", kSequences);
    for (int sequence = first; sequence < last && !HasFailure(); ++sequence) {
        play(sequence);
    }
}

} // namespace
} // namespace velmora::test
