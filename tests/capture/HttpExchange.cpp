#include "HttpExchange.h"

#include "support/RunTask.h"

namespace velmora::test {
namespace {

QCoro::Task<> fetchInto(PictureSource &source, HttpRequest request, HttpReply &reply)
{
    reply = co_await source.fetch(request, std::stop_token{});
}

QCoro::Task<> awaitAll(std::vector<QCoro::Task<>> tasks)
{
    for (QCoro::Task<> &task : tasks) {
        co_await task;
    }
}

} // namespace

HttpReply HttpExchange::fetch(const HttpRequest &request)
{
    return std::move(fetchAll({request}).front());
}

HttpReply HttpExchange::fetch(const QByteArray &url, HttpForm form)
{
    return fetch(HttpRequest{url, form, kAmpleLimit});
}

std::vector<HttpReply> HttpExchange::fetchAll(const std::vector<HttpRequest> &requests)
{
    std::vector<HttpReply> replies(requests.size());
    std::vector<QCoro::Task<>> tasks;
    for (std::size_t i = 0; i < requests.size(); ++i) {
        HttpRequest request = requests[i];
        request.workFolder = tree_.path();
        tasks.push_back(fetchInto(client_, std::move(request), replies[i]));
    }
    runToEnd(awaitAll(std::move(tasks)), kAmpleLimit);
    return replies;
}

CameraRequest HttpExchange::onlyRequest() const
{
    EXPECT_EQ(camera_.requests().size(), 1);
    return camera_.requests().value(0);
}

} // namespace velmora::test
