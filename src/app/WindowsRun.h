// A run of the program with its windows.
#pragma once

#include "start/ProgramRun.h"

namespace velmora {

class WindowsRun final : public ProgramRun
{
private:
    std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv) override;

    [[nodiscard]] Front front() const override { return Front::Windows; }

    void showRefusal(const QString &fault, SignalWatcher &signalWatcher,
                     SingleInstance &instance) override;
    int capture(const Parts &parts) override;
};

} // namespace velmora
