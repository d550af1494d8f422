// What the rules of the live view make of everything that happens to it: what its captions and its
// pictures show, and of which camera. Kept as simple as the rules, and without any widget.
#pragma once

#include "cameras/CameraAddress.h"
#include "support/CaptureHouseSource.h"

#include <QString>

#include <chrono>
#include <functional>
#include <optional>

namespace velmora::test {

/// What a camera answers.
enum class LiveAnswer { Picture, NoPicture, Damaged, None };

struct LiveScript
{
    LiveAnswer answer = LiveAnswer::None;
    ScriptedReply reply;
};

/// A fetch of the live view; without a moment to end, it waits for the storage folder. That of a
/// stream begins only after a pause, in which more may be typed.
struct LiveFetch
{
    QString url;
    std::optional<std::chrono::milliseconds> begins;
    LiveScript script;
    std::optional<std::chrono::milliseconds> ends;
    std::chrono::milliseconds taken{0};
};

/// The camera on show.
struct LiveCamera
{
    CameraAddress camera;
    QString storage; // the folder in which its stored image was looked for
};

class LiveReference
{
public:
    /// The world around the live view.
    struct Asks
    {
        std::function<LiveScript(const QString &url)> script; // as it answers now
        std::function<QString(CameraAddress)> newest;         // path of its newest stored image
        std::function<QString()> storage;                     // the folder in force
        std::function<bool()> isStorageThere;
        std::function<std::chrono::milliseconds()> now;
    };

    explicit LiveReference(Asks asks)
        : asks_(std::move(asks))
    {
    }

    /// The live view is to show a camera, from the address in its box.
    void show(CameraAddress camera, const QString &url)
    {
        if (url.isEmpty()) {
            return;
        }
        camera_ = LiveCamera{camera, asks_.storage()};
        local = QStringLiteral("Local %1").arg(camera.row);
        web = loading();
        status.clear();
        target = asks_.newest(camera);
        picture = QByteArray();
        isFile = false;
        reason.clear();
        fetch_ = LiveFetch{url, {}, {}, {}, {}};
        if (url.startsWith(u"rtsp://")) {
            fetch_->begins = asks_.now() + kPause;
        } else {
            begin(asks_.now());
        }
    }

    /// It shows nothing, as after a change of group.
    void clear()
    {
        camera_.reset();
        fetch_.reset();
        target.clear();
        picture.clear();
        isFile = false;
        reason.clear();
        web = waiting();
    }

    /// The row has another camera, or none.
    void replace(CameraAddress camera)
    {
        if (camera_ && camera_->camera == camera) {
            clear();
        }
    }

    /// The box of the storage folder is edited: nothing is fetched until it is left.
    void interrupt()
    {
        if (fetch_) {
            fetch_->ends.reset();
        }
    }

    /// It is not edited any more, or never was: another folder may be in force.
    void goOn()
    {
        const auto now = asks_.now();
        if (fetch_ && !fetch_->ends && fetch_->begins.value_or(now) <= now) {
            begin(std::exchange(fetch_->begins, std::nullopt).value_or(now));
        }
        if (camera_ && camera_->storage != asks_.storage()) {
            camera_->storage = asks_.storage();
            target = asks_.newest(camera_->camera);
        }
    }

    /// Time has passed. The seconds that the fetch took, once it has ended.
    std::optional<int> follow()
    {
        if (!fetch_ || !fetch_->ends || *fetch_->ends > asks_.now()) {
            return std::nullopt;
        }
        const LiveFetch ended = *std::exchange(fetch_, std::nullopt);
        const bool hasCome = isThere(ended) && asks_.isStorageThere();
        const bool isSeen = hasCome || ended.script.answer != LiveAnswer::Damaged;
        reason = isThere(ended) && !isSeen ? QString() : whyNone(ended);
        isFile = hasCome;
        file = hasCome ? ended.script.reply.body : QByteArray();
        picture = ended.script.answer == LiveAnswer::Picture ? file : QByteArray();
        web = waiting();
        status.clear();
        return static_cast<int>(ended.taken.count() / 1000);
    }

    [[nodiscard]] const std::optional<LiveCamera> &camera() const { return camera_; }

    [[nodiscard]] bool isFetching() const { return fetch_.has_value(); }

    QString local;      // above the stored image
    QString web;        // above the live picture
    QString status;     // of the window
    QString target;     // path of the stored image on show
    QByteArray picture; // on show as the live one; empty for none
    QByteArray file;    // what Target.jpg holds, while isFile
    bool isFile = false;
    QString reason; // why there is no live picture

    static QString waiting() { return QStringLiteral("Web : cliquer sur l'image pour zoomer."); }

    static QString loading() { return QStringLiteral("Chargement en cours ...."); }

private:
    static constexpr std::chrono::milliseconds kLimit{5000};
    static constexpr std::chrono::milliseconds kPause{300};

    void begin(std::chrono::milliseconds moment)
    {
        fetch_->script = asks_.script(fetch_->url);
        fetch_->taken = std::min(fetch_->script.reply.delay, kLimit);
        fetch_->ends = moment + fetch_->taken;
    }

    static bool isThere(const LiveFetch &fetch)
    {
        return fetch.script.answer != LiveAnswer::None && fetch.script.reply.delay <= kLimit;
    }

    static QString whyNone(const LiveFetch &fetch)
    {
        if (!isThere(fetch)) {
            const QString why = fetch.script.reply.delay > kLimit ? QStringLiteral("time-out")
                                                                  : fetch.script.reply.failure;
            return why + hint(fetch.url);
        }
        switch (fetch.script.answer) {
        case LiveAnswer::NoPicture:
            return QStringLiteral("not a picture (text/html)") + hint(fetch.url);
        case LiveAnswer::Damaged:
            return QStringLiteral("the picture is damaged: nothing of it can be shown");
        default:
            return {};
        }
    }

    // For an address that names only a host.
    static QString hint(const QString &url)
    {
        const QString scheme = QStringLiteral("http://");
        QString host = url.startsWith(scheme) ? url.sliced(scheme.size()) : url;
        if (host.endsWith(u'/')) {
            host.chop(1);
        }
        const bool isHost = !host.isEmpty() && !host.contains(u'/');
        return isHost ? QStringLiteral(" - an address usually names the picture itself, like "
                                       "http://192.168.1.20/snapshot.jpg")
                      : QString();
    }

    Asks asks_;
    std::optional<LiveCamera> camera_;
    std::optional<LiveFetch> fetch_;
};

} // namespace velmora::test
