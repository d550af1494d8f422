// An import from a camera's folder whose images of the older form of name get the current one.
#include "ImportTest.h"

#include <QDir>
#include <QRegularExpression>

namespace velmora::test {
namespace {

constexpr CameraAddress kSource{0, 1};
constexpr int kFiles = 90;

class ImportRenaming : public ImportTest
{
protected:
    ImportRenaming()
    {
        addCamera({0, 0});
        addCamera(kSource);
        for (int i = 0; i < kFiles; ++i) {
            house_.putImage(kSource, QStringLiteral("20060306_120%1.jpg").arg(i + 100));
        }
        store(u"Dir", QStringLiteral("C:\\in\\http%3A%2F%2Fcam%2F%30%2F%31%2Fpicture%2Ejpg"));
        load();
    }

    void launchRenaming() { house_.scope.launch(house_.engine.conformity().run()); }

    void expectAllCopiedAndRenamed()
    {
        finish();
        EXPECT_EQ(messages_, QStringList{QStringLiteral("90 files copied")})
            << face().failure.toStdString();
        const QRegularExpression shortForm(QStringLiteral("^.{15}\\."));
        EXPECT_EQ(house_.images(kSource).filter(shortForm), QStringList());
    }
};

TEST_F(ImportRenaming, WaitsForTheEndOfTheCopy)
{
    ASSERT_EQ(listed().size(), kFiles);
    import_.go();
    launchRenaming();
    expectAllCopiedAndRenamed();
}

TEST_F(ImportRenaming, EndsBeforeTheCopyBegins)
{
    launchRenaming();
    import_.go();
    EXPECT_TRUE(face().running);
    expectAllCopiedAndRenamed();
}

TEST_F(ImportRenaming, LeavesTheCopyTheTargetWithWhichItBegan)
{
    const QString target = house_.tree.path(house_.folder({0, 0}));
    const QSignalSpy added(&import_, &Import::imagesAdded);
    launchRenaming();
    import_.go();
    house_.addCamera({0, 0}, QStringLiteral("http://cam/another.jpg"));
    import_.noticeAddress({0, 0});
    finish();
    EXPECT_EQ(messages_, QStringList{QStringLiteral("90 files copied")});
    EXPECT_EQ(added.value(0).value(0).toString(), target);
    EXPECT_EQ(QDir(target).entryList(QDir::Files).size(), kFiles);
}

TEST_F(ImportRenaming, IsNotWaitedForOnceTheCopyIsToEnd)
{
    launchRenaming();
    import_.go();
    import_.close();
    finish();
    EXPECT_FALSE(face().running);
    EXPECT_EQ(house_.images({0, 0}), QStringList());
}

} // namespace
} // namespace velmora::test
