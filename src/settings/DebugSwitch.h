// The box "Debug": switches the event log and is remembered.
#pragma once

#include "settings/EventLog.h"
#include "settings/SettingsFile.h"

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

    /// Takes the stored state.
    void load() { log_.setOn(settings_.number(u"Control", u"Debug") != 0); }

    /// The box was clicked: stores its value at once.
    void set(bool on)
    {
        settings_.write(u"Control", u"Debug", on ? 1 : 0);
        log_.setOn(on);
    }

private:
    const SettingsFile &settings_;
    EventLog &log_;
};

} // namespace velmora
