// Pictures loaded one per turn of the event loop.
#include "pictures/PictureLoader.h"

#include "PictureMaker.h"
#include "support/FakeClock.h"
#include "support/TempTree.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace velmora {
namespace {

using namespace test;
using namespace std::chrono_literals;

class PictureLoaderTest : public testing::Test
{
protected:
    PictureLoaderTest()
    {
        for (int i = 0; i < 5; ++i) {
            tree_.write(name(i), encoded(quarters({32 + i, 32}), "png"));
        }
        QObject::connect(&loader_, &PictureLoader::loaded, &loader_,
                         [this](const PictureOrder &order, const QImage &image) {
                             log_.append(QString::number(order.place));
                             images_.append(image);
                             onLoaded_(order);
                         });
        QObject::connect(&loader_, &PictureLoader::finished, &loader_,
                         [this] { log_.append(QStringLiteral("finished")); });
    }

    ~PictureLoaderTest() override
    {
        scope_.requestStop();
        clock_.advance(0ms);
    }

    static QString name(int place) { return QString::number(place) + QStringLiteral(".png"); }

    [[nodiscard]] PictureOrder order(int place) const
    {
        return {place, tree_.path(name(place)), {{100, 100}, Fit::KeepShape}};
    }

    [[nodiscard]] QList<PictureOrder> orders(std::initializer_list<int> places) const
    {
        QList<PictureOrder> list;
        for (const int place : places) {
            list.append(order(place));
        }
        return list;
    }

    void remember(int place)
    {
        static_cast<void>(cache_.read(order(place).path, order(place).wish));
    }

    void run() { clock_.advance(0ms); }

    [[nodiscard]] QString log() const { return log_.join(QLatin1Char(' ')); }

