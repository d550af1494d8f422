// The same user in a hurry: the folders are slow to read, and nothing waits for what was asked for
// before.
#pragma once

#include "ModesWindows.h"
#include "support/ListKeys.h"
#include "support/Sequences.h"

namespace velmora::test {

class HurriedHands : public ModesWindows
{
protected:
    /// Several events of these kinds.
    template <typename Kinds, typename Run>
    void hurry(const Kinds &kinds, Run run)
    {
        focusOn(viewsList()); // what was typed is searched for
        house_.settle();
        hasStored_ = false;
        hasLeft_ = false;
        hasChosen_ = false;
        roads_.beginHurry();
        house_.busy.setCost(std::chrono::milliseconds{10});
        for (int events = 2 + below(3); events > 0; --events) {
            run(anyOfKinds(kinds, [this](int bound) { return below(bound); }));
            hasLeft_ = hasLeft_ || isLeft();
            for (int turns = below(4); turns > 0; --turns) {
                QCoreApplication::processEvents();
            }
            toFront(house_.window);
        }
        house_.settle();
        house_.busy.setCost(std::chrono::milliseconds{0});
        roads_.endHurry(hasStored_, hasChosen_, kDays);
    }

    void hurriedCamera()
    {
        hasChosen_ = true;
        oneIn(2) ? clickCamera() : keyCamera();
    }

    // The button, and the list that it plays, may still be those of what was on show before.
    void hurriedFilm()
    {
        auto &button = house_.find<QWidget>(QStringLiteral("bFilm"));
        if (!button.isEnabled()) {
            return;
        }
        QTest::mouseClick(&button, Qt::LeftButton);
        const bool isSure = std::ranges::all_of(roads_.all(), &ModesRule::isFilmEnabled) &&
                            roads_.begun().isFilmEnabled;
        tell([](ModesRule &rule) { rule.pressEnabledFilm(); },
             [isSure](const ModesRule &) { return isSure; });
        if (!isSure) {
            tell([](ModesRule &rule) { rule.openFilm(); }, [](const ModesRule &) { return false; });
        }
    }

    void hurriedWalk()
    {
        if (house_.find<QTimer>(QStringLiteral("TimerScan")).isActive()) {
            house_.fire(QStringLiteral("TimerScan"));
            tell([](ModesRule &rule) { rule.walk(); }, [](const ModesRule &) { return false; });
        }
    }

    // What is on show may be gone by the time that all has been read.
    void hurriedImage()
    {
        if (!view(kImages).isVisible()) {
            hurriedRow();
            return;
        }
        const int from = row(kImages);
        const bool isKey = oneIn(2);
        const int cell = below(kCells);
        const Qt::Key key = pick(kListMoves);
        const int to = rowAfter(key, from, view(kImages).model()->rowCount());
        const QString name = !isKey       ? sheet().image(cell).name
                             : to == from ? QString()
                                          : view(kImages).model()->index(to, 0).data().toString();
        if (isKey) {
            QTest::keyClick(&view(kImages), key);
        } else if (!house_.find<QWidget>(QStringLiteral("ZoomImage")).isVisible()) {
            QTest::mouseClick(&house_.cell(cell), Qt::LeftButton);
        } else {
            return;
        }
        if (!name.isEmpty()) {
            tell(
                [name](ModesRule &rule) {
                    if (!rule.isGroup && rule.list.contains(name)) {
                        rule.chooseImage(static_cast<int>(rule.list.indexOf(name)));
                    }
                },
                [start = roads_.begun()](const ModesRule &rule) { return rule.isWhere(start); });
        }
    }

    void hurriedRow()
    {
        const int row = below(kRows);
        if (view(kRowsOfGroup).model()->rowCount() <= row) {
            return;
        }
        if (oneIn(2)) {
            clickRowOf(kRowsOfGroup, row);
        } else if (!house_.find<QWidget>(QStringLiteral("ZoomImage")).isVisible()) {
            QTest::mouseClick(&house_.cell(row), Qt::LeftButton);
        } else {
            return;
        }
        const auto never = [](const ModesRule &) { return false; };
        if (hasLeft_) {
            tell([row](ModesRule &rule) { rule.takeRowAlong(row); }, never);
            tell([](ModesRule &rule) { rule.storeRow(); }, never); // by a click in between
        }
        tell([row](ModesRule &rule) { rule.isGroup ? rule.chooseRow(row) : void(); }, never);
    }

    void hurriedStore()
    {
        const CameraAddress camera = anyCamera();
        const QString name = anyName();
        const QString path = rule().folderOf(camera) + u'/' + name;
        const auto isShared = [&](CameraAddress other) {
            return other != camera && rule().address(other) == rule().address(camera);
        }; // of which one row may have been read before, and another after it
        if (hasStored_ || QFile::exists(path) || std::ranges::any_of(kAllCameras, isShared)) {
            return;
        }
        hasStored_ = true;
        write(path);
        Q_EMIT house_.house.store.imageStored(camera, name);
        tell([=](ModesRule &rule) { rule.stored(camera, name); },
             [](const ModesRule &) { return false; });
    }

private:
    bool isLeft()
    {
        return std::ranges::any_of(roads_.all(), [this](const ModesRule &road) {
            return !road.isGroup || road.camera.group != roads_.begun().camera.group;
        });
    }

    bool hasLeft_ = false;   // the group view, or its group, for a while
    bool hasChosen_ = false; // a camera in the list of cameras
    bool hasStored_ = false; // in this hurry
};

} // namespace velmora::test
