#include "health/NoticeMail.h"

#include "base/DateText.h"

#include <QScopeGuard>

#include <algorithm>
#include <utility>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr auto kGather = 20s; // failures with a common cause come together
constexpr auto kPause = 10min;
constexpr qsizetype kMostLines = 200;

} // namespace

NoticeMail::NoticeMail(const SettingsFile &settings, MailSender &sender, Clock &clock,
                       TaskScope &scope)
    : mailer_(settings, sender, clock)
    , options_(settings)
    , clock_(clock)
    , scope_(scope)
{
}

void NoticeMail::add(const QString &text)
{
    if (!options_.isOn(HealthChoice::Mail) || scope_.stopToken().stop_requested()) {
        return;
    }
    waiting_.append(dateText(clock_.localNow()) + QStringLiteral("  ") + text);
    if (waiting_.size() > kMostLines) {
        waiting_.removeFirst();
        inMail_ = std::max<qsizetype>(0, inMail_ - 1);
    }
    if (!running_) {
        running_ = true;
        scope_.launch(run());
    }
}

QCoro::Task<> NoticeMail::run()
{
    const auto atEnd = qScopeGuard([this] { running_ = false; });
    while (!waiting_.isEmpty()) {
        const std::chrono::milliseconds now = clock_.monotonicNow();
        const std::chrono::milliseconds rest = last_ ? *last_ + kPause - now : 0ms;
        const auto pause = std::max<std::chrono::milliseconds>(kGather, rest);
        const Wake wake = co_await clock_.sleep(pause, scope_.stopToken());
        if (wake == Wake::Stopped) {
            co_return;
        }
        co_await post();
    }
}

QCoro::Task<> NoticeMail::post()
{
    if (!options_.isOn(HealthChoice::Mail)) { // no longer
        waiting_.clear();
        co_return;
    }
    last_ = clock_.monotonicNow();
    inMail_ = waiting_.size();
    const auto problem = co_await mailer_.send(QStringLiteral("Velmora: cameras"),
                                               waiting_.join(u'\n') + u'\n', scope_.stopToken());
    const qsizetype sent = std::exchange(inMail_, 0);
    if (!problem || isOfSettings(problem->kind)) {
        waiting_.remove(0, sent);
    }
    if (problem && problem->kind != MailFailure::Stopped) {
        Q_EMIT failed(mailProblemText(*problem));
    }
}

} // namespace velmora
