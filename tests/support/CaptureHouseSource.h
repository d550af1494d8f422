// A source of pictures without a network: each address gives what the test has set, at once or
// after a time on the test's clock.
#pragma once

#include "base/Clock.h"
#include "capture/HttpClient.h"
#include "support/Printers.h"

#include <QHash>
#include <QList>

namespace velmora::test {

/// A reply that arrives, unless `failure` says why it does not.
struct ScriptedReply
{
    QByteArray body;
    QString lastModified;
    QString contentType;
    std::chrono::milliseconds delay{0}; // on the test's clock; beyond the request's limit, it fails
    QString failure;
    QString workFolder = {}; // if given, a long body is in a working file there
};

class ScriptedSource final : public PictureSource
{
public:
    explicit ScriptedSource(Clock &clock)
        : clock_(clock)
    {
    }

    /// url: as requested. An address without a script fails.
    void answer(const QString &url, const ScriptedReply &reply);

    QCoro::Task<HttpReply> fetch(HttpRequest request, std::stop_token stop) override;

    /// Addresses in the order of their requests.
    [[nodiscard]] const QList<QByteArray> &requested() const { return requested_; }

    /// Addresses whose fetch was given up.
    [[nodiscard]] const QList<QByteArray> &stopped() const { return stopped_; }

    [[nodiscard]] int underWay() const { return underWay_; }

private:
    [[nodiscard]] ReplyBody bodyOf(const ScriptedReply &script, HttpRequest request);
    QCoro::Task<HttpReply> reply(HttpRequest request, std::stop_token stop);

    Clock &clock_;
    QHash<QByteArray, ScriptedReply> answers_;
    QList<QByteArray> requested_;
    QList<QByteArray> stopped_;
    int underWay_ = 0;
    std::shared_ptr<BodyStock> stock_ = std::make_shared<BodyStock>();
};

} // namespace velmora::test
