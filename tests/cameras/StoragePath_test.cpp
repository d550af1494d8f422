// The text of the storage folder: what cleaning removes, the levels in which it is made, and where
// the caret stays during typing.
#include "cameras/StoragePath.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace velmora {
namespace {

struct TextRow
{
    const char *name;
    QString from;
    QString to;
};

const std::vector<TextRow> &cleanings()
{
    static const std::vector<TextRow> rows = {
        {"no separator at the end", QStringLiteral("C:\\in"), QStringLiteral("C:\\in\\")},
        {"separator at the end", QStringLiteral("C:\\in\\"), QStringLiteral("C:\\in\\")},
        {"blanks", QStringLiteral("D:\\My Pics\\"), QStringLiteral("D:\\MyPics\\")},
        {"blank at the end", QStringLiteral("C:\\in\\ "), QStringLiteral("C:\\in\\")},
        {"empty", QString(), QStringLiteral("\\")},
        {"separator alone", QStringLiteral("\\"), QStringLiteral("\\")},
        {"two separators alone", QStringLiteral("\\\\"), QStringLiteral("\\")},
        {"three separators alone", QStringLiteral("\\\\\\"), QString()},
        {"doubled inside goes whole", QStringLiteral("C:\\\\in"), QStringLiteral("C:in\\")},
        {"three inside leave one", QStringLiteral("C:\\\\\\in"), QStringLiteral("C:\\in\\")},
        {"two at the end", QStringLiteral("C:\\in\\\\"), QStringLiteral("C:\\in\\")},
        {"three at the end", QStringLiteral("C:\\in\\\\\\"), QStringLiteral("C:\\in")},
        {"network path", QStringLiteral("\\\\srv\\cams"), QStringLiteral("srv\\cams\\")},
        {"doubled by a blank", QStringLiteral("C:\\a\\ \\b"), QStringLiteral("C:\\ab\\")},
        {"doubled by a forbidden character", QStringLiteral("C:\\a\\*\\b"),
         QStringLiteral("C:\\a\\\\b\\")},
        {"slash", QStringLiteral("C:/in"), QStringLiteral("C:in\\")},
        {"all forbidden characters", QStringLiteral("C:\\i/*?><\"|n"), QStringLiteral("C:\\in\\")},
        {"only forbidden characters", QStringLiteral("/*?><\"|"), QStringLiteral("\\")},
        {"forbidden character at the end", QStringLiteral("C:\\in\\*"),
         QStringLiteral("C:\\in\\\\")},
        {"colon inside", QStringLiteral("C:\\i:n"), QStringLiteral("C:\\i:n\\")},
        {"tab stays", QStringLiteral("C:\\i\tn"), QStringLiteral("C:\\i\tn\\")},
        {"beyond ASCII", QStringLiteral("C:\\d\u00e9p\u00f4t"),
         QStringLiteral("C:\\d\u00e9p\u00f4t\\")},
    };
    return rows;
}

const std::vector<TextRow> &pathsToMake()
{
    static const std::vector<TextRow> rows = {
        {"clean", QStringLiteral("C:\\in\\"), QStringLiteral("C:\\in\\")},
        {"no separator at the end", QStringLiteral("C:\\in"), QStringLiteral("C:\\in\\")},
        {"blanks", QStringLiteral(" C:\\i n\\ "), QStringLiteral("C:\\in\\")},
        {"doubled", QStringLiteral("C:\\\\in\\\\"), QStringLiteral("C:\\in\\")},
        {"empty", QString(), QStringLiteral("\\")},
    };
    return rows;
}

struct LevelRow
{
    const char *name;
    QString path;
    QStringList levels;
};

const std::vector<LevelRow> &levels()
{
    static const std::vector<LevelRow> rows = {
        {"one level", QStringLiteral("C:\\in\\"), {QStringLiteral("C:\\in\\")}},
        {"three levels",
         QStringLiteral("C:\\a\\b\\c\\"),
         {QStringLiteral("C:\\a\\"), QStringLiteral("C:\\a\\b\\"),
          QStringLiteral("C:\\a\\b\\c\\")}},
        {"drive alone", QStringLiteral("C:\\"), {}},
        {"no separator behind the drive", QStringLiteral("C:in\\"), {QStringLiteral("C:in\\")}},
        {"from the root",
         QStringLiteral("\\srv\\cams\\"),
         {QStringLiteral("\\srv\\"), QStringLiteral("\\srv\\cams\\")}},
        {"short names from the root", QStringLiteral("\\a\\b\\"), {QStringLiteral("\\a\\b\\")}},
        {"what is behind the last separator",
         QStringLiteral("C:\\in\\rest"),
         {QStringLiteral("C:\\in\\")}},
        {"empty", QString(), {}},
    };
    return rows;
}

/// A text box that is cleaned at each keystroke, like the storage box.
class CleanedBox
{
public:
    void type(const QString &keys)
    {
        for (const QChar key : keys) {
            replace(text_.first(caret_) + key + text_.sliced(caret_), caret_ + 1);
        }
    }

