// What a user and the program's own events do to the browser, by chance, and what must be so after
// each of them: what is highlighted is selected, framed, counted, enlarged and acted on by keys.
#pragma once

#include "RandomHands.h"
#include "cameras/CameraChoices.h"

#include <QDir>
#include <QDirIterator>
#include <QSlider>

namespace velmora::test {

/// Five cameras in two groups, some of them in another storage folder too.
class BrowserModel : public RandomHands
{
protected:
    BrowserModel()
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
        for (const CameraAddress camera : {CameraAddress{0, 1}, CameraAddress{1, 2}}) {
            house_.house.tree.write(house_.house.folder(camera).replace(QStringLiteral("/in/"),
                                                                        QStringLiteral("/other/")) +
                                        u'/' + storedName(2),
                                    picture);
        }
        house_.open();
        house_.images.calendar().open();
    }

    void addCamera(CameraAddress camera, int images, const QByteArray &picture)
    {
        house_.house.addCamera(camera, cameraUrl(camera));
        for (int i = 0; i < images; ++i) {
            house_.house.putImage(camera, storedName(i), picture);
        }
        names_ = std::max(names_, images);
    }

    bool HasFailure() { return testing::Test::HasFailure(); }

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
        letGo(); // no one types with a button held
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
        QFile file(imagePath(camera, storedName(++names_)));
        QDir().mkpath(QFileInfo(file).path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(pictureBytes(Qt::red, {16, 12}));
        file.close();
        house_.browser.follow(camera);
    }

    void vanishedImage()
    {
        const CameraAddress camera = cameras_.at(below(static_cast<int>(cameras_.size())));
        QFile::remove(imagePath(camera, storedName(below(names_))));
    }

    void typeFolder()
    {
        storage().beginEdit();
        storage().edit(QStringLiteral("C:\\o"));
    }

    void putInForce()
    {
        storage().edit(below(3) == 0 ? QStringLiteral("C:\\other") : QStringLiteral("C:\\in"));
        storage().putInForce();
    }

    // The question stays open while the program's own events, and those of its main window, go on.
    void deleteImage()
    {
        letGo();
        QTest::keyClick(&view(isGroupView() ? kRowsOfGroup : kImages), Qt::Key_Delete);
        QMessageBox *const box = house_.question();
        if (box == nullptr) {
            return;
        }
        const QString target = targetOf(*box);
        for (int events = below(3); events > 0; --events) {
            (this->*kBehind.at(below(static_cast<int>(kBehind.size()))))();
            QCoreApplication::processEvents();
        }
        answer(*box, target);
    }

    QString targetOf(const QMessageBox &box)
    {
        const ImageFile image = isGroupView() ? house_.data.state.DerniereImage(row(kRowsOfGroup))
                                              : house_.data.files.selected();
        const auto named = cameraFromText(box.informativeText().section(u' ', 1, 1).chopped(1));
        EXPECT_EQ(named ? storage().cameraFolderText(*named) : QString(), image.folder);
        EXPECT_EQ(box.text(), QStringLiteral("Kill ") + image.name);
        return native(image);
    }

    void answer(QMessageBox &box, const QString &target)
    {
        const bool isYes = below(2) == 0;
        const bool isInForce =
            target.startsWith(QDir::cleanPath(storage().native(storage().inForce())) + u'/');
        QStringList left = allImages();
        if (isYes && isInForce && !storage().isBeingEdited()) {
            left.removeOne(target);
        }
        QTest::mouseClick(box.button(isYes ? QMessageBox::Yes : QMessageBox::No), Qt::LeftButton);
        house_.settle();
        EXPECT_EQ(allImages(), left);
    }

    void refresh() { QTest::keyClick(house_.window.windowHandle(), Qt::Key_F5); }

    // By hand or by another program.
    void otherAddress()
    {
        const CameraAddress camera = cameras_.at(below(static_cast<int>(cameras_.size())));
        const CameraAddress other{9, camera.row};
        house_.house.table.setUrl(camera, cameraUrl(below(2) == 0 ? camera : other));
        house_.house.page.reread();
    }

    void imported() { house_.browser.chooseCameraAgain(); }

    void pauseFilm()
    {
        house_.film.PauseCine_MouseDown();
        house_.holdFilm();
    }

    void moveFilmsEnd()
    {
        if (house_.filmWindow.isVisible()) {
            auto &end = house_.find<QSlider>(QStringLiteral("sFin"));
            end.setValue(1 + below(end.maximum()));
            house_.holdFilm();
        }
    }

    void clickFilm()
    {
        if (house_.filmWindow.isVisible()) {
            QTest::mouseClick(&house_.find<QWidget>(QStringLiteral("iCine")), Qt::LeftButton);
            house_.holdFilm();
        }
    }

    void closeFilm() { house_.filmWindow.close(); }

