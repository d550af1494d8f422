// What the storage folder's box, its disk and other programs do to a capture, by the rules alone.
#include "CaptureRules.h"

#include <utility>

namespace velmora::test {

// What is being fetched is fetched again for the folder that is in force then.
void CaptureRules::dropTransfers()
{
    mustReadAhead_ = true;
    transfers_.clear();
    if (loading_) {
        giveUp();
    }
}

void CaptureRules::beginEdit()
{
    if (!isEdited) {
        write(QStringLiteral("arret Timers"));
        isEdited = true;
        dropTransfers();
    }
}

void CaptureRules::type(const QString &storage)
{
    beginEdit();
    typed_ = storage;
    storedStorage = storage;
    seenStorage_ = storage;
    check();
}

// What was typed counts for more than what another program has named meanwhile.
void CaptureRules::endEdit()
{
    const QString elsewhere = std::exchange(elsewhere_, QString());
    const QString wanted = typed_ == inForce && !elsewhere.isEmpty() ? elsewhere : typed_;
    if (!elsewhere.isEmpty() && wanted != storedStorage) {
        storedStorage = wanted;
        seenStorage_ = wanted;
    }
    put(wanted);
}

void CaptureRules::put(const QString &storage)
{
    isEdited = false;
    typed_ = storage;
    if (inForce != storage) {
        inForce = storage;
        dropTransfers();
    }
    check();
    walk();
    takeTurns();
}

void CaptureRules::hear()
{
    if (std::exchange(seenStorage_, storedStorage) == storedStorage) {
        return;
    }
    if (isEdited) {
        elsewhere_ = storedStorage;
    } else {
        put(storedStorage);
    }
}

void CaptureRules::check()
{
    write(QStringLiteral("Interface TestSA"));
    isCheckWanted_ = false;
    isGreen = disks[typed_].isThere;
}

void CaptureRules::recheck()
{
    if (isGreen != disks[typed_].isThere) {
        check();
        walk();
        takeTurns();
    }
}

} // namespace velmora::test
