#include "BenchHouse.h"

#include <QEventLoop>

#include <algorithm>

namespace velmora::bench {
namespace {

constexpr double kNsPerMs = 1e6;
constexpr int kTurnsToPaint = 50; // of a timer that fires every millisecond
constexpr int kTickBeforeLast = 59;

} // namespace

House::House(const QString &programFolder)
    : engine_(programFolder, clock_, http_)
    , view_(engine_)
    , window_({engine_.timer(), engine_.table(), engine_.storage(), engine_.options(),
               engine_.debugSwitch(), engine_.log(), view_, opener_})
{
    engine_.storage().load();
    engine_.options().load();
    view_.page().load();
    engine_.storage().testSA();
    engine_.start();
    window_.bringUp();
    QObject::connect(&gapTimer_, &QTimer::timeout, &gapTimer_, [this] {
        const double ms = processorMs();
        longestGapNs_ = std::max(longestGapNs_, gap_.nsecsElapsed());
        longestTurnMs_ = std::max(longestTurnMs_, ms - turnBeganMs_);
        turnBeganMs_ = ms;
        gap_.restart();
    });
    gapTimer_.setTimerType(Qt::PreciseTimer);
    gap_.start();
    gapTimer_.start(1);
}

House::~House()
{
    window_.allowClose();
    close();
}

void House::close()
{
    run(engine_.close());
}

void House::run(QCoro::Task<> task)
{
    QEventLoop loop;
    const auto drive = [](QCoro::Task<> what, QEventLoop &until, bool &done) -> QCoro::Task<> {
        co_await what;
        done = true;
        until.quit();
    };
    bool done = false;
    const auto driver = drive(std::move(task), loop, done);
    if (!done) {
        loop.exec();
    }
}

double House::passMs()
{
    engine_.timer().stop();
    engine_.scheduler().setTickCounter(kTickBeforeLast);
    QElapsedTimer timer;
    timer.start();
    gap_.restart();
    turnBeganMs_ = processorMs();
    run(engine_.scheduler().Timer_Timer());
    const double elapsed = msSince(timer);
    engine_.timer().stop();
    return elapsed;
}

void House::idleTick()
{
    engine_.timer().stop();
    engine_.scheduler().setTickCounter(0);
    run(engine_.scheduler().Timer_Timer());
    engine_.timer().stop();
}

void House::paintFirst()
{
    for (int turn = 0; turn < kTurnsToPaint; ++turn) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

double House::longestGapMs()
{
    return static_cast<double>(std::exchange(longestGapNs_, 0)) / kNsPerMs;
}

double House::longestTurnMs()
{
    return std::exchange(longestTurnMs_, 0);
}

} // namespace velmora::bench
