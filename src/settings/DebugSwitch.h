// The "Debug" box: switches the event log and is remembered.
#pragma once

#include "settings/EventLog.h"
#include "settings/Keys.h"

namespace velmora {

class DebugSwitch
{
public:
    DebugSwitch(const SettingsFile &settings, EventLog &log)
        : settings_(settings)
        , log_(log)
    {
    }

    [[nodiscard]] bool isOn() const { return log_.isOn(); }

    /// Loads the stored state.
    void load() { log_.setOn(keys::kDebug.read(settings_)); }

    /// The box was clicked: stores its value at once.
    void set(bool on)
    {
        keys::kDebug.write(settings_, on);
        log_.setOn(on);
    }

private:
    const SettingsFile &settings_;
    EventLog &log_;
};

} // namespace velmora
