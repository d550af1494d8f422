// A camera's sheet, under mouse and keys.
#include "ui/CameraSheet.h"

#include "WindowHouse.h"
#include "support/LoopbackCameraAnswers.h"
#include "ui/ListBoxes.h"
#include "ui/PictureView.h"
#include "view/CameraTrial.h"

#include <QBuffer>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

constexpr CameraAddress kCamera{0, 3};
const QString kUrl = QStringLiteral("http://cam/x.jpg");

// Larger than the sheet's picture decodes within a moment, unless its format can be read smaller.
QByteArray hugePicture(const char *format)
{
    QImage image(4000, 4000, QImage::Format_Grayscale8);
    image.fill(Qt::gray);
    QBuffer buffer;
    image.save(&buffer, format);
    return buffer.data();
}

class CameraSheetTest : public testing::Test
{
protected:
    CameraSheetTest()
    {
        house_.house.addCamera(kCamera, kUrl);
        house_.house.page.load(); // as at a start with this camera
        house_.selectTab(0);
    }

    template <typename Control>
    Control &find(const QString &name)
    {
        auto *const control = sheet_.findChild<Control *>(name);
        if (control == nullptr) {
            throw std::runtime_error("no control " + name.toStdString());
        }
        return *control;
    }

    void type(const QString &box, const QString &text)
    {
        find<QLineEdit>(box).selectAll();
        QTest::keyClicks(&find<QLineEdit>(box), text);
    }

    void click(const QString &button)
    {
        QTest::mouseClick(&find<QPushButton>(button), Qt::LeftButton);
    }

    QString result() { return find<QLabel>(QStringLiteral("sheetResult")).text(); }

    /// Tests a camera that gives this answer, until done.
    QString verdict(const ScriptedReply &reply)
    {
        house_.source.answer(kUrl, reply);
        sheet_.present(kCamera);
        QSignalSpy ended(&trial_, &CameraTrial::ended);
        click(QStringLiteral("sheetTest"));
        EXPECT_TRUE(ended.wait(5000));
        return result();
    }

    WindowHouse house_;
    CameraTrial &trial_ = house_.house.view.trial();
    CameraSheet sheet_{house_.house.settings, trial_};
};

TEST_F(CameraSheetTest, OpensByAKeyInTheRow)
{
    QSignalSpy wanted(&house_.window, &Interface::sheetWanted);
    house_.click(QStringLiteral("Source3"));
    QTest::keyClick(&house_.find<QLineEdit>(QStringLiteral("Source3")), Qt::Key_F4);
    ASSERT_EQ(wanted.size(), 1);
    EXPECT_EQ(wanted.front().front().value<CameraAddress>(), kCamera);
}

TEST_F(CameraSheetTest, IsOfferedByTheMenuOfEachLabelInTheRow)
{
    QSignalSpy wanted(&house_.window, &Interface::sheetWanted);
    for (const QString &name : {QStringLiteral("n3"), QStringLiteral("SB3"),
                                QStringLiteral("TimeLoad3"), QStringLiteral("lNew3")}) {
        auto &label = house_.find<QWidget>(name);
        const QPoint middle = label.rect().center();
        QContextMenuEvent wish(QContextMenuEvent::Mouse, middle, label.mapToGlobal(middle));
        QApplication::sendEvent(&label, &wish);
        auto *const menu = label.findChild<QMenu *>();
        ASSERT_NE(menu, nullptr) << name.toStdString();
        QTest::mouseClick(menu, Qt::LeftButton, {},
                          menu->actionGeometry(menu->actions().front()).center());
    }
    ASSERT_EQ(wanted.size(), 4);
    EXPECT_EQ(wanted.back().front().value<CameraAddress>(), kCamera);
}

TEST_F(CameraSheetTest, BeginsWithTheAddressThatIsBeingTyped)
{
    QString stored;
    QObject::connect(&house_.window, &Interface::sheetWanted, &sheet_,
                     [&](CameraAddress camera) { stored = house_.house.table.row(camera).url; });
    house_.type(QStringLiteral("Source3"), QStringLiteral("http://typed/"));
    QTest::keyClick(&house_.find<QLineEdit>(QStringLiteral("Source3")), Qt::Key_F4);
    EXPECT_EQ(stored, house_.find<QLineEdit>(QStringLiteral("Source3")).text());
    EXPECT_TRUE(stored.contains(QStringLiteral("typed")));
}

