// One picture of an RTSP stream, by way of ffmpeg.
#pragma once

#include "capture/HttpClient.h"

#include <memory>

namespace velmora {

/// Starts ffmpeg, if it is installed, for each picture: without a shell, with the address on its
/// standard input, where no list of processes shows it, TCP before UDP. It is killed with all that
/// it has started when the time limit is over, when a stop is requested, and when this program
/// ends. At most as many run at once as the machine has cores; others wait their turn. The reason
/// of a failure is ffmpeg's last line, without the credentials of the address.
class FrameGrabber final : public PictureSource
{
public:
    FrameGrabber();
    ~FrameGrabber() override;
    Q_DISABLE_COPY_MOVE(FrameGrabber)

    QCoro::Task<HttpReply> fetch(HttpRequest request, std::stop_token stop) override;

private:
    class Places;
    class Grab;

    QCoro::Task<HttpReply> grab(HttpRequest request, std::stop_token stop);

    std::unique_ptr<Places> places_;
    std::shared_ptr<BodyStock> bodies_ = std::make_shared<BodyStock>();
};

} // namespace velmora
