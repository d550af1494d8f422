// All the parts that watch how the cameras deliver and report on it, put together: the same with
// windows and without.
#pragma once

#include "capture/CaptureEngine.h"
#include "health/DesktopNotices.h"
#include "health/HealthWatch.h"
#include "health/NoticeMail.h"

namespace velmora {

/// The engine and the sender outlive this object, and the engine is closed before it is destroyed.
class HealthEngine : public QObject
{
    Q_OBJECT

public:
    HealthEngine(CaptureEngine &capture, MailSender &sender);

    /// The storage folder has been checked: starts watching.
    void start();

    [[nodiscard]] HealthBook &book() { return book_; }

    [[nodiscard]] HealthWatch &watch() { return watch_; }

    [[nodiscard]] OldestFirst &oldest() { return oldest_; }

Q_SIGNALS:
    /// text: a sentence for the user.
    void noticed(const QString &text);

private:
    void follow(ImageStore &store);
    void tell(const QString &text);

    CaptureEngine &capture_;
    HealthBook book_;
    OldestFirst oldest_;
    HealthWatch watch_;
    NoticeMail mail_;
    DesktopNotices desktop_;
    HealthOptions options_;
};

} // namespace velmora
