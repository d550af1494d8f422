// A real client and a loopback camera, and the event loop between them.
#pragma once

#include "capture/HttpClient.h"
#include "support/LoopbackCamera.h"

#include <QTimer>

#include <gtest/gtest.h>

#include <vector>

namespace velmora::test {

/// Counts the turns that the event loop gave to a timer, and remembers the longest wait for one.
class LoopTicker
{
public:
    LoopTicker();

    [[nodiscard]] int ticks() const { return ticks_; }

    [[nodiscard]] std::chrono::milliseconds longestGap() const { return longestGap_; }

private:
    QTimer timer_;
    std::chrono::steady_clock::time_point last_ = std::chrono::steady_clock::now();
    std::chrono::milliseconds longestGap_{0};
    int ticks_ = 0;
};

class HttpExchange : public testing::Test
{
protected:
    /// Fetches to the end.
    HttpReply fetch(const HttpRequest &request);
    HttpReply fetch(const QByteArray &url, HttpForm form = HttpForm::AsWritten);

    /// Fetches all at the same time, to the end of the last.
    std::vector<HttpReply> fetchAll(const std::vector<HttpRequest> &requests);

    /// The only request that the camera has seen.
    [[nodiscard]] CameraRequest onlyRequest() const;

    LoopbackCamera camera_;
    HttpClient client_;
};

/// Long enough for a loaded machine; a test that needs it fails.
inline constexpr std::chrono::milliseconds kAmpleLimit = std::chrono::seconds{10};

} // namespace velmora::test
