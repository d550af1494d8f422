// The captions by which the capture says what it is doing.
#pragma once

#include <QObject>
#include <QString>

#include <array>

namespace velmora {

enum class Caption {
    Step,      // "Load 0:3", "Wait", "Pause"
    Activity,  // "Test " + address, "Ajout de " + file
    LastStore, // time of the last store
    Countdown, // ticks left before fixed cameras are due, during a pass
    NextCycle, // the same from one tick to the next
    Trouble,   // why an image could not be stored
    Standstill // why nothing is captured; empty while the capture runs
};

class CaptureStatus : public QObject
{
    Q_OBJECT

public:
    [[nodiscard]] const QString &text(Caption caption) const { return texts_.at(index(caption)); }

    void set(Caption caption, const QString &text);

Q_SIGNALS:
    void changed(velmora::Caption caption, const QString &text);

private:
    static std::size_t index(Caption caption) { return static_cast<std::size_t>(caption); }

    static constexpr std::size_t kCaptions = 7;
    std::array<QString, kCaptions> texts_;
};

} // namespace velmora
