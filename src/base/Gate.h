// A gate at which coroutines wait while it is shut.
#pragma once

#include "base/OneShot.h"

#include <QCoro/QCoroTask>

#include <memory>
#include <stop_token>
#include <vector>

namespace velmora {

/// Any number may wait. Must outlive its waiters.
class Gate
{
public:
    void shut() { shut_ = true; }

    /// Lets all waiters go on, each from the event loop.
    void open();

    /// Returns at once while the gate is open, otherwise when it opens or a stop is requested.
    QCoro::Task<> pass(std::stop_token stop);

private:
    std::vector<std::shared_ptr<OneShot<bool>>> waiting_;
    bool shut_ = false;
};

} // namespace velmora
