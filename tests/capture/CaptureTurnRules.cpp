// The deletion of old images, by its rules alone.
#include "CaptureRules.h"

#include <algorithm>

namespace velmora::test {

using namespace std::chrono_literals;

void CaptureRules::wishTurn(CameraAddress camera)
{
    const auto last = turns_.find(camera);
    const bool isDue = last == turns_.end() || now_ - last->second >= 1h;
    const bool isChosen = ruleNumber(row(camera, QStringLiteral("EffM"))) != 0;
    if (isDue && isChosen && !waiting_.contains(camera)) {
        waiting_.append(camera);
    }
}

void CaptureRules::takeTurns()
{
    while (!isEdited && !waiting_.isEmpty()) {
        takeTurn(waiting_.takeFirst());
    }
    cameNow_.clear();
}

// Who does not wish it keeps all that is in the folder.
bool CaptureRules::isOthers(CameraAddress camera)
{
    RuleFolder *const folder = disk().open(ruleFolder(url(camera)));
    return std::ranges::any_of(kAllCameras, [&](CameraAddress other) {
        return !url(other).isEmpty() && url(other) != url(camera) &&
               ruleNumber(row(other, QStringLiteral("EffM"))) == 0 &&
               disk().open(ruleFolder(url(other))) == folder;
    });
}

void CaptureRules::takeTurn(CameraAddress camera)
{
    const QString name = ruleFolder(url(camera));
    RuleFolder *const folder = disk().open(name);
    const bool isChosen = ruleNumber(row(camera, QStringLiteral("EffM"))) != 0;
    if (folder == nullptr || disk().folders[name].is == RuleFolder::Is::Link || !isChosen ||
        isOthers(camera)) {
        return;
    }
    turns_[camera] = now_;
    isUnsure = isUnsure || cameNow_[folder] > 1;
    const QString done =
        deleteOld(folder, std::min(local, universal()), std::max(local, universal()));
    turns += isLogOn ? QStringList{QStringLiteral("Retention %1: %2").arg(rowName(camera), done)}
                     : QStringList();
}

} // namespace velmora::test
