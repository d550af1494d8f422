// Deleting stored images: the question, and what is shown afterwards.
#include "browser/BrowserTest.h"

namespace velmora::test {
namespace {

class Kill : public BrowserTest
{
protected:
    void kill(const std::optional<KillQuestion> &question)
    {
        ASSERT_TRUE(question);
        browser_.kill(question->target);
        house_.finish();
    }

    void showGroupWithRow(int row)
    {
        state().allowReading();
        house_.showGroup(0);
        browser_.chooseCameraRow(row);
        house_.finish();
    }
};

TEST_F(Kill, AsksWithTheNameOfTheSelectedImage)
{
    house_.addImages(kCamera, 3);
    house_.show(kCamera);
    browser_.chooseFile(1);
    const auto question = browser_.killQuestion();
    ASSERT_TRUE(question);
    EXPECT_EQ(question->text, QStringLiteral("Kill ") + imageName(1));
    EXPECT_EQ(question->target.path(), house_.data.files.file(1).path());
}

TEST_F(Kill, AsksWithALongNameWhole)
{
    const QString name = QStringLiteral("20 a name of more than twenty-three characters.jpg");
    house_.addCamera(kCamera, {name});
    house_.show(kCamera);
    EXPECT_EQ(browser_.killQuestion()->text, QStringLiteral("Kill ") + name);
}

TEST_F(Kill, AsksNothingWhenTheFileHasGoneAlready)
{
    house_.addImages(kCamera, 3);
    house_.show(kCamera);
    house_.remove(kCamera, imageName(2));
    EXPECT_FALSE(browser_.killQuestion());
}

TEST_F(Kill, AsksNothingAboutAnAddressThatTheCameraNoLongerHas)
{
    house_.addImages(kCamera, 3);
    house_.show(kCamera);
    house_.capture.table.setUrl(kCamera, u"http://other/");
    EXPECT_FALSE(browser_.killQuestion());
}

TEST_F(Kill, AsksNothingInGroupViewAboutAnAddressThatTheCameraNoLongerHas)
{
    house_.addImages(kCamera, 3);
    showGroupWithRow(kCamera.row);
    ASSERT_TRUE(browser_.killQuestion());
    house_.capture.table.setUrl(kCamera, u"");
    EXPECT_FALSE(browser_.killQuestion());
}

TEST_F(Kill, AsksNothingWhenAFolderHasTakenTheFilesPlace)
{
    house_.addImages(kCamera, 1);
    house_.show(kCamera);
    house_.remove(kCamera, imageName(0));
    house_.capture.tree.makeFolder(house_.capture.folder(kCamera) + u'/' + imageName(0));
    EXPECT_FALSE(browser_.killQuestion());
}

TEST_F(Kill, AsksNothingInAnEmptyList)
{
    house_.addCamera(kCamera);
    house_.show(kCamera);
    EXPECT_FALSE(browser_.killQuestion());
}

TEST_F(Kill, AsksBeforeItDeletes)
{
    house_.addImages(kCamera, 3);
    house_.show(kCamera);
    static_cast<void>(browser_.killQuestion());
    EXPECT_EQ(house_.capture.images(kCamera).size(), 3);
}

TEST_F(Kill, DeletesTheImageAndShowsWhatIsLeft)
{
    house_.addImages(kCamera, 3);
    house_.show(kCamera);
    browser_.chooseFile(0);
    house_.store(u"lstImg", u"9");
    kill(browser_.killQuestion());
    EXPECT_EQ(house_.capture.images(kCamera), imageNames(1, 2));
    EXPECT_EQ(house_.NbI(), QStringLiteral("2 / 2"));
    EXPECT_EQ(house_.cells().value(0), imageName(1));
    EXPECT_EQ(house_.stored(u"lstImg"), QStringLiteral("0"));
}

TEST_F(Kill, TellsOfWhatIsGoneAlone)
{
    const QSignalSpy deleted(&browser_, &ImageBrowser::imageDeleted);
    house_.addImages(kCamera, 2);
    house_.show(kCamera);
    browser_.chooseFile(0);
    const auto question = browser_.killQuestion();
    kill(question);
    ASSERT_EQ(deleted.size(), 1);
    EXPECT_EQ(deleted.front().front().value<ImageFile>(), question->target);
    kill(question); // it is gone already
    EXPECT_EQ(deleted.size(), 1);
}

TEST_F(Kill, LeavesAnEmptySheetBehindTheLastImage)
{
    house_.addImages(kCamera, 1);
    house_.show(kCamera);
    kill(browser_.killQuestion());
    EXPECT_EQ(house_.NbI(), QStringLiteral("0"));
    EXPECT_FALSE(browser_.face().isFilmEnabled);
    EXPECT_EQ(house_.cells(), QStringList(kCells));
    EXPECT_EQ(house_.framed(), QList<int>());
}

TEST_F(Kill, SimplyShowsAgainWhatCannotBeDeleted)
{
    house_.addImages(kCamera, 2);
    house_.show(kCamera);
    const auto question = browser_.killQuestion();
    house_.remove(kCamera, imageName(1));
    house_.capture.tree.makeFolder(house_.capture.folder(kCamera) + u'/' + imageName(1));
    kill(question);
    EXPECT_EQ(house_.NbI(), QStringLiteral("1 / 1"));
    EXPECT_EQ(house_.capture.allTexts(), QStringList());
}

TEST_F(Kill, DeletesTheFileThatWasAskedForThoughAnotherIsSelectedMeanwhile)
{
    house_.addImages(kCamera, 3);
    house_.show(kCamera);
    const auto question = browser_.killQuestion();
    browser_.chooseFile(0);
    kill(question);
    EXPECT_EQ(house_.capture.images(kCamera), imageNames(0, 2));
}

TEST_F(Kill, AsksForTheNewestImageOfTheSelectedRowInGroupView)
{
    house_.addImages({0, 4}, 3);
    showGroupWithRow(4);
    const auto question = browser_.killQuestion();
    ASSERT_TRUE(question);
    EXPECT_EQ(question->text, QStringLiteral("Kill ") + imageName(2));
    EXPECT_EQ(question->target, state().DerniereImage(4));
}

TEST_F(Kill, ShowsTheLastTwentyThreeCharactersOfALongName)
{
    const QString name = QStringLiteral("20060307_1405090714 and more.jpg");
    house_.addCamera({0, 4}, {name});
    showGroupWithRow(4);
    EXPECT_EQ(browser_.killQuestion()->text, QStringLiteral("Kill 1405090714 and more.jpg"));
}

TEST_F(Kill, ShowsTheEndOfThePathBeforeAShortName)
{
    house_.addCamera({0, 4}, {QStringLiteral("20060307.jpg")});
    showGroupWithRow(4);
    EXPECT_EQ(browser_.killQuestion()->text,
              QStringLiteral("Kill ") +
                  (house_.capture.table.CameraFolderName({0, 4}) + QStringLiteral("20060307.jpg"))
                      .last(23));
}

TEST_F(Kill, AsksNothingForARowWithoutImage)
{
    house_.addImages({0, 4}, 3);
    showGroupWithRow(5);
    EXPECT_FALSE(browser_.killQuestion());
}

TEST_F(Kill, AsksNothingWhileNoRowIsSelected)
{
    house_.addImages({0, 0}, 3);
    house_.showGroup(0);
    EXPECT_FALSE(browser_.killQuestion());
}

TEST_F(Kill, LetsTheNextNewestTakeTheDeletedOnesPlaceInGroupView)
{
    house_.addImages({0, 1}, 2);
    house_.addCamera({0, 4});
    house_.put({0, 4}, imageName(0), QStringLiteral("2006-03-07T10:00:00"));
    house_.put({0, 4}, imageName(1), QStringLiteral("2006-03-07T11:00:00"));
    showGroupWithRow(4);
    kill(browser_.killQuestion());
    EXPECT_EQ(house_.capture.images({0, 4}), imageNames(0, 1));
    EXPECT_EQ(house_.rows().value(4), imageName(0) + QStringLiteral("  "));
    EXPECT_EQ(house_.cells().value(4), imageName(0));
    EXPECT_EQ(house_.cells().value(1), imageName(1));
}

TEST_F(Kill, KeepsTheRowSelectedInGroupView)
{
    house_.addImages({0, 4}, 2);
    showGroupWithRow(4);
    kill(browser_.killQuestion());
    EXPECT_EQ(browser_.face().cameraRow, 4);
    EXPECT_EQ(house_.framed(), QList<int>({4}));
    EXPECT_EQ(house_.NbI(), QStringLiteral("1"));
}

TEST_F(Kill, EmptiesTheRowBehindACamerasLastImage)
{
    house_.addImages({0, 4}, 1);
    showGroupWithRow(4);
    kill(browser_.killQuestion());
    EXPECT_EQ(house_.rows(), QStringList(kRows));
    EXPECT_EQ(house_.cells(), QStringList(kCells));
    EXPECT_FALSE(browser_.killQuestion());
}

TEST_F(Kill, LogsTheClickThenTheRebuildInGroupView)
{
    house_.addImages({0, 4}, 2);
    showGroupWithRow(4);
    house_.newLog();
    kill(browser_.killQuestion());
    EXPECT_EQ(house_.newLog(), QStringList({QStringLiteral("Planche Vue_Click"),
                                            QStringLiteral("Planche Vue_Click Fin mem faux"),
                                            QStringLiteral("Planche DirImage"),
                                            QStringLiteral("Planche DirImage Fin")}));
}

} // namespace
} // namespace velmora::test
