// Gets one picture of an RTSP stream, using ffmpeg.
#pragma once

#include "base/Turnstile.h"
#include "capture/HttpClient.h"

#include <memory>

namespace velmora {

/// Starts ffmpeg, if installed, for each picture: without a shell, preferring TCP to UDP, and
/// with the address on its standard input, where no list of processes shows it. It is killed with
/// all that it started when the time limit is reached, when a stop is requested, and when this
/// program ends. At most one per core of the machine runs at once; others wait their turn. The
/// reason for a failure is ffmpeg's last line, without the credentials of the address.
class FrameGrabber final : public PictureSource
{
public:
    FrameGrabber();

    QCoro::Task<HttpReply> fetch(HttpRequest request, std::stop_token stop) override;

private:
    class Grab;

    QCoro::Task<HttpReply> grab(HttpRequest request, std::stop_token stop);

    Turnstile places_;
    std::shared_ptr<BodyStock> bodies_ = std::make_shared<BodyStock>();
};

} // namespace velmora
