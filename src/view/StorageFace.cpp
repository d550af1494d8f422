#include "view/StorageFace.h"

namespace velmora {

StorageFace storageFace(StorageCheck check)
{
    switch (check) {
    case StorageCheck::Found:
        return {LampColour::Green, false, HideButton::Ok};
    case StorageCheck::Missing:
        return {LampColour::Red, true, HideButton::Quits};
    case StorageCheck::NotYet:
        break;
    }
    return {};
}

} // namespace velmora
