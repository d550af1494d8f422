#include "tools/MotionAlarm.h"

#include "pictures/PictureReader.h"

#include <QScopeGuard>

namespace velmora {
namespace {

constexpr int kStep = 2; // a pair
constexpr int kLast = 20;
constexpr int kDarkest = 0;
constexpr int kBrightest = 255;

} // namespace

void clampColour(int &red, int &green, int &blue)
{
    for (int *const part : {&red, &green, &blue}) {
        if (*part < kDarkest) {
            *part = kDarkest;
        }
    }
    for (int *const part : {&red, &green, &blue}) {
        if (*part > kBrightest) {
            *part = kBrightest;
        }
    }
}

MotionAlarm::MotionAlarm(const StorageFolder &storage, const BrowserData &data, Clock &clock,
                         TaskScope &scope)
    : storage_(storage)
    , data_(data)
    , clock_(clock)
    , scope_(scope)
{
}

const LoadedPicture &MotionAlarm::picture(AlarmPicture which) const
{
    return pictures_.at(static_cast<std::size_t>(which));
}

LoadedPicture &MotionAlarm::at(AlarmPicture which)
{
    return pictures_.at(static_cast<std::size_t>(which));
}

void MotionAlarm::setPixels(QSize pixels)
{
    if (pixels == pixels_) {
        return;
    }
    pixels_ = pixels;
    for (const AlarmPicture which : {AlarmPicture::Ref, AlarmPicture::Var}) {
        load(which, QString(picture(which).path));
    }
}

// The browser may move to another camera or list during a scan: it is asked for each picture.
QString MotionAlarm::path(int position) const
{
    const ImageFile file = data_.files.file(position);
    if (file.isNone()) {
        return {};
    }
    return nativePath(storage_, {storage_.cameraFolderText(data_.state.camera()), file.name});
}

void MotionAlarm::clear(AlarmPicture which)
{
    at(which) = {};
    Q_EMIT changed(which);
}

// A file that is gone or holds no picture leaves the place empty.
void MotionAlarm::load(AlarmPicture which, const QString &path)
{
    QImage image = path.isEmpty() ? QImage() : readPicture(path, {pixels_, Fit::KeepShape});
    at(which) = image.isNull() ? LoadedPicture{} : LoadedPicture{path, std::move(image)};
    Q_EMIT changed(which);
}

void MotionAlarm::ChargeRef()
{
    clear(AlarmPicture::Ref);
    load(AlarmPicture::Ref, path(data_.files.ListIndex()));
}

void MotionAlarm::run()
{
    if (!scanning_ && !scope_.stopToken().stop_requested()) {
        scope_.launch(Scan());
    }
}

QCoro::Task<> MotionAlarm::Scan()
{
    scanning_ = true;
    stopped_ = false;
    const auto ended = qScopeGuard([this] { scanning_ = false; });
    clear(AlarmPicture::Ref);
    clear(AlarmPicture::Var);
    clear(AlarmPicture::Vide);
    for (int i = 0; i <= kLast && !isOver(); i += kStep) {
        co_await pass(i);
    }
}

// One pair: events are handled before each picture is loaded, and the window is painted before they
// are compared.
QCoro::Task<> MotionAlarm::pass(int i)
{
    const int k = data_.files.ListIndex();
    clear(AlarmPicture::Var);
    co_await clock_.yield();
    if (isOver()) {
        co_return;
    }
    load(AlarmPicture::Var, path(k - i));
    clear(AlarmPicture::Ref);
    co_await clock_.yield();
    if (isOver()) {
        co_return;
    }
    load(AlarmPicture::Ref, path(k - i - 1));
    Q_EMIT repaintWanted();
    co_await clock_.yield();
    if (!isOver()) {
        VerifColor();
    }
}

bool MotionAlarm::isOver() const
{
    return stopped_ || scope_.stopToken().stop_requested();
}

Comparison MotionAlarm::VerifColor()
{
    return Comparison::Success;
}

} // namespace velmora
