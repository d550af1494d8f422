// Which storage folder is in force while its box is being edited, and afterwards.
#include "cameras/StorageFolder.h"
#include "cameras/StorageFolderFixture.h"

#include <QCoreApplication>

namespace velmora {
namespace {

using test::StorageFolderTest;

QCoro::Task<> walk(Gate &gate, std::stop_token stop, bool &passed)
{
    co_await gate.pass(std::move(stop));
    passed = true;
}

bool letsThrough(Gate &gate)
{
    std::stop_source stop;
    bool passed = false;
    const QCoro::Task<> task = walk(gate, stop.get_token(), passed);
    const bool passedAtOnce = passed;
    stop.request_stop();
    QCoreApplication::sendPostedEvents();
    return passedAtOnce;
}

class FolderInForce : public StorageFolderTest
{
protected:
    FolderInForce()
    {
        makeStorage();
        tree.makeFolder(u"drives/c/other");
        storage.load();
        storage.testSA();
        storage.beginEdit();
    }

    [[nodiscard]] bool isInForce(const QString &text) const { return storage.inForce() == text; }

    /// Another program names a storage folder, and says so.
    void nameElsewhere(const QString &text)
    {
        ASSERT_EQ(settings.change([&](SettingsDraft &draft) { setStorage(draft, text); }),
                  SettingsChange::Made);
        storage.adoptStored();
    }