TEST_F(CameraSheetTest, TheListBeginsWithTheAddressThatIsBeingTyped)
{
    QString stored;
    QObject::connect(&house_.window, &Interface::listWanted, &sheet_,
                     [&] { stored = house_.house.table.row({0, 5}).url; });
    house_.type(QStringLiteral("Source5"), QStringLiteral("http://typed/"));
    QTest::keyClick(&house_.find<QLineEdit>(QStringLiteral("Source5")), Qt::Key_F6);
    EXPECT_EQ(stored, QStringLiteral("http://typed/"));
}

TEST_F(CameraSheetTest, MayBeTestedAgainAfterAnAddressThatIsTooLong)
{
    sheet_.present(kCamera);
    const QString address = QStringLiteral("http://cam/") + QString(250, u'a');
    house_.source.answer(address, {jpeg(2000), {}, {}, {}, {}});
    find<QLineEdit>(QStringLiteral("sheetAddress")).setText(address);
    click(QStringLiteral("sheetTest"));
    const auto hasEnded = [this] { return result() != QStringLiteral("Fetching\u2026"); };
    EXPECT_TRUE(QTest::qWaitFor(hasEnded, 2000)) << result().toStdString();
    EXPECT_TRUE(find<QPushButton>(QStringLiteral("sheetTest")).isEnabled());
}

TEST_F(CameraSheetTest, StoresWhatIsChosen)
{
    sheet_.present(kCamera);
    type(QStringLiteral("sheetName"), QStringLiteral("Garage"));
    type(QStringLiteral("sheetUser"), QStringLiteral("me"));
    type(QStringLiteral("sheetPassword"), QStringLiteral("secret"));
    find<QComboBox>(QStringLiteral("sheetKeep")).setCurrentIndex(2);
    find<QSpinBox>(QStringLiteral("sheetPercent")).setValue(7);
    click(QStringLiteral("sheetSave"));
    EXPECT_FALSE(sheet_.isVisible());
    EXPECT_EQ(house_.stored(u"Camera03", u"Name"), QStringLiteral("Garage"));
    EXPECT_EQ(house_.stored(u"Camera03", u"User"), QStringLiteral("me"));
    EXPECT_EQ(house_.stored(u"Camera03", u"Password"), QStringLiteral("secret"));
    EXPECT_EQ(house_.stored(u"Camera03", u"Keep"), QStringLiteral("clearly:7"));
    EXPECT_EQ(house_.stored(u"Liste0", u"lst3"), kUrl);
}

TEST_F(CameraSheetTest, ShowsWhatIsStored)
{
    house_.house.settings.write(u"Camera03", u"Name", u"Garage");
    house_.house.settings.write(u"Camera03", u"Keep", u"differing");
    sheet_.present(kCamera);
    EXPECT_EQ(sheet_.windowTitle(), QStringLiteral("Camera 0:3 Garage"));
    EXPECT_EQ(find<QLineEdit>(QStringLiteral("sheetAddress")).text(), kUrl);
    EXPECT_EQ(find<QComboBox>(QStringLiteral("sheetKeep")).currentIndex(), 1);
    EXPECT_FALSE(find<QSpinBox>(QStringLiteral("sheetPercent")).isEnabled());
}

TEST_F(CameraSheetTest, OffersThePercentageOfNoOtherCamera)
{
    house_.house.settings.write(u"Camera03", u"Keep", u"clearly:40");
    sheet_.present(kCamera);
    sheet_.present({0, 4});
    QTest::keyClick(&find<QComboBox>(QStringLiteral("sheetKeep")), Qt::Key_End);
    EXPECT_EQ(find<QSpinBox>(QStringLiteral("sheetPercent")).value(), 5);
}

TEST_F(CameraSheetTest, LeavesTheSettingsAsTheyAreWhenNothingIsChosen)
{
    const QByteArray before = house_.house.tree.read(u"Velmora.ini");
    sheet_.present(kCamera);
    click(QStringLiteral("sheetSave"));
    EXPECT_EQ(house_.house.tree.read(u"Velmora.ini"), before);
}

TEST_F(CameraSheetTest, StoresNothingButWhatWasChangedInIt)
{
    sheet_.present(kCamera);
    house_.house.settings.write(u"Camera03", u"Name", u"Garage"); // by another program
    house_.house.settings.write(u"Camera03", u"Keep", u"differing");
    QSignalSpy chosen(&sheet_, &CameraSheet::addressChosen);
    type(QStringLiteral("sheetUser"), QStringLiteral("me"));
    click(QStringLiteral("sheetSave"));
    EXPECT_EQ(house_.stored(u"Camera03", u"User"), QStringLiteral("me"));
    EXPECT_EQ(house_.stored(u"Camera03", u"Name"), QStringLiteral("Garage"));
    EXPECT_EQ(house_.stored(u"Camera03", u"Keep"), QStringLiteral("differing"));
    EXPECT_EQ(chosen.size(), 0);
}

