// What a user may choose for a camera beyond its row.
#include "cameras/CameraChoices.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(CameraText, IsReadBackAsItWasWritten)
{
    EXPECT_EQ(cameraText({3, 7}), QStringLiteral("3:7"));
    EXPECT_EQ(cameraFromText(u"3:7"), (CameraAddress{3, 7}));
    for (const QStringView wrong : {u"", u"3", u"3:", u"3:10", u"a:1", u"-1:0", u"3:7 ", u"3-7"}) {
        EXPECT_FALSE(cameraFromText(wrong)) << wrong.toString().toStdString();
    }
}

TEST(KeepText, IsReadBackAsItWasWritten)
{
    for (const KeepChoice &choice :
         {KeepChoice{}, KeepChoice{Keep::Differing, 0}, KeepChoice{Keep::Clearly, 1},
          KeepChoice{Keep::Clearly, 100}}) {
        EXPECT_EQ(keepFromText(keepText(choice)), choice);
    }
    for (const QStringView wrong : {u"", u"Dated", u"clearly", u"clearly:", u"clearly:x",
                                    u"clearly:1%", u"clearly:+5", u"clearly: 5"}) {
        EXPECT_FALSE(keepFromText(wrong)) << wrong.toString().toStdString();
    }
    EXPECT_FALSE(keepFromText(u"clearly:0")->isInRange());
    EXPECT_FALSE(keepFromText(u"clearly:101")->isInRange());
}

TEST(CameraChoices, AreReadBack)
{
    SettingsDraft draft("[Control]\r\nTempo=1\r\n");
    setCameraName(draft, {3, 7}, u"  \"Gate\" ");
    setCameraKeep(draft, {3, 7}, {Keep::Clearly, 5});
    setCameraLogin(draft, {3, 7}, {QStringLiteral("me"), QStringLiteral("'x'")});
    EXPECT_EQ(cameraName(draft.snapshot(), {3, 7}), QStringLiteral("\"Gate\""));
    EXPECT_EQ(cameraKeep(draft.snapshot(), {3, 7}), (KeepChoice{Keep::Clearly, 5}));
    EXPECT_EQ(cameraLogin(draft.snapshot(), {3, 7}),
              (CameraLogin{QStringLiteral("me"), QStringLiteral("'x'")}));
    EXPECT_EQ(cameraName(draft.snapshot(), {3, 6}), QString());
}

TEST(CameraChoices, KeepALoginToTheLetter)
{
    for (const QString &text :
         {QStringLiteral(" me "), QStringLiteral("\" me \""), QStringLiteral(" "),
          QStringLiteral("'x "), QString(254, u'p'), u' ' + QString(253, u'p')}) {
        SettingsDraft draft("");
        const CameraLogin login{text, text};
        ASSERT_EQ(loginRefusal(login), std::nullopt);
        setCameraLogin(draft, {3, 7}, login);
        EXPECT_EQ(cameraLogin(draft.snapshot(), {3, 7}), login) << draft.bytes().toStdString();
    }
}

TEST(CameraChoices, RefuseALoginThatCannotBeKept)
{
    for (const QString &text :
         {QStringLiteral("日本"), QStringLiteral("a\nb"), QString(255, u'p')}) {
        EXPECT_TRUE(loginRefusal({text, {}})) << text.toStdString();
        EXPECT_TRUE(loginRefusal({QStringLiteral("me"), text}));
    }
    EXPECT_EQ(loginRefusal({}), std::nullopt);
}

TEST(CameraChoices, LeaveAFileAsItIsWhenNothingIsChosen)
{
    const QByteArray before = "[Control]\r\nTempo=1\r\n";
    SettingsDraft draft(before);
    setCameraName(draft, {0, 0}, {});
    setCameraKeep(draft, {0, 0}, {});
    setCameraLogin(draft, {0, 0}, {});
    forgetCamera(draft, {0, 0});
    EXPECT_EQ(draft.bytes(), before);
}

TEST(CameraChoices, GoWithTheCamera)
{
    SettingsDraft draft("[Health]\r\nNotices=0\r\nNever36=1\r\nNever37=1\r\n");
    setCameraName(draft, {3, 7}, u"Gate");
    forgetCamera(draft, {3, 7});
    EXPECT_EQ(cameraName(draft.snapshot(), {3, 7}), QString());
    EXPECT_EQ(draft.read(u"Health", u"Never37"), QString());
    EXPECT_EQ(draft.read(u"Health", u"Never36"), QStringLiteral("1"));
    EXPECT_EQ(draft.read(u"Health", u"Notices"), QStringLiteral("0"));
}

TEST(CameraChoices, AreTheUsualOnesInADamagedFile)
{
    const SettingsSnapshot settings(
        "[Camera00]\r\nKeep=clearly:900\r\nName=" + QByteArray(200, 'n') + "\r\n");
    EXPECT_EQ(cameraKeep(settings, {0, 0}), KeepChoice{});
    EXPECT_EQ(cameraName(settings, {0, 0}).size(), kMaxNameLength);
}

TEST(NameRefusal, TellsWhatCannotBeAName)
{
    EXPECT_FALSE(nameRefusal(u"Garage, \"north\" — é"));
    EXPECT_FALSE(nameRefusal({}));
    EXPECT_TRUE(nameRefusal(u"a\nb"));
    EXPECT_TRUE(nameRefusal(u"\u202Eabc"));
    EXPECT_TRUE(nameRefusal(QString(61, u'n')));
}

} // namespace
} // namespace velmora