    void backspace() { replace(QString(text_).remove(caret_ - 1, 1), caret_ - 1); }

    void moveTo(int caret) { caret_ = caret; }

    [[nodiscard]] const QString &text() const { return text_; }

    [[nodiscard]] QString beforeCaret() const { return text_.first(caret_); }

private:
    void replace(const QString &typed, int caret)
    {
        caret_ = caretAfterCleaning(withBackslashes(typed), caret);
        text_ = FormRep(withBackslashes(typed).trimmed());
    }

    QString text_;
    int caret_ = 0;
};

struct TypingRow
{
    const char *name;
    QString keys;
    QString text;
    QString beforeCaret;
};

const std::vector<TypingRow> &typings()
{
    static const std::vector<TypingRow> rows = {
        {"path", QStringLiteral("C:\\in\\cam"), QStringLiteral("C:\\in\\cam\\"),
         QStringLiteral("C:\\in\\cam")},
        {"separator at the end", QStringLiteral("C:\\in\\"), QStringLiteral("C:\\in\\"),
         QStringLiteral("C:\\in\\")},
        {"slashes", QStringLiteral("C:/in/cam"), QStringLiteral("C:\\in\\cam\\"),
         QStringLiteral("C:\\in\\cam")},
        {"blanks", QStringLiteral("C:\\my pics\\a b"), QStringLiteral("C:\\mypics\\ab\\"),
         QStringLiteral("C:\\mypics\\ab")},
        {"forbidden characters", QStringLiteral("C:\\i*n?"), QStringLiteral("C:\\in\\"),
         QStringLiteral("C:\\in")},
        {"from the root", QStringLiteral("\\srv\\cams"), QStringLiteral("\\srv\\cams\\"),
         QStringLiteral("\\srv\\cams")},
        {"one letter", QStringLiteral("C"), QStringLiteral("C\\"), QStringLiteral("C")},
        {"nothing but blanks", QStringLiteral("   "), QStringLiteral("\\"), QString()},
    };
    return rows;
}

TEST(FormRep, CleansExactly)
{
    for (const TextRow &row : cleanings()) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(FormRep(row.from), row.to);
    }
}

TEST(StoragePath, ReducesDoubledSeparatorsOfThePathToMake)
{
    for (const TextRow &row : pathsToMake()) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(pathToMake(row.from), row.to);
    }
}

TEST(StoragePath, TakesLevelsFromTheFourthCharacterOn)
{
    for (const LevelRow &row : levels()) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(pathLevels(row.path), row.levels);
    }
}

TEST(StoragePath, TakesATypedSlashForABackslash)
{
    EXPECT_EQ(withBackslashes(QStringLiteral("C:/a\\b/")), QStringLiteral("C:\\a\\b\\"));
}

TEST(StoragePath, LetsAPathBeTypedKeyByKey)
{
    for (const TypingRow &row : typings()) {
        SCOPED_TRACE(row.name);
        CleanedBox box;
        box.type(row.keys);
        EXPECT_EQ(box.text(), row.text);
        EXPECT_EQ(box.beforeCaret(), row.beforeCaret);
    }
}

TEST(StoragePath, LetsTheMiddleOfAPathBeChanged)
{
    CleanedBox box;
    box.type(QStringLiteral("C:\\in\\cam"));
    box.moveTo(5);
    box.type(QStringLiteral("s i*de"));
    EXPECT_EQ(box.text(), QStringLiteral("C:\\inside\\cam\\"));
    EXPECT_EQ(box.beforeCaret(), QStringLiteral("C:\\inside"));
}

TEST(StoragePath, LetsAPathBeErasedFromItsEnd)
{
    CleanedBox box;
    box.type(QStringLiteral("C:\\in\\cam"));
    for (int i = 0; i < 4; ++i) {
        box.backspace();
    }
    EXPECT_EQ(box.text(), QStringLiteral("C:\\in\\"));
    EXPECT_EQ(box.beforeCaret(), QStringLiteral("C:\\in"));
}

TEST(StoragePath, KeepsTheCaretInsideTheCleanedText)
{
    static const QString alphabet = QStringLiteral("C:\\\\\\/ *a");
    std::mt19937 random(20060307);
    std::uniform_int_distribution<qsizetype> letter(0, alphabet.size() - 1);
    for (int i = 0; i < 5000; ++i) {
        QString typed;
        for (int length = i % 12; length > 0; --length) {
            typed += alphabet[letter(random)];
        }
        const qsizetype cleaned = FormRep(typed.trimmed()).size();
        for (int caret = -1; caret <= typed.size() + 1; ++caret) {
            const int after = caretAfterCleaning(typed, caret);
            ASSERT_TRUE(after >= 0 && after <= cleaned)
                << typed.toStdString() << " at " << caret << " gives " << after;
        }
    }
}

} // namespace
} // namespace velmora
