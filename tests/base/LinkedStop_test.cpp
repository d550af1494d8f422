// A job that stops with its service, or alone.
#include "base/LinkedStop.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(LinkedStop, StopsTheJobWithItsService)
{
    std::stop_source service;
    std::stop_source job;
    const LinkedStop link(service.get_token(), job);
    EXPECT_FALSE(job.stop_requested());
    service.request_stop();
    EXPECT_TRUE(job.stop_requested());
}

TEST(LinkedStop, StopsAJobThatBeginsTooLate)
{
    std::stop_source service;
    std::stop_source job;
    service.request_stop();
    const LinkedStop link(service.get_token(), job);
    EXPECT_TRUE(job.stop_requested());
}

TEST(LinkedStop, LeavesTheServiceAloneAndTheNextJob)
{
    std::stop_source service;
    std::stop_source job;
    const std::stop_source first = job;
    const LinkedStop link(service.get_token(), job);
    job.request_stop();
    EXPECT_FALSE(service.stop_requested());
    job = std::stop_source(); // that of the next job
    service.request_stop();
    EXPECT_TRUE(first.stop_requested());
    EXPECT_FALSE(job.stop_requested());
}

} // namespace
} // namespace velmora
