// A mail sender that keeps what it is given until the test says how sending ends.
#pragma once

#include "base/OneShot.h"
#include "mail/SmtpClient.h"

#include <memory>
#include <new>

namespace velmora::test {

class MailDouble final : public MailSender
{
public:
    QCoro::Task<std::optional<MailProblem>> send(MailAccount account, QByteArray text,
                                                 std::stop_token stop) override
    {
        if (breaksDown) {
            throw std::bad_alloc();
        }
        accounts.append(account);
        texts.append(text);
        const auto end = end_;
        const std::stop_callback onStop(
            stop, [end] { end->set(MailProblem{MailFailure::Stopped, {}, {}}); });
        const std::optional<MailProblem> problem = co_await *end;
        co_return problem;
    }

    /// Ends the mail under way, and holds the next one.
    void finish(std::optional<MailProblem> problem = {})
    {
        std::exchange(end_, std::make_shared<End>())->set(std::move(problem));
    }

    bool breaksDown = false; // throws, instead of sending
    QList<MailAccount> accounts;
    QByteArrayList texts;

private:
    using End = OneShot<std::optional<MailProblem>>;

    std::shared_ptr<End> end_ = std::make_shared<End>();
};

} // namespace velmora::test
