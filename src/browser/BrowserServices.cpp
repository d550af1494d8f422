#include "browser/BrowserServices.h"

namespace velmora {

bool isStorageReady(const BrowserServices &services)
{
    StorageFolder &storage = services.capture.storage;
    if (storage.isCheckRequested()) {
        storage.testSA();
    }
    if (storage.isBeingEdited()) {
        services.scheduler.ArretTimer();
        return false;
    }
    return storage.lamp() == LampColour::Green;
}

} // namespace velmora
