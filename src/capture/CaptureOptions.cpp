#include "capture/CaptureOptions.h"

#include "base/LeadingNumber.h"
#include "settings/Keys.h"

#include <algorithm>
#include <cmath>

namespace velmora {
namespace {

constexpr int kDigits = 15; // a number shown as text has no more
constexpr double kMinTempo = 1;
constexpr double kMaxTempo = 60;
constexpr double kMinTimeout = 5;
constexpr double kMaxTimeout = 24.0 * 3600; // a longer wait would not fit libcurl's milliseconds
constexpr double kMaxExact = 1e15;          // whole numbers up to here are written as they are

double clampedTempo(QStringView text)
{
    return std::clamp(std::abs(leadingNumber(text)), kMinTempo, kMaxTempo);
}

double wholeTimeout(QStringView text)
{
    return std::max(std::trunc(std::abs(leadingNumber(text))), kMinTimeout);
}

// The text stays as typed, although no more than a day is ever in force.
QString timeoutText(QStringView text)
{
    const double whole = wholeTimeout(text);
    return whole <= kMaxExact ? QString::number(whole, 'f', 0) : text.toString();
}

QString wholeText(double number)
{
    return QString::number(static_cast<int>(number));
}

// A stored text as the box shows it; 0 or no number counts as the default.
QString shownTempo(const QString &stored)
{
    return leadingNumber(stored) == 0 ? QStringLiteral("1") : stored;
}

QString shownTimeout(const QString &stored)
{
    const double timeout = leadingNumber(stored);
    return timeout == 0 ? QStringLiteral("5") : QString::number(timeout, 'g', kDigits);
}

} // namespace

CaptureOptions::CaptureOptions(const SettingsFile &settings)
    : tempo_(settings, keys::kTempo, shownTempo)
    , timeout_(settings, keys::kTIO, shownTimeout)
{
    connect(&tempo_, &EditedOption::changed, this, &CaptureOptions::tempoChanged);
    connect(&timeout_, &EditedOption::changed, this, &CaptureOptions::timeoutChanged);
}

void CaptureOptions::load()
{
    tempo_.load();
    timeout_.load();
}

void CaptureOptions::adoptStored()
{
    tempo_.adoptStored();
    timeout_.adoptStored();
}

void CaptureOptions::endTempoEdit()
{
    if (tempo_.endEdit()) {
        normaliseTempo();
    }
}

void CaptureOptions::endTimeoutEdit()
{
    if (timeout_.endEdit()) {
        normaliseTimeout();
    }
}

QString storedTempo(const SettingsSnapshot &settings)
{
    return wholeText(clampedTempo(keys::kTempo.read(settings)));
}

QString storedTimeout(const SettingsSnapshot &settings)
{
    return timeoutText(keys::kTIO.read(settings));
}

void setStoredTempo(SettingsDraft &draft, QStringView text)
{
    keys::kTempo.write(draft, wholeText(clampedTempo(text)));
}

void setStoredTimeout(SettingsDraft &draft, QStringView text)
{
    keys::kTIO.write(draft, timeoutText(text));
}

std::chrono::milliseconds CaptureOptions::normaliseTempo()
{
    const double seconds = clampedTempo(tempo());
    tempo_.correct(wholeText(seconds));
    return std::chrono::round<std::chrono::milliseconds>(std::chrono::duration<double>(seconds));
}

std::chrono::seconds CaptureOptions::downloadLimit() const
{
    return std::chrono::seconds{static_cast<int>(std::min(wholeTimeout(timeout()), kMaxTimeout))};
}

void CaptureOptions::normaliseTimeout()
{
    timeout_.correct(timeoutText(timeout()));
}

} // namespace velmora
