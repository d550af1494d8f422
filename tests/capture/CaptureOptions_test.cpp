// Tick length and time-out: which texts are accepted, what they become, and when they are stored.
#include "capture/CaptureOptions.h"

#include "support/TempTree.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

class CaptureOptionsTest : public testing::Test
{
protected:
    void store(const QByteArray &lines) const
    {
        tree_.write(u"Velmora.ini", "[Control]\r\n" + lines);
        options_->load();
    }

    [[nodiscard]] QString stored(QStringView key) const { return settings_.read(u"Control", key); }

    TempTree tree_;
    SettingsFile settings_{tree_.path()};
    std::unique_ptr<CaptureOptions> options_ = std::make_unique<CaptureOptions>(settings_);
};

struct LoadRow
{
    const char *name;
    QByteArray lines;
    QString tempo;
    QString timeout;
};

void PrintTo(const LoadRow &row, std::ostream *out)
{
    *out << row.lines.toStdString();
}

class CaptureOptionsLoad : public CaptureOptionsTest, public testing::WithParamInterface<LoadRow>
{
};

TEST_P(CaptureOptionsLoad, TakesTheStoredTextsAndStoresNothing)
{
    store(GetParam().lines);
    EXPECT_EQ(options_->tempo(), GetParam().tempo);
    EXPECT_EQ(options_->timeout(), GetParam().timeout);
    EXPECT_EQ(tree_.read(u"Velmora.ini"), "[Control]\r\n" + GetParam().lines);
}

const LoadRow kLoads[] = {
    {"Missing", "", QStringLiteral("1"), QStringLiteral("5")},
    {"Zero", "Tempo=0\r\nTIO=0\r\n", QStringLiteral("1"), QStringLiteral("5")},
    {"NoNumber", "Tempo=abc\r\nTIO=abc\r\n", QStringLiteral("1"), QStringLiteral("5")},
    {"Numbers", "Tempo=30\r\nTIO=12\r\n", QStringLiteral("30"), QStringLiteral("12")},
    {"OutOfRange", "Tempo=90\r\nTIO=2\r\n", QStringLiteral("90"), QStringLiteral("2")},
    {"Negative", "Tempo=-5\r\nTIO=-30\r\n", QStringLiteral("-5"), QStringLiteral("-30")},
    {"TempoAsTextTimeoutAsNumber", "Tempo=3s\r\nTIO=7.90 s\r\n", QStringLiteral("3s"),
     QStringLiteral("7.9")},
    {"TimeoutOfManyDigits", "Tempo=2\r\nTIO=1234567\r\n", QStringLiteral("2"),
     QStringLiteral("1234567")},
};

INSTANTIATE_TEST_SUITE_P(CaptureOptions, CaptureOptionsLoad, testing::ValuesIn(kLoads),
                         [](const auto &info) { return std::string(info.param.name); });

TEST_F(CaptureOptionsTest, MakesNoFileByLoading)
{
    options_->load();
    EXPECT_FALSE(tree_.exists(u"Velmora.ini"));
}

struct TempoRow
{
    const char *name;
    QString typed;
    std::chrono::milliseconds interval;
    QString left; // in the box
};

void PrintTo(const TempoRow &row, std::ostream *out)
{
    *out << row.typed.toStdString();
}

class CaptureOptionsTempo : public CaptureOptionsTest, public testing::WithParamInterface<TempoRow>
{
};

TEST_P(CaptureOptionsTempo, IsBroughtIntoRange)
{
    options_->setTempo(GetParam().typed);
    EXPECT_EQ(options_->normaliseTempo(), GetParam().interval);
    EXPECT_EQ(options_->tempo(), GetParam().left);
    EXPECT_EQ(stored(u"Tempo"), GetParam().left);
}

const TempoRow kTempos[] = {
    {"Zero", QStringLiteral("0"), 1s, QStringLiteral("1")},
    {"Empty", QString(), 1s, QStringLiteral("1")},
    {"NoNumber", QStringLiteral("abc"), 1s, QStringLiteral("1")},
    {"Negative", QStringLiteral("-5"), 5s, QStringLiteral("5")},
    {"NegativeBeyond", QStringLiteral("-90"), 60s, QStringLiteral("60")},
    {"Beyond", QStringLiteral("90"), 60s, QStringLiteral("60")},
    {"JustBeyond", QStringLiteral("60.5"), 60s, QStringLiteral("60")},
    {"Longest", QStringLiteral("60"), 60s, QStringLiteral("60")},
    {"Shortest", QStringLiteral("1"), 1s, QStringLiteral("1")},
    {"BelowOne", QStringLiteral("0.4"), 1s, QStringLiteral("1")},
    {"Decimals", QStringLiteral("2.7"), 2700ms, QStringLiteral("2")},
    {"NegativeDecimals", QStringLiteral("-1.5"), 1500ms, QStringLiteral("1")},
    {"Comma", QStringLiteral("2,7"), 2s, QStringLiteral("2")},
    {"Unit", QStringLiteral("12 s"), 12s, QStringLiteral("12")},
    {"Huge", QStringLiteral("1e999"), 60s, QStringLiteral("60")},
};

