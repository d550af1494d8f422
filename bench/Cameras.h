// The hundred cameras of a measurement: their server in a process of its own, and a program folder
// that lists them.
#pragma once

#include <QProcess>
#include <QTemporaryDir>

#include <functional>

namespace velmora::bench {

constexpr int kPictureBytes = 200 * 1024;

/// The server process of a measurement.
class Cameras
{
public:
    /// server: path of bench_camera_server.
    Cameras(const QString &server, int delayMs, int bodyBytes);
    Q_DISABLE_COPY_MOVE(Cameras)
    ~Cameras();

    [[nodiscard]] QString url(int group, int row, bool dead = false) const;

    [[nodiscard]] int port() const { return port_; }

private:
    QProcess process_;
    int port_ = 0;
};

/// A temporary program folder.
class Folder
{
public:
    using Url = std::function<QString(int group, int row)>;

    /// url: address of each camera; all groups are switched on.
    explicit Folder(Url url);

    [[nodiscard]] QString path() const { return folder_.path(); }

    /// Puts the settings back to what they are before the first pass, without the keys that the
    /// capture adds. The images stay.
    void resetSettings() const;

private:
    Url url_;
    QTemporaryDir folder_;
};

} // namespace velmora::bench
