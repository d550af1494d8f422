#include "capture/CaptureOptions.h"

#include "base/LeadingNumber.h"
#include "settings/Keys.h"

#include <algorithm>
#include <cmath>
#include <utility>

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

// In force no more than a day counts; the text stays what was asked for.
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
    : settings_(settings)
{
}

void CaptureOptions::load()
{
    tempo_ = shownTempo(keys::kTempo.read(settings_));
    timeout_ = shownTimeout(keys::kTIO.read(settings_));
    Q_EMIT tempoChanged(tempo_);
    Q_EMIT timeoutChanged(timeout_);
}

void CaptureOptions::adoptStored()
{
    const QString tempo = keys::kTempo.read(settings_);
    if (!tempoHand_.keepsWaiting(tempo, tempo_)) {
        tempo_ = shownTempo(tempo);
        Q_EMIT tempoChanged(tempo_);
    }
    const QString timeout = keys::kTIO.read(settings_);
    if (!timeoutHand_.keepsWaiting(timeout, timeout_)) {
        timeout_ = shownTimeout(timeout);
        Q_EMIT timeoutChanged(timeout_);
    }
}

void CaptureOptions::setTempo(const QString &text)
{
    if (text != tempo_) {
        storeTempo(text);
    }
}

void CaptureOptions::storeTempo(const QString &text)
{
    tempo_ = text;
    keys::kTempo.write(settings_, tempo_);
    Q_EMIT tempoChanged(tempo_);
}

void CaptureOptions::setTimeout(const QString &text)
{
    if (text != timeout_) {
        storeTimeout(text);
    }
}

void CaptureOptions::storeTimeout(const QString &text)
{
    timeout_ = text;
    keys::kTIO.write(settings_, timeout_);
    Q_EMIT timeoutChanged(timeout_);
}

void CaptureOptions::Hand::begin(const QString &text)
{
    edits = true;
    before = text;
}

bool CaptureOptions::Hand::mayPutRight()
{
    ruleWaits = edits;
    return !edits;
}

bool CaptureOptions::Hand::keepsWaiting(const QString &stored, const QString &text)
{
    elsewhere = edits && stored != text ? std::optional(stored) : std::nullopt;
    return edits;
}

bool CaptureOptions::Hand::end()
{
    edits = false;
    return std::exchange(ruleWaits, false);
}

void CaptureOptions::beginTempoEdit()
{
    tempoHand_.begin(tempo_);
}

void CaptureOptions::endTempoEdit()
{
    if (const auto stored = std::exchange(tempoHand_.elsewhere, std::nullopt)) {
        storeTempo(tempo_ == tempoHand_.before ? shownTempo(*stored) : tempo_);
    }
    if (tempoHand_.end()) {
        normaliseTempo();
    }
}

void CaptureOptions::beginTimeoutEdit()
{
    timeoutHand_.begin(timeout_);
}

void CaptureOptions::endTimeoutEdit()
{
    if (const auto stored = std::exchange(timeoutHand_.elsewhere, std::nullopt)) {
        storeTimeout(timeout_ == timeoutHand_.before ? shownTimeout(*stored) : timeout_);
    }
    if (timeoutHand_.end()) {
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
    const double seconds = clampedTempo(tempo_);
    if (tempoHand_.mayPutRight()) {
        setTempo(wholeText(seconds));
    }
    return std::chrono::round<std::chrono::milliseconds>(std::chrono::duration<double>(seconds));
}

std::chrono::seconds CaptureOptions::downloadLimit() const
{
    return std::chrono::seconds{static_cast<int>(std::min(wholeTimeout(timeout_), kMaxTimeout))};
}

void CaptureOptions::normaliseTimeout()
{
    if (timeoutHand_.mayPutRight()) {
        setTimeout(timeoutText(timeout_));
    }
}

} // namespace velmora