INSTANTIATE_TEST_SUITE_P(CaptureOptions, CaptureOptionsTempo, testing::ValuesIn(kTempos),
                         [](const auto &info) { return std::string(info.param.name); });

struct TimeoutRow
{
    const char *name;
    QString typed;
    std::chrono::seconds limit;
    QString left; // in the box
};

void PrintTo(const TimeoutRow &row, std::ostream *out)
{
    *out << row.typed.toStdString();
}

class CaptureOptionsTimeout : public CaptureOptionsTest,
                              public testing::WithParamInterface<TimeoutRow>
{
};

TEST_P(CaptureOptionsTimeout, IsPositiveWholeAndAtLeastFive)
{
    options_->setTimeout(GetParam().typed);
    EXPECT_EQ(options_->downloadLimit(), GetParam().limit);
    EXPECT_EQ(options_->timeout(), GetParam().typed) << "asking for the limit changed the box";
    options_->normaliseTimeout();
    EXPECT_EQ(options_->timeout(), GetParam().left);
    EXPECT_EQ(stored(u"TIO"), GetParam().left);
}

const TimeoutRow kTimeouts[] = {
    {"TooShort", QStringLiteral("2"), 5s, QStringLiteral("5")},
    {"Shortest", QStringLiteral("5"), 5s, QStringLiteral("5")},
    {"Negative", QStringLiteral("-30"), 30s, QStringLiteral("30")},
    {"NegativeTooShort", QStringLiteral("-3"), 5s, QStringLiteral("5")},
    {"Decimals", QStringLiteral("7.9"), 7s, QStringLiteral("7")},
    {"Empty", QString(), 5s, QStringLiteral("5")},
    {"NoNumber", QStringLiteral("abc"), 5s, QStringLiteral("5")},
    {"AnHour", QStringLiteral("3600"), 3600s, QStringLiteral("3600")},
    {"MoreThanADay", QStringLiteral("-100000"), 86400s, QStringLiteral("100000")},
    {"Huge", QStringLiteral("99999999999"), 86400s, QStringLiteral("99999999999")},
    {"Infinite", QStringLiteral("1e999"), 86400s, QStringLiteral("1e999")},
};

INSTANTIATE_TEST_SUITE_P(CaptureOptions, CaptureOptionsTimeout, testing::ValuesIn(kTimeouts),
                         [](const auto &info) { return std::string(info.param.name); });

TEST_F(CaptureOptionsTest, StoresEveryChangeAtOnce)
{
    options_->setTempo(QStringLiteral("2.7"));
    options_->setTimeout(QStringLiteral("8 s"));
    EXPECT_EQ(stored(u"Tempo"), QStringLiteral("2.7"));
    EXPECT_EQ(stored(u"TIO"), QStringLiteral("8 s"));
}

TEST_F(CaptureOptionsTest, StoresAndTellsNothingWithoutAChange)
{
    store("Tempo=7\r\nTIO=9\r\n");
    tree_.write(u"Velmora.ini", "[Control]\r\n");
    int told = 0;
    QObject::connect(options_.get(), &CaptureOptions::tempoChanged, options_.get(),
                     [&] { ++told; });
    QObject::connect(options_.get(), &CaptureOptions::timeoutChanged, options_.get(),
                     [&] { ++told; });
    options_->setTempo(QStringLiteral("7"));
    options_->setTimeout(QStringLiteral("9"));
    options_->normaliseTempo();
    options_->normaliseTimeout();
    EXPECT_EQ(told, 0);
    EXPECT_EQ(tree_.read(u"Velmora.ini"), "[Control]\r\n");
}

TEST_F(CaptureOptionsTest, TellsWhatARulePutsIntoTheBox)
{
    QStringList told;
    QObject::connect(options_.get(), &CaptureOptions::tempoChanged, options_.get(),
                     [&](const QString &text) { told.append(text); });
    options_->setTempo(QStringLiteral("90"));
    options_->normaliseTempo();
    EXPECT_EQ(told, (QStringList{QStringLiteral("90"), QStringLiteral("60")}));
}

TEST_F(CaptureOptionsTest, TellsTheBoxesWhatWasLoaded)
{
    QStringList told;
    QObject::connect(options_.get(), &CaptureOptions::tempoChanged, options_.get(),
                     [&](const QString &text) { told.append(text); });
    QObject::connect(options_.get(), &CaptureOptions::timeoutChanged, options_.get(),
                     [&](const QString &text) { told.append(text); });
    store("Tempo=7\r\nTIO=9\r\n");
    EXPECT_EQ(told, (QStringList{QStringLiteral("7"), QStringLiteral("9")}));
}