// As --remove and --add do, while the sheet is open.
TEST_F(CameraSheetTest, GivesNothingToACameraThatWasPutIntoTheRowMeanwhile)
{
    QObject::connect(&sheet_, &CameraSheet::addressChosen, &house_.window, &Interface::fillAddress);
    sheet_.present(kCamera);
    type(QStringLiteral("sheetPassword"), QStringLiteral("secret"));
    house_.house.settings.write(u"Liste0", u"lst3", u"http://newcomer/");
    house_.house.settings.write(u"Camera03", u"Name", u"Gate");
    const QByteArray before = house_.house.tree.read(u"Velmora.ini");
    click(QStringLiteral("sheetSave"));
    EXPECT_TRUE(sheet_.isVisible());
    EXPECT_TRUE(find<QLabel>(QStringLiteral("sheetMessage")).text().contains(u"another address"));
    type(QStringLiteral("sheetAddress"), QStringLiteral("http://moved/"));
    click(QStringLiteral("sheetSave"));
    EXPECT_TRUE(sheet_.isVisible());
    EXPECT_EQ(house_.house.tree.read(u"Velmora.ini"), before);
}

TEST_F(CameraSheetTest, ItsLoginGoesToTheAddressBesideIt)
{
    QObject::connect(&sheet_, &CameraSheet::addressChosen, &house_.window, &Interface::fillAddress);
    house_.house.settings.write(u"Camera03", u"User", u"me");
    sheet_.present(kCamera);
    type(QStringLiteral("sheetAddress"), QStringLiteral("http://moved/"));
    type(QStringLiteral("sheetPassword"), QStringLiteral("secret"));
    click(QStringLiteral("sheetSave"));
    EXPECT_EQ(house_.stored(u"Liste0", u"lst3"), QStringLiteral("http://moved/"));
    EXPECT_EQ(house_.stored(u"Camera03", u"User"), QStringLiteral("me"));
    EXPECT_EQ(house_.stored(u"Camera03", u"Password"), QStringLiteral("secret"));
}

TEST_F(CameraSheetTest, LeavesNothingInARowThatItEmpties)
{
    QObject::connect(&sheet_, &CameraSheet::addressChosen, &house_.window, &Interface::fillAddress);
    house_.house.settings.write(u"Camera03", u"User", u"me");
    sheet_.present(kCamera);
    find<QLineEdit>(QStringLiteral("sheetAddress")).clear();
    type(QStringLiteral("sheetName"), QStringLiteral("Garage"));
    click(QStringLiteral("sheetSave"));
    EXPECT_FALSE(sheet_.isVisible());
    EXPECT_EQ(house_.stored(u"Camera03", u"User"), QString());
    EXPECT_EQ(house_.stored(u"Camera03", u"Name"), QString());
}

// Typed with real keys, as a person would take a camera away and put in another.
TEST_F(CameraSheetTest, WhatWasChosenGoesWithARowThatIsEmptiedInTheWindow)
{
    house_.house.settings.write(u"Camera03", u"Name", u"Garage");
    house_.house.settings.write(u"Camera03", u"User", u"me");
    house_.house.page.reread();
    house_.retype(QStringLiteral("Source3"), QString());
    house_.leaveBox();
    house_.retype(QStringLiteral("Source3"), QStringLiteral("http://newcomer/"));
    house_.leaveBox();
    EXPECT_EQ(house_.stored(u"Liste0", u"lst3"), QStringLiteral("http://newcomer/"));
    EXPECT_EQ(house_.stored(u"Camera03", u"Name"), QString());
    EXPECT_EQ(house_.stored(u"Camera03", u"User"), QString());
    EXPECT_EQ(house_.find<QLineEdit>(QStringLiteral("Source3")).toolTip(),
              QStringLiteral("Enter link"));
}

