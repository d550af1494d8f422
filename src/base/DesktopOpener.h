// Hands files, folders and links to the desktop's own programs.
#pragma once

#include <QCoro/QCoroTask>
#include <QString>

#include <stop_token>

namespace velmora {

enum class OpenOutcome {
    Started,
    NoOpener // the desktop's opener is not installed
};

/// How the desktop's opener ended.
enum class FollowOutcome {
    Opened,
    NotFound,  // there is no such target
    NoHandler, // no program is installed for such a target, or no opener at all
    Failed,    // for any other reason
    Stopped    // no longer waited for; the opener is left running
};

class DesktopOpener
{
public:
    DesktopOpener() = default;
    Q_DISABLE_COPY_MOVE(DesktopOpener)
    virtual ~DesktopOpener() = default;

    /// target: native path or URL.
    [[nodiscard]] virtual OpenOutcome open(const QString &target) = 0;

    /// Opens it too, and waits for the outcome or for a stop.
    virtual QCoro::Task<FollowOutcome> follow(QString target, std::stop_token stop) = 0;
};

/// Runs "xdg-open TARGET", found on PATH.
class XdgOpener final : public DesktopOpener
{
public:
    [[nodiscard]] OpenOutcome open(const QString &target) override;
    QCoro::Task<FollowOutcome> follow(QString target, std::stop_token stop) override;
};

} // namespace velmora