    StorageFolder next{table, paths, log, problems}; // that of the next start
    const QString kBefore = QStringLiteral("C:\\in\\");
    const QString kOther = QStringLiteral("C:\\other\\");
};

TEST_F(FolderInForce, StaysWhileAnotherIsTyped)
{
    storage.edit(QStringLiteral("C:\\other"));
    EXPECT_EQ(storage.text(), kOther);
    EXPECT_EQ(setting(u"Control", u"StRep"), kOther);
    EXPECT_EQ(storage.lastCheck(), StorageCheck::Found);
    EXPECT_TRUE(isInForce(kBefore));
    EXPECT_EQ(storage.folderText(u"\\a\\"), QStringLiteral("C:\\in\\\\a\\"));
    EXPECT_FALSE(storage.isUsable());
    EXPECT_FALSE(letsThrough(storage.gate()));
}

TEST_F(FolderInForce, IsTheTextOfABoxThatWasLeft)
{
    storage.edit(QStringLiteral("C:\\other"));
    storage.putInForce();
    EXPECT_TRUE(isInForce(kOther));
    EXPECT_TRUE(storage.isUsable());
    EXPECT_TRUE(letsThrough(storage.gate()));
}

TEST_F(FolderInForce, IsAChosenFolderAtOnce)
{
    EXPECT_TRUE(storage.choose(tree.path(u"drives/c/other")));
    EXPECT_TRUE(isInForce(kOther));
    EXPECT_TRUE(storage.isUsable());
    EXPECT_FALSE(storage.isBeingEdited());
}

TEST_F(FolderInForce, IsAMadeFolderAtOnce)
{
    storage.edit(QStringLiteral("C:\\new"));
    storage.MakeDir_Click();
    EXPECT_TRUE(isInForce(QStringLiteral("C:\\new\\")));
    EXPECT_TRUE(storage.isUsable());
    EXPECT_EQ(told, QStringList{QStringLiteral("The storage folder C:\\new\\ was made")});
}

TEST_F(FolderInForce, WaitsBehindAnotherWindowWithAChangedText)
{
    storage.edit(QStringLiteral("C:\\other"));
    storage.setAside();
    EXPECT_TRUE(isInForce(kBefore));
    EXPECT_TRUE(storage.isBeingEdited());
}

TEST_F(FolderInForce, IsUsedAgainBehindAnotherWindowWithAnUnchangedText)
{
    storage.edit(QStringLiteral("C:\\other"));
    storage.edit(QStringLiteral("C:\\in"));
    storage.setAside();
    EXPECT_FALSE(storage.isBeingEdited());
    EXPECT_TRUE(storage.isUsable());
}

TEST_F(FolderInForce, IsGivenBackByAnEmptiedBox)
{
    storage.edit(QString());
    EXPECT_EQ(storage.text(), QStringLiteral("\\"));
    storage.setAside();
    EXPECT_TRUE(storage.isBeingEdited());
    storage.putInForce();
    EXPECT_TRUE(isInForce(kBefore));
    EXPECT_EQ(storage.text(), kBefore);
    EXPECT_EQ(setting(u"Control", u"StRep"), kBefore);
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told.first().contains(QStringLiteral("stays C:\\in\\")));
}

TEST_F(FolderInForce, IsGivenBackByTheNextStartAfterAKillWithAnEmptiedBox)
{
    storage.edit(QString());
    ASSERT_EQ(setting(u"Control", u"StRep"), QStringLiteral("\\"));
    next.load();
    EXPECT_TRUE(next.inForce() == kBefore && next.text() == kBefore);
    EXPECT_EQ(setting(u"Control", u"StRep"), kBefore);
    EXPECT_EQ(setting(u"Velmora", u"StorageBefore"), QString());
}

TEST_F(FolderInForce, IsTheTypedOneForTheNextStartAfterAKillInTheMiddleOfATextThatBeganEmpty)
{
    storage.edit(QString());
    storage.edit(QStringLiteral("C:\\ot"));
    next.load();
    EXPECT_EQ(next.inForce(), QStringLiteral("C:\\ot\\"));
    EXPECT_EQ(setting(u"Velmora", u"StorageBefore"), QString());
}

TEST_F(FolderInForce, IsTheRootForTheNextStartWhenThatWasChosen)
{
    storage.edit(QString());
    ASSERT_TRUE(storage.choose(QStringLiteral("/")));
    next.load();
    EXPECT_EQ(next.inForce(), QStringLiteral("\\"));
}

TEST_F(FolderInForce, StaysWhenALetterIsTypedIntoAnEmptiedBoxAndTakenOutAgain)
{
    const QString before = storage.inForce();
    storage.edit(QString());
    storage.edit(QStringLiteral("\\x"));
    storage.edit(QStringLiteral("\\\\"));
    storage.putInForce();
    EXPECT_TRUE(isInForce(before));
}

TEST_F(FolderInForce, IsTheOneNamedElsewhereOnceTheUnchangedBoxIsLeft)
{
    nameElsewhere(kOther);
    EXPECT_TRUE(isInForce(kBefore)) << "before its time";
    storage.putInForce();
    EXPECT_TRUE(isInForce(kOther));
    EXPECT_EQ(storage.text(), kOther);
    EXPECT_EQ(setting(u"Control", u"StRep"), kOther);
}

TEST_F(FolderInForce, IsTheOneNamedElsewhereOnceTheUnchangedBoxIsSetAside)
{
    nameElsewhere(kOther);
    storage.setAside();
    EXPECT_TRUE(isInForce(kOther));
}

TEST_F(FolderInForce, IsTheOneNamedElsewhereWhenWhatWasTypedIsTakenBack)
{
    nameElsewhere(kOther);
    storage.edit(QStringLiteral("C:\\ino"));
    storage.edit(QStringLiteral("C:\\in"));
    storage.putInForce();
    EXPECT_TRUE(isInForce(kOther));
    EXPECT_EQ(setting(u"Control", u"StRep"), kOther);
}

TEST_F(FolderInForce, IsTheOneNamedElsewhereThoughItWasTypedTooAndTakenBack)
{
    nameElsewhere(kOther);
    storage.edit(QStringLiteral("C:\\other"));
    storage.adoptStored(); // of another setting
    storage.edit(QStringLiteral("C:\\in"));
    storage.putInForce();
    EXPECT_TRUE(isInForce(kOther));
}

TEST_F(FolderInForce, IsNotOneThatWasOnlyTypedWhenAnotherSettingIsChanged)
{
    storage.edit(QStringLiteral("C:\\other"));
    storage.adoptStored();
    storage.edit(QStringLiteral("C:\\in"));
    storage.putInForce();
    EXPECT_TRUE(isInForce(kBefore));
}

// It is stored already, as the user's.
TEST_F(FolderInForce, IsNotOneThatWasTypedAndTakenBackThoughACommandNamedThatVeryText)
{
    storage.edit(kOther);
    nameElsewhere(kOther);
    storage.edit(kBefore);
    storage.putInForce();
    EXPECT_TRUE(isInForce(kBefore));
    EXPECT_EQ(setting(u"Control", u"StRep"), kBefore);
}

TEST_F(FolderInForce, IsTheOneNamedElsewhereAfterAnEmptiedBox)
{
    storage.edit(QString());
    nameElsewhere(kOther);
    storage.putInForce();
    EXPECT_TRUE(isInForce(kOther));
    EXPECT_EQ(setting(u"Control", u"StRep"), kOther);
    EXPECT_EQ(told, QStringList());
}

TEST_F(FolderInForce, IsTheTypedOneWhateverWasNamedElsewhere)
{
    tree.makeFolder(u"drives/c/typed");
    storage.edit(QStringLiteral("C:\\typed"));
    nameElsewhere(kOther);
    storage.putInForce();
    EXPECT_TRUE(isInForce(QStringLiteral("C:\\typed\\")));
    EXPECT_EQ(setting(u"Control", u"StRep"), QStringLiteral("C:\\typed\\"));
}

TEST_F(FolderInForce, IsTheChosenOneWhateverWasNamedElsewhere)
{
    nameElsewhere(kOther);
    ASSERT_TRUE(storage.choose(tree.path(u"drives/c/in")));
    EXPECT_TRUE(isInForce(kBefore));
    EXPECT_EQ(setting(u"Control", u"StRep"), kBefore);
}

TEST_F(FolderInForce, IsTheLastOneNamedElsewhere)
{
    nameElsewhere(kOther);
    nameElsewhere(kBefore);
    storage.putInForce();
    EXPECT_TRUE(isInForce(kBefore));
}

TEST_F(FolderInForce, IsTheLastOneNamedElsewhereThoughItIsTheOneBeforeAnEmptiedBox)
{
    storage.beginEdit();
    nameElsewhere(kOther);
    storage.edit(QString());
    nameElsewhere(kBefore);
    storage.putInForce();
    EXPECT_TRUE(isInForce(kBefore));
    EXPECT_EQ(setting(u"Control", u"StRep"), kBefore);
}

TEST_F(FolderInForce, StaysWhenTheSettingsCannotHoldWhatWasTyped)
{
    for (const QString &typed :
         {QStringLiteral("C:\\in\\日本"), QStringLiteral("C:\\") + QString(300, u'a')}) {
        shown.clear();
        storage.edit(typed);
        EXPECT_EQ(setting(u"Control", u"StRep"), kBefore) << "what the next start would use";
        storage.putInForce();
        EXPECT_TRUE(isInForce(kBefore));
        EXPECT_EQ(storage.text(), kBefore);
        EXPECT_EQ(setting(u"Control", u"StRep"), kBefore);
        ASSERT_EQ(shown.size(), 1);
        EXPECT_TRUE(shown.first().contains(QStringLiteral("Western European")));
    }
}

TEST_F(FolderInForce, IsTheOneNamedElsewhereThoughFoldersOfCamerasAreMadeMeanwhile)
{
    storage.putInForce();
    const auto name = [this] {
        EXPECT_EQ(settings.change([this](SettingsDraft &draft) { setStorage(draft, kOther); }),
                  SettingsChange::Made);
    };
    QObject::connect(&storage, &StorageFolder::checked, &storage, name);
    storage.makeMissing();
    EXPECT_EQ(settings.read(u"Control", u"StRep"), kOther);
    storage.adoptStored();
    EXPECT_TRUE(isInForce(kOther));
}

TEST_F(FolderInForce, IsTheLastOneNamedElsewhereThoughItIsHeardOfOnceTheBoxIsLeft)
{
    nameElsewhere(kOther);
    EXPECT_EQ(settings.change(
                  [](SettingsDraft &draft) { setStorage(draft, QStringLiteral("C:\\third")); }),
              SettingsChange::Made);
    storage.putInForce();
    storage.adoptStored();
    EXPECT_TRUE(isInForce(QStringLiteral("C:\\third\\"))) << storage.inForce().toStdString();
}

TEST_F(FolderInForce, StaysWhenWhatIsToBeMadeCannotBeStored)
{
    storage.edit(QStringLiteral("C:\\日本"));
    storage.MakeDir_Click();
    EXPECT_TRUE(isInForce(kBefore));
    EXPECT_FALSE(tree.exists(u"drives/c/日本"));
    EXPECT_EQ(shown.size(), 1);
}

TEST_F(FolderInForce, HasAnotherVersionForWhateverBeganBefore)
{
    storage.putInForce();
    const StorageUse use(storage);
    EXPECT_TRUE(use.mayGoOn());
    storage.testSA();
    storage.MakeDir_Click();
    EXPECT_TRUE(use.mayGoOn()) << "the same folder is in force";
    storage.beginEdit();
    EXPECT_FALSE(use.mayGoOn());
    storage.putInForce();
    EXPECT_FALSE(use.mayGoOn());
}

} // namespace
} // namespace velmora