TEST_F(CameraSheetTest, KeepsWhatIsTypedWhenItIsOpenedAgain)
{
    sheet_.present(kCamera);
    type(QStringLiteral("sheetName"), QStringLiteral("Gar"));
    sheet_.present(kCamera);
    EXPECT_EQ(find<QLineEdit>(QStringLiteral("sheetName")).text(), QStringLiteral("Gar"));
    sheet_.present({0, 4});
    EXPECT_EQ(find<QLineEdit>(QStringLiteral("sheetName")).text(), QStringLiteral("Gar"));
    EXPECT_TRUE(sheet_.windowTitle().startsWith(u"Camera 0:3"));
    EXPECT_TRUE(find<QLabel>(QStringLiteral("sheetMessage")).text().contains(u"0:4"));
    click(QStringLiteral("sheetCancel"));
    sheet_.present({0, 4});
    EXPECT_TRUE(sheet_.windowTitle().startsWith(u"Camera 0:4"));
    sheet_.present(kCamera); // nothing was changed in the other one's
    EXPECT_EQ(find<QLineEdit>(QStringLiteral("sheetName")).text(), QString());
}

TEST_F(CameraSheetTest, GivesAnotherAddressToTheRow)
{
    QSignalSpy chosen(&sheet_, &CameraSheet::addressChosen);
    sheet_.present(kCamera);
    type(QStringLiteral("sheetAddress"), QStringLiteral("http://other/"));
    click(QStringLiteral("sheetSave"));
    ASSERT_EQ(chosen.size(), 1);
    house_.window.fillAddress(kCamera, chosen.front().at(1).toString());
    EXPECT_EQ(house_.stored(u"Liste0", u"lst3"), QStringLiteral("http://other/"));
    EXPECT_EQ(house_.find<QLineEdit>(QStringLiteral("Source3")).text(),
              QStringLiteral("http://other/"));
}

TEST_F(CameraSheetTest, GivesAnotherAddressToARowOfAGroupThatIsNotOnScreen)
{
    QObject::connect(&sheet_, &CameraSheet::addressChosen, &house_.window, &Interface::fillAddress);
    sheet_.present(kCamera);
    type(QStringLiteral("sheetAddress"), QStringLiteral(" http://other/ "));
    type(QStringLiteral("sheetUser"), QStringLiteral("me"));
    house_.selectTab(5);
    QSignalSpy stored(&house_.house.page, &CameraPage::addressStored);
    click(QStringLiteral("sheetSave"));
    EXPECT_EQ(house_.stored(u"Liste0", u"lst3"), QStringLiteral("http://other/"));
    EXPECT_EQ(house_.stored(u"Liste5", u"lst3"), QString());
    ASSERT_EQ(stored.size(), 1);
    EXPECT_EQ(stored.front().front().value<CameraAddress>(), kCamera);
    house_.selectTab(0);
    EXPECT_EQ(house_.find<QLineEdit>(QStringLiteral("Source3")).text(),
              QStringLiteral("http://other/"));
}

TEST_F(CameraSheetTest, RefusesALoginThatCannotBeStored)
{
    sheet_.present(kCamera);
    find<QLineEdit>(QStringLiteral("sheetUser")).setText(QStringLiteral("me"));
    find<QLineEdit>(QStringLiteral("sheetPassword")).setText(QStringLiteral("日本"));
    click(QStringLiteral("sheetSave"));
    EXPECT_TRUE(sheet_.isVisible());
    EXPECT_TRUE(find<QLabel>(QStringLiteral("sheetMessage")).text().contains(u"Western European"));
    EXPECT_FALSE(find<QLabel>(QStringLiteral("sheetMessage")).text().contains(u"日本"));
    EXPECT_EQ(house_.stored(u"Camera03", u"User"), QString());
}

TEST_F(CameraSheetTest, RefusesAnAddressInTheWordsOfTheRow)
{
    sheet_.present(kCamera);
    find<QLineEdit>(QStringLiteral("sheetAddress")).setText(QString(300, u'a'));
    click(QStringLiteral("sheetSave"));
    EXPECT_TRUE(sheet_.isVisible());
    EXPECT_TRUE(find<QLabel>(QStringLiteral("sheetMessage")).text().startsWith(u"Overflow"));
}

TEST_F(CameraSheetTest, ARefusalGoesWithTheTextThatWasRefused)
{
    sheet_.present(kCamera);
    find<QLineEdit>(QStringLiteral("sheetName")).setText(QStringLiteral("日本"));
    click(QStringLiteral("sheetSave"));
    EXPECT_NE(find<QLabel>(QStringLiteral("sheetMessage")).text(), QString());
    type(QStringLiteral("sheetName"), QStringLiteral("N"));
    EXPECT_EQ(find<QLabel>(QStringLiteral("sheetMessage")).text(), QString());
}