TEST_F(CaptureOptionsTest, LeavesATickLengthAloneWhileItIsTyped)
{
    options_->beginTempoEdit();
    options_->setTempo(QString());
    EXPECT_EQ(options_->normaliseTempo(), 1s);
    EXPECT_EQ(options_->tempo(), QString());
    options_->setTempo(QStringLiteral("90"));
    EXPECT_EQ(options_->normaliseTempo(), 60s);
    EXPECT_EQ(options_->tempo(), QStringLiteral("90"));
    options_->endTempoEdit();
    EXPECT_EQ(options_->tempo(), QStringLiteral("60"));
    EXPECT_EQ(stored(u"Tempo"), QStringLiteral("60"));
}

TEST_F(CaptureOptionsTest, LeavesATimeOutAloneWhileItIsTyped)
{
    options_->beginTimeoutEdit();
    options_->setTimeout(QStringLiteral("3"));
    options_->normaliseTimeout();
    EXPECT_EQ(options_->downloadLimit(), 5s);
    EXPECT_EQ(options_->timeout(), QStringLiteral("3"));
    options_->endTimeoutEdit();
    EXPECT_EQ(options_->timeout(), QStringLiteral("5"));
}

TEST_F(CaptureOptionsTest, PutsNothingRightWhenNoRuleAskedForItMeanwhile)
{
    options_->beginTempoEdit();
    options_->setTempo(QStringLiteral("2.7"));
    options_->endTempoEdit();
    EXPECT_EQ(options_->tempo(), QStringLiteral("2.7"));
    EXPECT_EQ(options_->normaliseTempo(), 2700ms);
    EXPECT_EQ(options_->tempo(), QStringLiteral("2"));
}

/// One of the two boxes, in hand.
struct BoxInHand
{
    const char *name;
    QStringView key;
    void (CaptureOptions::*begin)();
    void (CaptureOptions::*end)();
    void (CaptureOptions::*type)(const QString &);
    const QString &(CaptureOptions::*text)() const;
};

class NamedElsewhere : public CaptureOptionsTest, public testing::WithParamInterface<BoxInHand>
{
protected:
    NamedElsewhere()
    {
        store("Tempo=7\r\nTIO=9\r\n");
        (options_.get()->*GetParam().begin)();
    }

    /// Another program sets both values, and says so.
    void name(const QString &tempo, const QString &timeout)
    {
        settings_.write(u"Control", u"Tempo", tempo);
        settings_.write(u"Control", u"TIO", timeout);
        options_->adoptStored();
    }

    void type(const QString &text) { (options_.get()->*GetParam().type)(text); }

    void leave() { (options_.get()->*GetParam().end)(); }

    [[nodiscard]] QString shown() const { return (options_.get()->*GetParam().text)(); }
};

TEST_P(NamedElsewhere, WaitsUntilTheUnchangedBoxIsLeft)
{
    const QString before = shown();
    name(QStringLiteral("20"), QStringLiteral("20"));
    EXPECT_EQ(shown(), before);
    leave();
    EXPECT_EQ(shown(), QStringLiteral("20"));
    EXPECT_EQ(stored(GetParam().key), QStringLiteral("20"));
}

// The file without the values has the defaults; a command changes something else.
TEST_P(NamedElsewhere, StoresNoDefaultThatWasOnlyShown)
{
    leave();
    store("");
    (options_.get()->*GetParam().begin)();
    settings_.write(u"Liste0", u"lst0", u"http://cam/a.jpg");
    options_->adoptStored();
    leave();
    EXPECT_EQ(stored(GetParam().key), QString());
}

TEST_P(NamedElsewhere, IsTakenAtOnceByTheOtherBox)
{
    const QString before = shown();
    name(QStringLiteral("20"), QStringLiteral("20"));
    const QStringList texts{options_->tempo(), options_->timeout()};
    EXPECT_EQ(texts.count(QStringLiteral("20")), 1);
    EXPECT_EQ(texts.count(before), 1);
}

TEST_P(NamedElsewhere, YieldsToWhatIsTyped)
{
    name(QStringLiteral("20"), QStringLiteral("20"));
    type(QStringLiteral("30"));
    name(QStringLiteral("21"), QStringLiteral("21"));
    leave();
    EXPECT_EQ(shown(), QStringLiteral("30"));
    EXPECT_EQ(stored(GetParam().key), QStringLiteral("30"));
}

TEST_P(NamedElsewhere, IsBroughtIntoRangeByARuleThatWaited)
{
    name(QStringLiteral("-2000000"), QStringLiteral("-2000000"));
    options_->normaliseTempo();
    options_->normaliseTimeout();
    leave();
    EXPECT_NE(shown(), QStringLiteral("-2000000"));
}

const BoxInHand kBoxes[] = {
    {"Tempo", u"Tempo", &CaptureOptions::beginTempoEdit, &CaptureOptions::endTempoEdit,
     &CaptureOptions::setTempo, &CaptureOptions::tempo},
    {"Timeout", u"TIO", &CaptureOptions::beginTimeoutEdit, &CaptureOptions::endTimeoutEdit,
     &CaptureOptions::setTimeout, &CaptureOptions::timeout},
};

INSTANTIATE_TEST_SUITE_P(CaptureOptions, NamedElsewhere, testing::ValuesIn(kBoxes),
                         [](const auto &info) { return std::string(info.param.name); });

} // namespace
} // namespace velmora::test
