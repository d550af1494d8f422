// Stops a job together with the service that runs it.
#pragma once

#include <stop_token>
#include <utility>

namespace velmora {

/// As long as it lives, a stop of `outer` stops the job too, which can also be stopped alone.
class LinkedStop
{
public:
    LinkedStop(std::stop_token outer, std::stop_source job)
        : link_(std::move(outer), Request{std::move(job)})
    {
    }

private:
    struct Request
    {
        std::stop_source job;

        void operator()() const { job.request_stop(); }
    };

    std::stop_callback<Request> link_;
};

} // namespace velmora
