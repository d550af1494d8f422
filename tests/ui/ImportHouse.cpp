#include "ImportHouse.h"

#include <QFileInfo>

#include <gtest/gtest.h>

namespace velmora::test {

ImportHouse::ImportHouse()
{
    QObject::connect(&house.page, &CameraPage::addressStored, &import, &Import::noticeAddress);
    house.addCamera(kCamera, cameraUrl(kCamera));
    house.tree.makeFolder(house.folder(kCamera));
    house.tree.makeFolder(u"drives/c/card/DCIM");
    house.settings.write(u"Control", u"Dir", u"C:\\card");
}

ImportHouse::~ImportHouse()
{
    window.close();
    house.scope.requestStop();
    clock.advance(std::chrono::seconds{1});
}

void ImportHouse::open()
{
    window.present();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    settle();
}

void ImportHouse::put(const QString &name, const QColor &colour) const
{
    house.tree.write(QString(QStringLiteral("drives/c/card/") + name), pictureBytes(colour));
}

void ImportHouse::click(const char *control)
{
    QTest::mouseClick(&find<QWidget>(control), Qt::LeftButton);
    settle();
}

void ImportHouse::clickRow(const char *list, int row)
{
    auto &view = find<QListView>(list);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {},
                      view.visualRect(view.model()->index(row, 0)).center());
    settle();
}

void ImportHouse::doubleClickRow(const char *list, int row)
{
    auto &view = find<QListView>(list);
    const QPoint at = view.visualRect(view.model()->index(row, 0)).center();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, at);
    settle();
}

void ImportHouse::key(const char *control, int key)
{
    QTest::keyClick(&find<QWidget>(control), static_cast<Qt::Key>(key));
    settle();
}

void ImportHouse::pick(const char *box, int entry)
{
    auto &choices = find<QComboBox>(box);
    choices.showPopup();
    QAbstractItemView *const list = choices.view();
    const QPoint at = list->visualRect(choices.model()->index(entry, 0)).center();
    QTest::mouseMove(list->viewport(), at);
    QTest::keyClick(list, Qt::Key_Home);
    for (int row = 0; row < entry; ++row) {
        QTest::keyClick(list, Qt::Key_Down);
    }
    QTest::keyClick(list, Qt::Key_Return);
    settle();
}

QString ImportHouse::shown(const char *picture)
{
    return QFileInfo(find<PictureView>(picture).accessibleDescription()).fileName();
}

QStringList ImportHouse::rows(const char *list)
{
    const QAbstractItemModel &model = *find<QListView>(list).model();
    QStringList names;
    for (int row = 0; row < model.rowCount(); ++row) {
        names.append(model.index(row, 0).data().toString());
    }
    return names;
}

QString ImportHouse::stored(QStringView key) const
{
    return house.settings.read(u"Control", key);
}

} // namespace velmora::test
