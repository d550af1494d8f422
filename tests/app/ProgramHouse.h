// The whole program with its windows in a temporary folder, with the test's clock, cameras and
// desktop.
#pragma once

#include "app/Program.h"
#include "support/CaptureHouseSource.h"
#include "support/FakeClock.h"
#include "support/TempTree.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace velmora::test {

/// Remembers what it was asked to open.
class DesktopDouble final : public DesktopOpener
{
public:
    OpenOutcome open(const QString &target) override
    {
        opened.append(target);
        return OpenOutcome::Started;
    }

    QCoro::Task<FollowOutcome> follow(QString target, std::stop_token) override
    {
        opened.append(target);
        co_return FollowOutcome::Opened;
    }

    QStringList opened;
};

/// A window of the program, or nullptr.
[[nodiscard]] inline QWidget *topLevel(const QString &name)
{
    for (QWidget *const widget : QApplication::topLevelWidgets()) {
        if (widget->objectName() == name) {
            return widget;
        }
    }
    return nullptr;
}

/// The storage folder C:\in exists, the log is on, and camera 0 of group 0 has an address that
/// answers.
class ProgramHouse : public testing::Test
{
protected:
    ProgramHouse();
    ~ProgramHouse() override;

    /// control: lines of the section "Control".
    void writeSettings(const QByteArray &control);

    void start();
    void end();

    /// Runs everything that waits for the event loop or for a moment of the clock.
    void settle() { clock_.advance(std::chrono::milliseconds{100}); }

    bool isVisible(const QString &window);
    QString text(const QString &window, const QString &label);
    QWidget *control(const QString &window, const QString &name);
    void click(const QString &window, const QString &name);

    /// Lines of the log without their times.
    QStringList logLines();

    TempTree tree_;
    FakeClock clock_;
    ScriptedSource source_{clock_};
    DesktopDouble opener_;
    SmtpClient mail_;
    std::unique_ptr<CaptureEngine> engine_;
    std::unique_ptr<Program> program_;
    bool ended_ = false;
};

} // namespace velmora::test
