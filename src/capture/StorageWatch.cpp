#include "capture/StorageWatch.h"

namespace velmora {

StorageWatch::StorageWatch(StorageFolder &storage, Clock &clock)
    : storage_(storage)
    , clock_(clock)
{
}

QCoro::Task<> StorageWatch::run(std::stop_token stop)
{
    using namespace std::chrono_literals;
    for (;;) {
        const Wake wake = co_await clock_.sleep(2s, stop);
        if (wake == Wake::Stopped) {
            co_return;
        }
        storage_.recheck();
    }
}

} // namespace velmora
