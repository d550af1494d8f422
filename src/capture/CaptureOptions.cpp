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

double clampedTempo(QStringView text)
{
    return std::clamp(std::abs(leadingNumber(text)), kMinTempo, kMaxTempo);
}

double clampedTimeout(QStringView text)
{
    return std::clamp(std::trunc(std::abs(leadingNumber(text))), kMinTimeout, kMaxTimeout);
}

QString wholeText(double number)
{
    return QString::number(static_cast<int>(number));
}

} // namespace

CaptureOptions::CaptureOptions(const SettingsFile &settings)
    : settings_(settings)
{
}

void CaptureOptions::load()
{
    const QString tempo = keys::kTempo.read(settings_);
    tempo_ = leadingNumber(tempo) == 0 ? QStringLiteral("1") : tempo;
    const double timeout = leadingNumber(keys::kTIO.read(settings_));
    timeout_ = timeout == 0 ? QStringLiteral("5") : QString::number(timeout, 'g', kDigits);
    Q_EMIT tempoChanged(tempo_);
    Q_EMIT timeoutChanged(timeout_);
}

void CaptureOptions::adoptStored()
{
    if (!tempoHand_.edits && !timeoutHand_.edits) {
        load();
    }
}

void CaptureOptions::setTempo(const QString &text)
{
    if (text == tempo_) {
        return;
    }
    tempo_ = text;
    keys::kTempo.write(settings_, tempo_);
    Q_EMIT tempoChanged(tempo_);
}

void CaptureOptions::setTimeout(const QString &text)
{
    if (text == timeout_) {
        return;
    }
    timeout_ = text;
    keys::kTIO.write(settings_, timeout_);
    Q_EMIT timeoutChanged(timeout_);
}

bool CaptureOptions::Hand::mayPutRight()
{
    ruleWaits = edits;
    return !edits;
}

bool CaptureOptions::Hand::end()
{
    edits = false;
    return std::exchange(ruleWaits, false);
}

void CaptureOptions::beginTempoEdit()
{
    tempoHand_.edits = true;
}

void CaptureOptions::endTempoEdit()
{
    if (tempoHand_.end()) {
        normaliseTempo();
    }
}

void CaptureOptions::beginTimeoutEdit()
{
    timeoutHand_.edits = true;
}

void CaptureOptions::endTimeoutEdit()
{
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
    return wholeText(clampedTimeout(keys::kTIO.read(settings)));
}

void setStoredTempo(SettingsDraft &draft, QStringView text)
{
    keys::kTempo.write(draft, wholeText(clampedTempo(text)));
}

void setStoredTimeout(SettingsDraft &draft, QStringView text)
{
    keys::kTIO.write(draft, wholeText(clampedTimeout(text)));
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
    return std::chrono::seconds{static_cast<int>(clampedTimeout(timeout_))};
}

void CaptureOptions::normaliseTimeout()
{
    if (timeoutHand_.mayPutRight()) {
        setTimeout(QString::number(downloadLimit().count()));
    }
}

} // namespace velmora
