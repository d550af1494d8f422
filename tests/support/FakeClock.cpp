#include "support/FakeClock.h"

#include <QCoreApplication>
#include <QScopeGuard>
#include <QTimer>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

// Not 0, which code might take for "never".
constexpr std::chrono::milliseconds kFirstMoment = 1000s;

// A chain of events still growing after this many turns feeds itself.
constexpr int kMaxTurns = 10000;

} // namespace

/// A sleep's entry in the table; removed however the coroutine ends.
class FakeClock::SleepEntry
{
public:
    SleepEntry(Sleeps &sleeps, Key key, OneShot<Wake> *wakeUp)
        : sleeps_(sleeps)
        , key_(key)
    {
        sleeps_.emplace(key, wakeUp);
    }

    Q_DISABLE_COPY_MOVE(SleepEntry)

    ~SleepEntry() { sleeps_.erase(key_); }

private:
    Sleeps &sleeps_;
    Key key_;
};

bool FakeClock::EventCounter::eventFilter(QObject *watched, QEvent *event)
{
    ++events;
    return QObject::eventFilter(watched, event);
}

FakeClock::FakeClock(WallTime start)
    : now_(kFirstMoment)
    , localBase_(start)
    , localSince_(now_)
{
    QCoreApplication::instance()->installEventFilter(&counter_);
}

FakeClock::~FakeClock() = default;

WallTime FakeClock::localNow() const
{
    return localBase_ + std::chrono::floor<std::chrono::seconds>(now_ - localSince_);
}

void FakeClock::setLocal(WallTime local)
{
    localBase_ = local;
    localSince_ = now_;
}

QCoro::Task<Wake> FakeClock::sleep(std::chrono::milliseconds duration, std::stop_token stop)
{
    OneShot<Wake> wakeUp;
    const SleepEntry entry(sleeps_, {now_ + duration, ++arrivals_}, &wakeUp);
    const std::stop_callback onStop(std::move(stop), [&wakeUp] { wakeUp.set(Wake::Stopped); });
    const Wake wake = co_await wakeUp;
    co_return wake;
}

QCoro::Task<> FakeClock::yield()
{
    OneShot<bool> turn;
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &timer, [&turn] { turn.set(true); });
    timer.start(0);
    ++yields_;
    const auto done = qScopeGuard([this] { --yields_; });
    const bool turned = co_await turn;
    Q_UNUSED(turned);
}

void FakeClock::advance(std::chrono::milliseconds duration)
{
    const std::chrono::milliseconds end = now_ + duration;
    QCoreApplication::processEvents();
    for (;;) {
        settle();
        const auto first = sleeps_.begin();
        if (first == sleeps_.end() || first->first.first > end) {
            break;
        }
        now_ = std::max(now_, first->first.first);
        OneShot<Wake> *const wakeUp = first->second;
        sleeps_.erase(first);
        wakeUp->set(Wake::Elapsed);
    }
    now_ = end;
    QCoreApplication::processEvents();
    settle();
}

// Posted events alone are ten times as fast as a turn of the loop, which only a yield needs.
void FakeClock::settle()
{
    for (int turn = 0; turn < kMaxTurns; ++turn) {
        const quint64 before = counter_.events;
        QCoreApplication::sendPostedEvents();
        if (yields_ > 0) {
            QCoreApplication::processEvents();
        } else if (counter_.events == before) {
            return;
        }
    }
}

} // namespace velmora::test
