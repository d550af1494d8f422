// Computing the days and hours of a camera's images, and a film's picks, from the names that the
// browser has read.
#include "browser/DayCounts.h"
#include "tools/FilmRange.h"

#include <QDateTime>

#include <benchmark/benchmark.h>

namespace {

using namespace velmora;

constexpr qint64 kFirstMinute = 18'993'600; // 2006

/// One image a minute.
ImageNames listOf(qint64 count)
{
    ImageNamesBuilder builder;
    for (qint64 i = 0; i < count; ++i) {
        const QDateTime time = QDateTime::fromSecsSinceEpoch((kFirstMinute + i) * 60, Qt::UTC);
        builder.add(time.toString(QStringLiteral("yyyyMMdd_HHmmssddHH")).toLatin1() + ".jpg");
    }
    while (builder.sortSome()) {
    }
    return builder.take();
}

void BM_CalendarOpens(benchmark::State &state)
{
    const ImageNames names = listOf(state.range(0));
    for (const auto &turn : state) {
        static_cast<void>(turn);
        const std::vector<DayCount> days = countDays(names);
        benchmark::DoNotOptimize(countHours(names, days.back().day));
    }
}

void BM_FilmOfCertainHours(benchmark::State &state)
{
    const ImageNames names = listOf(state.range(0));
    const auto span = filmSpan(QStringLiteral("2006-01-01"), QStringLiteral("2016-01-01"));
    for (const auto &turn : state) {
        static_cast<void>(turn);
        benchmark::DoNotOptimize(filmPicks(names, *span, {6, 20}).count());
    }
}

} // namespace

BENCHMARK(BM_CalendarOpens)->Arg(20'000)->Arg(500'000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FilmOfCertainHours)->Arg(20'000)->Arg(500'000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
