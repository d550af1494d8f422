// All the parts that work with stored images, put together without their windows.
#pragma once

#include "browser/Calendar.h"
#include "browser/ImageBrowser.h"
#include "capture/CaptureEngine.h"
#include "pictures/PictureLoader.h"
#include "tools/AlarmMail.h"
#include "tools/FilmMaker.h"
#include "tools/MotionAlarm.h"
#include "tools/Slideshow.h"

namespace velmora {

/// The engine and the sender outlive this object, and the engine is closed before it is destroyed.
class BrowserEngine
{
public:
    BrowserEngine(CaptureEngine &capture, MailSender &sender);

    [[nodiscard]] ImageBrowser &browser() { return browser_; }

    [[nodiscard]] Slideshow &film() { return film_; }

    [[nodiscard]] MotionAlarm &alarm() { return alarm_; }

    [[nodiscard]] Calendar &calendar() { return calendar_; }

    [[nodiscard]] FilmMaker &filmMaker() { return filmMaker_; }

    [[nodiscard]] AlarmMail &mail() { return mail_; }

    [[nodiscard]] PictureCache &pictures() { return pictures_; }

    [[nodiscard]] PictureLoader &loader() { return loader_; }

private:
    BrowserData data_;
    Slideshow film_;
    ImageBrowser browser_;
    PictureCache pictures_;
    PictureLoader loader_;
    MotionAlarm alarm_;
    AlarmMail mail_;
    Calendar calendar_;
    FilmMaker filmMaker_;
};

} // namespace velmora
