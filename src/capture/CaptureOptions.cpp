#include "capture/CaptureOptions.h"

#include "base/LeadingNumber.h"

#include <algorithm>
#include <cmath>

namespace velmora {
namespace {

const QString kControl = QStringLiteral("Control");
const QString kTempo = QStringLiteral("Tempo");
const QString kTIO = QStringLiteral("TIO");
constexpr int kDigits = 15; // a number as text shows no more
constexpr double kMinTempo = 1;
constexpr double kMaxTempo = 60;
constexpr double kMinTimeout = 5;
constexpr double kMaxTimeout = 24.0 * 3600; // a longer wait would not fit libcurl's milliseconds

} // namespace

CaptureOptions::CaptureOptions(const SettingsFile &settings)
    : settings_(settings)
{
}

void CaptureOptions::load()
{
    const QString tempo = settings_.read(kControl, kTempo);
    tempo_ = leadingNumber(tempo) == 0 ? QStringLiteral("1") : tempo;
    const double timeout = settings_.number(kControl, kTIO);
    timeout_ = timeout == 0 ? QStringLiteral("5") : QString::number(timeout, 'g', kDigits);
    Q_EMIT tempoChanged(tempo_);
    Q_EMIT timeoutChanged(timeout_);
}

void CaptureOptions::setTempo(const QString &text)
{
    if (text == tempo_) {
        return;
    }
    tempo_ = text;
    settings_.write(kControl, kTempo, tempo_);
    Q_EMIT tempoChanged(tempo_);
}

void CaptureOptions::setTimeout(const QString &text)
{
    if (text == timeout_) {
        return;
    }
    timeout_ = text;
    settings_.write(kControl, kTIO, timeout_);
    Q_EMIT timeoutChanged(timeout_);
}

std::chrono::milliseconds CaptureOptions::normaliseTempo()
{
    const double seconds = std::clamp(std::abs(leadingNumber(tempo_)), kMinTempo, kMaxTempo);
    setTempo(QString::number(static_cast<int>(seconds)));
    return std::chrono::round<std::chrono::milliseconds>(std::chrono::duration<double>(seconds));
}

std::chrono::seconds CaptureOptions::downloadLimit() const
{
    const double whole = std::trunc(std::abs(leadingNumber(timeout_)));
    return std::chrono::seconds{static_cast<int>(std::clamp(whole, kMinTimeout, kMaxTimeout))};
}

void CaptureOptions::normaliseTimeout()
{
    setTimeout(QString::number(downloadLimit().count()));
}

} // namespace velmora