    void closeAndReopen()
    {
        letGo();
        house_.window.unload();
        house_.window.present();
    }

    void goToHour() { house_.images.calendar().goToHour(below(24)); }

    void deletedForItsAge()
    {
        vanishedImage();
        house_.browser.showDeletion(cameras_.at(below(static_cast<int>(cameras_.size()))));
    }

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

    // What is enlarged is the selected image, or in camera view another one of the list that was
    // pressed with the right button; nothing where nothing is selected.
    void lookAtZoom()
    {
        const ImageFile &zoomed = sheet().zoomed();
        EXPECT_EQ(house_.find<QWidget>(QStringLiteral("ZoomImage")).isVisible(),
                  sheet().isZoomVisible());
        if (!sheet().isZoomVisible()) {
            EXPECT_TRUE(zoomed.isNone());
        } else if (isGroupView()) {
            const int selected = row(kRowsOfGroup);
            EXPECT_EQ(zoomed,
                      selected < 0 ? ImageFile() : house_.data.state.DerniereImage(selected));
        } else {
            EXPECT_EQ(zoomed.isNone(), row(kImages) < 0);
            EXPECT_TRUE(zoomed.isNone() || house_.data.files.find(zoomed));
        }
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
        if (pressedCell() != selectedCell()) {
            cells.removeOne(pressedCell());
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
        lookAtZoom();
        lookAtFilm();
        house_.settle();
    }

    void lookAtFilm()
    {
        EXPECT_EQ(house_.film.isOpen(), house_.filmWindow.isVisible());
        EXPECT_EQ(house_.film.isOpen(), house_.data.state.CineActif());
        if (isRead() && !house_.film.isOpen()) {
            EXPECT_EQ(isFilmEnabled(), house_.data.files.count() > 0);
        }
    }

    void lookAtGroup()
    {
        const int selected = row(kRowsOfGroup);
        EXPECT_EQ(view(kRowsOfGroup).model()->rowCount(), kRows);
        if (selected < 0) {
            const bool isCount = position() == QString::number(house_.data.files.count());
            EXPECT_TRUE(position().isEmpty() || isCount); // the film button counts its images
            EXPECT_TRUE(frames().isEmpty());
            EXPECT_EQ(targetOfDelete(kRowsOfGroup), QString());
            return;
        }
        EXPECT_EQ(frames(), QList<int>{selected});
        EXPECT_EQ(row(kCameras), selected);
        EXPECT_TRUE(!isRead() || position() == QString::number(house_.data.files.count()))
            << position().toStdString() << " of " << house_.data.files.count();
        const QString newest = view(kRowsOfGroup).model()->index(selected, 0).data().toString();
        const QString target = targetOfDelete(kRowsOfGroup);
        EXPECT_TRUE(target == (isRead() ? newest.trimmed() : QString()) ||
                    (!isRead() && !storage().isBeingEdited())) // the disk is away
            << target.toStdString() << " of " << newest.toStdString();
    }

    // No folder is read while the storage box is being edited, or its disk is away: what is on show
    // stays.
    bool isRead() { return storage().isUsable(); }

    void lookAtImages()
    {
        const int selected = row(kImages);
        const int count = view(kImages).model()->rowCount();
        EXPECT_EQ(selected < 0, count == 0);
        if (count > 0) {
            EXPECT_EQ(position(), QStringLiteral("%1 / %2").arg(selected + 1).arg(count));
        }
        if (isRead()) {
            EXPECT_TRUE(count > 0 || position() == QStringLiteral("0"));
            EXPECT_EQ(isFilmEnabled(), count > 0);
        }
        EXPECT_EQ(frames().size(), count > 0 ? 1 : 0);
        const QString target = targetOfDelete(kImages); // none for a file that is gone
        EXPECT_TRUE(target.isEmpty() || target == listed(selected));
    }

    QString imagePath(CameraAddress camera, const QString &name)
    {
        return QDir::cleanPath(storage().cameraFolder(camera)) + u'/' + name;
    }

    // In all storage folders, in force or not.
    QStringList allImages()
    {
        QStringList paths;
        QDirIterator files(house_.house.tree.path(u"drives/c"), QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            paths.append(files.next());
        }
        paths.sort();
        return paths;
    }

    static const QList<void (BrowserModel::*)()> kBehind; // while a question is open

    const QList<CameraAddress> cameras_{{0, 0}, {0, 1}, {0, 4}, {1, 0}, {1, 2}};
    QWidget other_;
    int names_ = 0;
};

inline const QList<void (BrowserModel::*)()> BrowserModel::kBehind{
    &BrowserModel::scan,         &BrowserModel::storedImage, &BrowserModel::vanishedImage,
    &BrowserModel::otherAddress, &BrowserModel::typeFolder,  &BrowserModel::putInForce};

} // namespace velmora::test
