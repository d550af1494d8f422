// A real client and a loopback camera, with the event loop between them.
#pragma once

#include "capture/HttpClient.h"
#include "support/LoopTurns.h"
#include "support/LoopbackCamera.h"
#include "support/TempTree.h"

#include <gtest/gtest.h>

#include <vector>

namespace velmora::test {

class HttpExchange : public testing::Test
{
protected:
    explicit HttpExchange(const std::optional<AuthorityPlaces> &authorities = {})
        : client_(authorities)
    {
    }

    /// Fetches to the end.
    HttpReply fetch(const HttpRequest &request);
    HttpReply fetch(const QByteArray &url, HttpForm form = HttpForm::AsWritten);

    /// Fetches all at the same time, until the last has ended.
    std::vector<HttpReply> fetchAll(const std::vector<HttpRequest> &requests);

    /// True when a transfer was ended by its time limit and nothing else.
    [[nodiscard]] static bool ranOutOfTime(const HttpReply &reply)
    {
        return reply.failure.contains(QStringLiteral("timeout"), Qt::CaseInsensitive);
    }

    /// The only request that the camera has seen.
    [[nodiscard]] CameraRequest onlyRequest() const;

    TempTree tree_; // for working files
    LoopbackCamera camera_;
    HttpClient client_;
};

/// Long enough for a loaded machine; a test that needs it fails.
inline constexpr std::chrono::milliseconds kAmpleLimit = std::chrono::seconds{10};

} // namespace velmora::test
