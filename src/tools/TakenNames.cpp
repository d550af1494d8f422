#include "tools/TakenNames.h"

#include "base/NameCase.h"

#include <QHashFunctions>

namespace velmora {

void TakenNames::add(QByteArrayView name)
{
    hashes_.insert(qHash(foldedName(name)));
}

bool TakenNames::holds(QByteArrayView name) const
{
    return hashes_.contains(qHash(foldedName(name)));
}

} // namespace velmora
