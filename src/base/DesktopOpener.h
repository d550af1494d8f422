// Files, folders and links handed to the desktop's own programs.
#pragma once

#include <QString>

namespace velmora {

enum class OpenOutcome {
    Started,
    NoOpener // the desktop's opener is not installed
};

class DesktopOpener
{
public:
    DesktopOpener() = default;
    DesktopOpener(const DesktopOpener &) = delete;
    DesktopOpener &operator=(const DesktopOpener &) = delete;
    DesktopOpener(DesktopOpener &&) = delete;
    DesktopOpener &operator=(DesktopOpener &&) = delete;
    virtual ~DesktopOpener() = default;

    /// target: native path or URL.
    [[nodiscard]] virtual OpenOutcome open(const QString &target) = 0;
};

/// Runs "xdg-open TARGET", found on PATH, and does not wait for it.
class XdgOpener final : public DesktopOpener
{
public:
    [[nodiscard]] OpenOutcome open(const QString &target) override;
};

} // namespace velmora