TEST_F(CameraSheetTest, BeginsWithTheStartOfALongName)
{
    const QString name(60, u'n');
    house_.house.settings.write(u"Camera03", u"Name", name);
    sheet_.present(kCamera);
    EXPECT_EQ(find<QLineEdit>(QStringLiteral("sheetName")).selectedText(), name);
    EXPECT_EQ(find<QLineEdit>(QStringLiteral("sheetName")).cursorPosition(), 0);
}

TEST_F(CameraSheetTest, ClosesByEscape)
{
    sheet_.present(kCamera);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&sheet_));
    QTest::keyClick(&sheet_, Qt::Key_Escape);
    EXPECT_FALSE(sheet_.isVisible());
}

TEST_F(CameraSheetTest, TellsWhatWouldBecomeOfAPicture)
{
    const QString date = QStringLiteral("Tue, 07 Mar 2006 14:05:09 GMT");
    EXPECT_TRUE(verdict({jpeg(2000), date, QStringLiteral("image/jpeg"), {}, {}})
                    .startsWith(u"new: date of the server"));
    EXPECT_TRUE(result().contains(QStringLiteral("2000 bytes, type image/jpeg")));
    EXPECT_TRUE(result().contains(date));
    house_.house.putImage(kCamera, QStringLiteral("20060307_1405090714.jpg"));
    EXPECT_TRUE(verdict({jpeg(2000), {}, {}, {}, {}}).startsWith(u"not kept: it has no date"));
    EXPECT_TRUE(verdict({"<html><title> A\npage</title>" + QByteArray(2000, 'x'), {}, {}, {}, {}})
                    .startsWith(u"not a picture: a web page titled \"A page\""));
    EXPECT_TRUE(verdict({jpeg(20), {}, {}, {}, {}}).startsWith(u"too short"));
    EXPECT_TRUE(verdict({{}, {}, {}, {}, QStringLiteral("no answer")})
                    .startsWith(u"no picture: no answer"));
}

TEST_F(CameraSheetTest, ShowsThePictureOfTheTest)
{
    auto &picture = find<PictureView>(QStringLiteral("sheetPicture"));
    sheet_.present(kCamera);
    EXPECT_EQ(picture.notice(), QStringLiteral("no picture yet"));
    verdict({hugePicture("jpeg"), {}, QStringLiteral("image/jpeg"), {}, {}});
    EXPECT_TRUE(picture.holdsPicture());
    EXPECT_TRUE(result().contains(QStringLiteral("4000 × 4000 pixels"))) << result().toStdString();
}

// A decoder that reads all of it at once would keep the whole program waiting.
TEST_F(CameraSheetTest, ShowsNoPictureThatTakesTooLongToDecode)
{
    auto &picture = find<PictureView>(QStringLiteral("sheetPicture"));
    verdict({hugePicture("png"), {}, QStringLiteral("image/png"), {}, {}});
    EXPECT_FALSE(picture.holdsPicture());
    EXPECT_EQ(picture.notice(), QStringLiteral("too large to show"));
    EXPECT_TRUE(result().contains(QStringLiteral("4000 × 4000 pixels"))) << result().toStdString();
    verdict({jpeg(2000), {}, QStringLiteral("image/jpeg"), {}, {}});
    EXPECT_EQ(picture.notice(), QStringLiteral("cannot be shown"));
    sheet_.close();
    sheet_.present(kCamera);
    EXPECT_EQ(picture.notice(), QStringLiteral("no picture yet"));
}

TEST_F(CameraSheetTest, ComparesWhereItIsChosen)
{
    house_.house.putImage(kCamera, QStringLiteral("20060307_1405090714.jpg"));
    house_.house.settings.write(u"Camera03", u"Keep", u"differing");
    EXPECT_TRUE(verdict({jpeg(2000), {}, {}, {}, {}}).startsWith(u"new: it differs"));
}

TEST_F(CameraSheetTest, ItsTestPressedTwiceByKeyStoresNothing)
{
    house_.source.answer(kUrl, {jpeg(2000), {}, {}, {}, {}});
    sheet_.present(kCamera);
    type(QStringLiteral("sheetName"), QStringLiteral("Half"));
    QSignalSpy ended(&trial_, &CameraTrial::ended);
    find<QPushButton>(QStringLiteral("sheetTest")).setFocus();
    QTest::keyClick(sheet_.focusWidget(), Qt::Key_Space);
    QTest::keyClick(sheet_.focusWidget(), Qt::Key_Space);
    EXPECT_TRUE(sheet_.isVisible());
    EXPECT_EQ(house_.house.settings.read(u"Camera03", u"Name"), QString());
    EXPECT_TRUE(ended.size() == 1 || ended.wait(5000));
    EXPECT_EQ(sheet_.focusWidget()->objectName(), QStringLiteral("sheetTest"));
}

