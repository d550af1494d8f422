#include "base/WorkSlice.h"

namespace velmora {

QCoro::Task<> letEventsRun(WorkSlice *slice, Clock *clock)
{
    if (slice->isOver()) {
        co_await clock->yield();
        slice->begin();
    }
}

} // namespace velmora
