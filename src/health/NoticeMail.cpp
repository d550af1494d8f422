#include "health/NoticeMail.h"

#include "base/DateText.h"
#include "tools/MailText.h"

#include <QScopeGuard>
#include <QUuid>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr auto kGather = 20s; // failures with a common cause come together
constexpr auto kPause = 10min;
constexpr qsizetype kMostLines = 200;

} // namespace

NoticeMail::NoticeMail(const SettingsFile &settings, MailSender &sender, Clock &clock,
                       TaskScope &scope)
    : settings_(settings)
    , options_(settings)
    , sender_(sender)
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
    const auto account = mailAccount(settings_.snapshot());
    const auto *const checked = std::get_if<MailAccount>(&account);
    if (checked == nullptr) {
        waiting_.clear();
        Q_EMIT failed(mailProblemText(std::get<MailProblem>(account)));
        co_return;
    }
    const qsizetype lines = waiting_.size();
    const QByteArray text =
        mailText({checked->from, checked->to, QStringLiteral("Velmora: cameras"),
                  waiting_.join(u'\n') + u'\n', clock_.localNow(), clock_.utcOffset(),
                  QUuid::createUuid().toByteArray(QUuid::Id128)});
    const auto problem = co_await sender_.send(*checked, text, scope_.stopToken());
    if (!problem) {
        waiting_.remove(0, std::min(lines, waiting_.size()));
    } else if (problem->kind != MailFailure::Stopped) {
        Q_EMIT failed(mailProblemText(*problem));
    }
}

} // namespace velmora