TEST_F(CameraSheetTest, EveryControlHasANameThatAPersonUnderstands)
{
    for (const auto *const control : sheet_.findChildren<QWidget *>()) {
        const auto *const button = qobject_cast<const QAbstractButton *>(control);
        if (control->focusPolicy() != Qt::NoFocus && control->isVisibleTo(&sheet_) &&
            control->objectName().startsWith(u"sheet")) {
            EXPECT_TRUE(!control->accessibleName().isEmpty() ||
                        (button != nullptr && !button->text().isEmpty()))
                << control->objectName().toStdString();
        }
    }
}

TEST_F(CameraSheetTest, TheNameStandsInTheTipsOfTheRow)
{
    auto &source = house_.find<QLineEdit>(QStringLiteral("Source3"));
    EXPECT_EQ(source.toolTip(), QStringLiteral("Enter link"));
    house_.house.settings.write(u"Camera03", u"Name", u"Garage");
    house_.house.page.reread();
    EXPECT_EQ(source.toolTip(), QStringLiteral("Enter link\n0:3 Garage"));
    EXPECT_EQ(house_.find<QWidget>(QStringLiteral("SB3")).toolTip(),
              QStringLiteral("0:3 Garage\nthe last download failed"));
}

TEST_F(CameraSheetTest, WhatIsTypedStaysWhenAnotherProgramChangesTheSettings)
{
    house_.type(QStringLiteral("Source3"), QStringLiteral("more"));
    house_.house.settings.write(u"Liste0", u"lst3", u"http://elsewhere/");
    house_.house.settings.write(u"Liste0", u"lst4", u"http://new/");
    house_.house.page.reread();
    EXPECT_EQ(house_.find<QLineEdit>(QStringLiteral("Source3")).text(),
              kUrl + QStringLiteral("more"));
    EXPECT_EQ(house_.find<QLineEdit>(QStringLiteral("Source4")).text(),
              QStringLiteral("http://new/"));
}

// The cursor alone is no edit.
TEST_F(CameraSheetTest, ARowTypedEarlierShowsWhatAnotherProgramChanges)
{
    house_.type(QStringLiteral("Source3"), QStringLiteral("http://mine/"));
    house_.leaveBox();
    house_.click(QStringLiteral("Source3"));
    house_.house.settings.write(u"Liste0", u"lst3", u"http://elsewhere/");
    house_.house.page.reread();
    EXPECT_EQ(house_.find<QLineEdit>(QStringLiteral("Source3")).text(),
              QStringLiteral("http://elsewhere/"));
    house_.leaveBox();
    EXPECT_EQ(house_.house.table.row({0, 3}).url, QStringLiteral("http://elsewhere/"));
}

TEST(ChoiceListNames, AreFoundByTyping)
{
    ChoiceList list;
    list.show();
    list.describe(3, QStringLiteral("0:3 Garage"), QStringLiteral("Garage"));
    list.describe(5, QStringLiteral("0:5 Back garden"), QStringLiteral("Back garden"));
    list.describe(6, QStringLiteral("0:6 2nd floor"), QStringLiteral("2nd floor"));
    list.showRow(0);
    QSignalSpy chosen(&list, &ChoiceList::chosen);
    QTest::keyClicks(&list, QStringLiteral("gard"));
    ASSERT_FALSE(chosen.isEmpty());
    EXPECT_EQ(chosen.back().front().toInt(), 5);
    EXPECT_EQ(list.item(3)->toolTip(), QStringLiteral("0:3 Garage"));
    EXPECT_EQ(list.item(3)->data(Qt::AccessibleDescriptionRole), QStringLiteral("0:3 Garage"));
    ChoiceList other;
    other.show();
    other.describe(6, {}, QStringLiteral("2nd floor"));
    QSignalSpy otherChosen(&other, &ChoiceList::chosen);
    QTest::keyClicks(&other, QStringLiteral("2"));
    ASSERT_FALSE(otherChosen.isEmpty());
    EXPECT_EQ(otherChosen.back().front().toInt(), 2);
}

} // namespace
} // namespace velmora::test
