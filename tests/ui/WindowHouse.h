// The main window over a whole capture, used like a person would: with mouse and keys, on controls
// found by name.
#pragma once

#include "RecordingOpener.h"
#include "support/CaptureHouse.h"
#include "support/CaptureHouseSource.h"
#include "ui/Interface.h"
#include "view/LiveView.h"

#include <QTest>

namespace velmora::test {

class WindowHouse
{
public:
    WindowHouse();
    Q_DISABLE_COPY_MOVE(WindowHouse)
    ~WindowHouse();

    /// A control by its name; fails the test when there is none of that type.
    template <typename Control>
    Control &find(const QString &name)
    {
        auto *const control = window.findChild<Control *>(name);
        if (control == nullptr) {
            throw std::runtime_error("no control " + name.toStdString());
        }
        return *control;
    }

    /// Types into a box at its end, after clicking into it.
    void type(const QString &box, const QString &text);

    /// Replaces the text of a box, key by key.
    void retype(const QString &box, const QString &text);

    void click(const QString &control, Qt::KeyboardModifiers modifiers = {});

    /// Leaves the box that has the focus, with the tab key.
    void leaveBox();

    void selectTab(int group);

    /// A value of the settings file.
    [[nodiscard]] QString stored(QStringView section, QStringView key) const;

    FakeClock clock;
    ScriptedSource source{clock};
    CaptureHouse house{source, clock};
    DebugSwitch &debugSwitch = house.engine.debugSwitch();
    RecordingOpener opener;
    LiveView &live = house.view.liveView();
    Interface window;
};

} // namespace velmora::test
