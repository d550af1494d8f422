// Lookups and edits of a settings text in memory; their combined result on texts of all kinds.
#include "base/ProfileText.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <vector>

namespace velmora {
namespace {

QByteArray applied(const ProfileText &text, const ProfileEdit &edit)
{
    return QByteArray(text.bytes()).replace(edit.offset, edit.removed, edit.inserted);
}

QByteArray set(const QByteArray &before, QByteArrayView section, QByteArrayView key,
               QByteArrayView value)
{
    const ProfileText text(before);
    return applied(text, text.edit(section, key, value));
}

/// The characters with a meaning, and a few without.
QByteArray randomText(std::mt19937 &random, qsizetype maxLength)
{
    static const QByteArray alphabet("[[[]]]===;\r\r\n\n\n  \t\"'sSkKx\0\xe9", 27);
    std::uniform_int_distribution<qsizetype> length(0, maxLength);
    std::uniform_int_distribution<qsizetype> letter(0, alphabet.size() - 1);
    QByteArray text(length(random), '\0');
    for (char &c : text) {
        c = alphabet[letter(random)];
    }
    return text;
}

TEST(ProfileText, FindsNothingInAnEmptyText)
{
    EXPECT_FALSE(ProfileText(QByteArray()).value("s", "k").has_value());
    EXPECT_FALSE(findProfileValue({}, "s", "k").has_value());
}

TEST(ProfileText, FindsLinesOfAnyLengthAndEnd)
{
    for (const QByteArray end : {"\r\n", "\n", "\r", "\n\n", "\r\r\n"}) {
        for (int length = 0; length < 400; ++length) {
            const QByteArray text =
                "[s]" + end + "a=" + QByteArray(length, 'x') + end + "b=2" + end + "c=3";
            EXPECT_EQ(findProfileValue(text, "s", "a"), QByteArray(length, 'x'));
            EXPECT_EQ(findProfileValue(text, "s", "b"), "2");
            EXPECT_EQ(ProfileText(text).value("s", "c"), "3");
        }
    }
}

TEST(ProfileText, TellsAnEmptyValueFromAMissingKey)
{
    const ProfileText text("[s]\r\nk=\r\n");
    EXPECT_TRUE(text.value("s", "k").has_value());
    EXPECT_FALSE(text.value("s", "j").has_value());
    EXPECT_FALSE(text.value("t", "k").has_value());
}

TEST(ProfileText, ChangesNothingForTheValueThatStands)
{
    const ProfileText text("[s]\r\nk=v\r\n");
    EXPECT_TRUE(text.edit("s", "k", QByteArrayView("v")).isEmpty());
    EXPECT_TRUE(text.edit("S", "K", QByteArrayView("v")).isEmpty());
    EXPECT_FALSE(text.edit("s", "k", QByteArrayView("w")).isEmpty());
}

TEST(ProfileText, ChangesNothingToTakeOutAMissingKey)
{
    const ProfileText text("[s]\r\nk=v\r\n");
    EXPECT_TRUE(text.edit("s", "j", std::nullopt).isEmpty());
    EXPECT_TRUE(text.edit("t", "k", std::nullopt).isEmpty());
}

TEST(ProfileText, ReplacesTheValueAlone)
{
    const ProfileText text("[s]\r\nKey=old\r\nj=1\r\n");
    const ProfileEdit edit = text.edit("S", "kEY", QByteArrayView("new one"));
    EXPECT_EQ(edit.offset, 9);
    EXPECT_EQ(edit.removed, 3);
    EXPECT_EQ(edit.inserted, QByteArray("new one"));
}

TEST(ProfileText, PutsANewKeyBehindTheLastOfItsSection)
{
    EXPECT_EQ(set("[s]\r\na=1\r\n\r\n; remark\r\n[t]\r\nb=2\r\n", "s", "k", "v"),
              QByteArray("[s]\r\na=1\r\nk=v\r\n\r\n; remark\r\n[t]\r\nb=2\r\n"));
}

TEST(ProfileText, PutsANewSectionAtTheEnd)
{
    EXPECT_EQ(set("[s]\r\na=1\r\n", "t", "k", "v"), QByteArray("[s]\r\na=1\r\n[t]\r\nk=v\r\n"));
}

TEST(ProfileText, EndsAnOpenLastLineFirst)
{
    EXPECT_EQ(set("[s]\r\na=1", "s", "k", "v"), QByteArray("[s]\r\na=1\r\nk=v\r\n"));
    EXPECT_EQ(set("[s]", "s", "k", "v"), QByteArray("[s]\r\nk=v\r\n"));
    EXPECT_EQ(set("a=1", "s", "k", "v"), QByteArray("a=1\r\n[s]\r\nk=v\r\n"));
}

TEST(ProfileText, EndsAnOpenLastLineWhoseValueItReplaces)
{
    EXPECT_EQ(set("[s]\na=1\nb=2", "s", "b", "x"), QByteArray("[s]\na=1\nb=x\r\n"));
    EXPECT_EQ(set("[s]\nb=", "s", "b", "x"), QByteArray("[s]\nb=x\r\n"));
    EXPECT_EQ(set("[s]\nb=2", "s", "b", "2"), QByteArray("[s]\nb=2")); // nothing to write
}

TEST(ProfileText, KeepsTheLineEndsOfOthers)
{
    EXPECT_EQ(set("[s]\na=1\nb=2\r[t]\r", "s", "a", "x"), QByteArray("[s]\na=x\nb=2\r[t]\r"));
}

TEST(ProfileText, FindsBothWaysTheSameInRandomTexts)
{
    std::mt19937 random(20060307);
    int found = 0;
    for (int i = 0; i < 30000; ++i) {
        const QByteArray bytes =
            (i % 2 == 0 ? QByteArray() : QByteArray("[s]\n")) + randomText(random, 40);
        const ProfileText text(bytes);
        const auto indexed = text.value("s", "k");
        const auto scanned = findProfileValue(bytes, "s", "k");
        ASSERT_EQ(indexed.has_value(), scanned.has_value()) << bytes.toHex().toStdString();
        ASSERT_TRUE(!indexed || *indexed == *scanned) << bytes.toHex().toStdString();
        ProfileText quick(bytes);
        quick.index();
        const auto quickly = quick.value("s", "k");
        ASSERT_EQ(quickly.has_value(), scanned.has_value()) << bytes.toHex().toStdString();
        ASSERT_TRUE(!quickly || *quickly == *scanned) << bytes.toHex().toStdString();
        found += indexed ? 1 : 0;
    }
    EXPECT_GT(found, 500) << "too few of the texts hold the key to say anything";
}

TEST(ProfileText, SetsKeysTogetherAsOneByOneInRandomTexts)
{
    std::mt19937 random(20061005);
    std::uniform_int_distribution<int> some(0, 3);
    const std::array keys = {QByteArray("k"), QByteArray("x"), QByteArray("new"), QByteArray("s")};
    for (int i = 0; i < 20000; ++i) {
        const QByteArray before = (i % 2 == 0 ? QByteArray() : QByteArray("[s]\n[x]\nk=1\n")) +
                                  randomText(random, 40) + (i % 3 == 0 ? "" : "\r\n");
        std::vector<ProfileValue> values;
        QByteArray oneByOne = before;
        for (const QByteArray &key : keys) {
            const QByteArray section = some(random) == 0 ? "x" : "s";
            values.push_back({section, key, QByteArray(some(random), 'v')});
            oneByOne = set(oneByOne, section, key, values.back().value);
        }
        ASSERT_EQ(ProfileText(before).with(values), oneByOne) << before.toHex().toStdString();
    }
}

TEST(ProfileText, ReadsBackWhatItSetInRandomTexts)
{
    std::mt19937 random(19991231);
    for (int i = 0; i < 20000; ++i) {
        const QByteArray before = randomText(random, 40);
        const QByteArray after = set(before, "s", "k", "value");
        const ProfileText text(after);
        ASSERT_TRUE(text.value("s", "k").value_or(QByteArrayView()) == QByteArrayView("value"))
            << before.toHex().toStdString();
        ASSERT_TRUE(text.edit("s", "k", QByteArrayView("value")).isEmpty())
            << before.toHex().toStdString();
    }
}

} // namespace
} // namespace velmora