    TempTree tree_;
    PictureCache cache_{1 << 20};
    FakeClock clock_;
    QStringList reports_;
    TaskScope scope_{[this](const QString &text) { reports_.append(text); }};
    PictureLoader loader_{cache_, clock_, scope_};
    QStringList log_;
    QList<QImage> images_;
    std::function<void(const PictureOrder &)> onLoaded_ = [](const PictureOrder &) {};
};

TEST_F(PictureLoaderTest, LoadsInTheGivenOrder)
{
    loader_.load(orders({2, 0, 1}));
    EXPECT_EQ(log(), QString());
    run();
    EXPECT_EQ(log(), QStringLiteral("2 0 1 finished"));
    EXPECT_EQ(images_.at(0).size(), QSize(34, 32));
    EXPECT_EQ(images_.at(2).size(), QSize(33, 32));
}

TEST_F(PictureLoaderTest, GivesTheEventLoopATurnBeforeEachPicture)
{
    onLoaded_ = [this](const PictureOrder &) {
        QMetaObject::invokeMethod(
            &loader_, [this] { log_.append(QStringLiteral("turn")); }, Qt::QueuedConnection);
    };
    loader_.load(orders({0, 1, 2}));
    run();
    EXPECT_EQ(log(), QStringLiteral("0 turn 1 turn 2 finished turn"));
}

TEST_F(PictureLoaderTest, DeliversWhatIsRememberedWithinTheCall)
{
    remember(1);
    remember(3);
    loader_.load(orders({0, 1, 2, 3}));
    EXPECT_EQ(log(), QStringLiteral("1 3"));
    run();
    EXPECT_EQ(log(), QStringLiteral("1 3 0 2 finished"));
}

TEST_F(PictureLoaderTest, IsDoneWithinTheCallWhenAllIsRemembered)
{
    remember(0);
    remember(1);
    loader_.load(orders({0, 1}));
    EXPECT_EQ(log(), QStringLiteral("0 1 finished"));
    EXPECT_EQ(scope_.running(), 0);
    run();
    EXPECT_EQ(log(), QStringLiteral("0 1 finished"));
}

TEST_F(PictureLoaderTest, IsDoneAtOnceWithNothingToLoad)
{
    loader_.load({});
    EXPECT_EQ(log(), QStringLiteral("finished"));
}

TEST_F(PictureLoaderTest, AbandonsAnOlderLoadForANewerOne)
{
    loader_.load(orders({0, 1, 2}));
    loader_.load(orders({3, 4}));
    run();
    EXPECT_EQ(log(), QStringLiteral("3 4 finished"));
    EXPECT_EQ(cache_.decodes(), 2);
}

TEST_F(PictureLoaderTest, GivesATurnBeforeEachPictureOfANewerLoadToo)
{
    onLoaded_ = [this](const PictureOrder &) {
        QMetaObject::invokeMethod(
            &loader_, [this] { log_.append(QStringLiteral("turn")); }, Qt::QueuedConnection);
    };
    loader_.load(orders({0, 1, 2}));
    loader_.load(orders({3, 4}));
    EXPECT_EQ(scope_.running(), 1);
    run();
    EXPECT_EQ(log(), QStringLiteral("3 turn 4 finished turn"));
}

TEST_F(PictureLoaderTest, AbandonsAnOlderLoadThatHasBegun)
{
    onLoaded_ = [this](const PictureOrder &order) {
        if (order.place == 0) {
            loader_.load(orders({3, 4}));
        }
    };
    loader_.load(orders({0, 1, 2}));
    run();
    EXPECT_EQ(log(), QStringLiteral("0 3 4 finished"));
}

TEST_F(PictureLoaderTest, AbandonsAnOlderLoadThatIsRemembered)
{
    remember(0);
    remember(1);
    remember(2);
    onLoaded_ = [this](const PictureOrder &order) {
        if (order.place == 0) {
            loader_.load(orders({2}));
        }
    };
    loader_.load(orders({0, 1}));
    run();
    EXPECT_EQ(log(), QStringLiteral("0 2 finished"));
}

TEST_F(PictureLoaderTest, AbandonsForNothing)
{
    loader_.load(orders({0, 1}));
    loader_.load({});
    run();
    EXPECT_EQ(log(), QStringLiteral("finished"));
    EXPECT_EQ(cache_.decodes(), 0);
}

TEST_F(PictureLoaderTest, FinishesOnceWhenTheLastListenerAsksForMore)
{
    onLoaded_ = [this](const PictureOrder &order) {
        if (order.place == 1) {
            loader_.load(orders({2}));
        }
    };
    loader_.load(orders({0, 1}));
    run();
    EXPECT_EQ(log(), QStringLiteral("0 1 2 finished"));
}

TEST_F(PictureLoaderTest, LoadsAgainAfterItFinished)
{
    loader_.load(orders({0}));
    run();
    loader_.load(orders({0, 1}));
    run();
    EXPECT_EQ(log(), QStringLiteral("0 finished 0 1 finished"));
    EXPECT_EQ(cache_.decodes(), 2);
}

TEST_F(PictureLoaderTest, IsIdleWhenNothingWaits)
{
    EXPECT_TRUE(loader_.isIdle());
    loader_.load(orders({0, 1}));
    EXPECT_FALSE(loader_.isIdle());
    run();
    EXPECT_TRUE(loader_.isIdle());
}

TEST_F(PictureLoaderTest, IsNotIdleWhileTheRememberedAreDelivered)
{
    remember(0);
    bool wasIdle = true;
    onLoaded_ = [&](const PictureOrder &order) {
        wasIdle = order.place == 0 ? loader_.isIdle() : wasIdle;
    };
    loader_.load(orders({0, 1}));
    EXPECT_FALSE(wasIdle);
}

TEST_F(PictureLoaderTest, DeliversANullImageWhenThereIsNoPicture)
{
    tree_.write(u"0.png", "text");
    loader_.load({order(0), {7, tree_.path(u"none.png"), {}}, order(1)});
    run();
    EXPECT_EQ(log(), QStringLiteral("0 7 1 finished"));
    EXPECT_TRUE(images_.at(0).isNull());
    EXPECT_TRUE(images_.at(1).isNull());
    EXPECT_FALSE(images_.at(2).isNull());
}

TEST_F(PictureLoaderTest, DeliversNothingAfterAStop)
{
    loader_.load(orders({0, 1}));
    scope_.requestStop();
    run();
    EXPECT_EQ(log(), QString());
    EXPECT_EQ(scope_.running(), 0);
    EXPECT_TRUE(loader_.isIdle());
}

TEST_F(PictureLoaderTest, DeliversNothingMoreWhenAListenerStopsIt)
{
    remember(0);
    remember(1);
    onLoaded_ = [this](const PictureOrder &) { scope_.requestStop(); };
    loader_.load(orders({0, 1, 2}));
    run();
    EXPECT_EQ(log(), QStringLiteral("0"));
}

TEST_F(PictureLoaderTest, StartsNothingAfterAStop)
{
    remember(0);
    scope_.requestStop();
    loader_.load(orders({0, 1}));
    EXPECT_EQ(scope_.running(), 0);
    run();
    EXPECT_EQ(log(), QString());
}

TEST_F(PictureLoaderTest, WorksOnAfterAListenerThrew)
{
    onLoaded_ = [](const PictureOrder &) { throw std::runtime_error("overflow"); };
    loader_.load(orders({0, 1}));
    run();
    EXPECT_EQ(reports_, QStringList{QStringLiteral("overflow")});
    EXPECT_TRUE(loader_.isIdle());
    onLoaded_ = [](const PictureOrder &) {};
    loader_.load(orders({2}));
    run();
    EXPECT_EQ(log(), QStringLiteral("0 2 finished"));
}

} // namespace
} // namespace velmora
