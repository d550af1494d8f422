#include "capture/PictureSources.h"

#include "capture/CameraUrl.h"

namespace velmora {

QCoro::Task<HttpReply> PictureSources::fetch(HttpRequest request, std::stop_token stop)
{
    PictureSource &source =
        isRtsp(QString::fromLatin1(request.url)) ? static_cast<PictureSource &>(frames_) : http_;
    return source.fetch(std::move(request), std::move(stop));
}

} // namespace velmora
