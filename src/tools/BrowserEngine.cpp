#include "tools/BrowserEngine.h"

namespace velmora {
namespace {

// Holds the pictures of a sheet on a large screen, twice over.
constexpr qsizetype kPictureBytes = qsizetype{48} * 1024 * 1024;

} // namespace

BrowserEngine::BrowserEngine(CaptureEngine &capture, MailSender &sender)
    : film_(capture.settings(), capture.log(), data_)
    , browser_({capture.settings(), capture.storage(), capture.scheduler(), capture.conformity(),
                capture.log(), capture.problems(), capture.clock(), capture.scope()},
               data_, film_)
    , pictures_(kPictureBytes)
    , loader_(pictures_, capture.clock(), capture.scope())
    , alarm_(capture.storage(), data_, capture.clock(), capture.scope())
    , mail_(capture.settings(), sender, capture.clock(), capture.scope())
    , calendar_(browser_)
    , filmMaker_({capture.table(), capture.storage(), data_, film_, capture.conformity(),
                  capture.clock(), capture.scope()})
{
    QObject::connect(&capture.store(), &ImageStore::imageStored, &browser_, &ImageBrowser::follow);
    QObject::connect(&capture.store(), &ImageStore::imageStored, &calendar_, &Calendar::follow);
}

} // namespace velmora
