// The sources of pictures: HTTP, or a stream.
#pragma once

#include "capture/FrameGrabber.h"
#include "capture/HttpClient.h"

namespace velmora {

/// Passes each request to the source that its address needs.
class PictureSources final : public PictureSource
{
public:
    QCoro::Task<HttpReply> fetch(HttpRequest request, std::stop_token stop) override;

private:
    HttpClient http_;
    FrameGrabber frames_;
};

} // namespace velmora
