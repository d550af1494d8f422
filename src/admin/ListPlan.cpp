#include "admin/ListPlan.h"

#include "cameras/CameraChoices.h"
#include "cameras/CameraTable.h"
#include "cameras/ConfiguredCameras.h"

#include <algorithm>
#include <map>
#include <set>

namespace velmora {
namespace {

constexpr int kMostFaultsTold = 10;

class Planner
{
public:
    explicit Planner(const SettingsSnapshot &settings)
    {
        for (const CameraAddress camera : configuredCameras(settings)) {
            taken_.insert(camera);
            places_.emplace(CameraTable::url(settings, camera), camera);
        }
    }

    ListPlan plan(CameraList list)
    {
        ListPlan plan{{}, list.fault};
        for (ListedCamera &camera : list.cameras) {
            plan.cameras.push_back(judged(std::move(camera)));
        }
        for (PlannedCamera &planned : plan.cameras) {
            if (planned.fate == Fate::Added && !planned.place) {
                distribute(planned);
            }
        }
        return plan;
    }

private:
    PlannedCamera judged(ListedCamera camera)
    {
        PlannedCamera planned{std::move(camera), Fate::Wrong, {}, {}};
        planned.remark = planned.camera.fault;
        if (!planned.remark.isEmpty()) {
            return planned;
        }
        const auto known = places_.find(planned.camera.address);
        if (known != places_.end()) {
            planned.fate = Fate::Double;
            planned.place = known->second;
            const std::optional<CameraAddress> place = known->second;
            planned.remark =
                place ? QStringLiteral("is there already as camera %1").arg(cameraText(*place))
                      : QStringLiteral("stands in the list twice");
            return planned;
        }
        return placed(std::move(planned));
    }

    PlannedCamera placed(PlannedCamera planned)
    {
        if (planned.camera.row && !planned.camera.group) {
            planned.remark = QStringLiteral("has a row but no group");
            return planned;
        }
        if (planned.camera.row) {
            const CameraAddress place{*planned.camera.group, *planned.camera.row};
            if (!taken_.insert(place).second) {
                planned.remark = QStringLiteral("row %1 is taken").arg(cameraText(place));
                return planned;
            }
            planned.place = place;
        }
        planned.fate = Fate::Added;
        places_.emplace(planned.camera.address, planned.place);
        return planned;
    }

    void distribute(PlannedCamera &planned)
    {
        for (const CameraAddress place : kAllCameras) {
            const bool fits = !planned.camera.group || *planned.camera.group == place.group;
            if (fits && taken_.insert(place).second) {
                planned.place = place;
                return;
            }
        }
        planned.fate = Fate::Wrong;
        planned.remark = planned.camera.group
                             ? QStringLiteral("group %1 is full").arg(*planned.camera.group)
                             : QStringLiteral("all hundred rows are taken");
    }

    std::set<CameraAddress> taken_;
    std::map<QString, std::optional<CameraAddress>> places_;
};

} // namespace

bool ListPlan::isSound() const
{
    return fault.isEmpty() && std::ranges::none_of(cameras, [](const PlannedCamera &planned) {
               return planned.fate == Fate::Wrong;
           });
}

QString ListPlan::faults() const
{
    if (!fault.isEmpty()) {
        return fault;
    }
    QStringList lines;
    for (const PlannedCamera &planned : cameras) {
        if (planned.fate == Fate::Wrong) {
            lines.append(
                QStringLiteral("line %1: %2").arg(planned.camera.line).arg(planned.remark));
        }
    }
    const qsizetype more = lines.size() - kMostFaultsTold;
    if (more > 0) {
        lines = lines.first(kMostFaultsTold);
        lines.append(QStringLiteral("and %1 more").arg(more));
    }
    return lines.join(u'\n');
}

ListPlan planList(CameraList list, const SettingsSnapshot &settings)
{
    return Planner(settings).plan(std::move(list));
}

void applyPlan(const ListPlan &plan, SettingsDraft &draft)
{
    for (const PlannedCamera &planned : plan.cameras) {
        if (planned.fate == Fate::Added && planned.place) {
            storeCamera(draft, *planned.place, planned.camera.address, planned.camera.name);
        }
    }
}

void storeCamera(SettingsDraft &draft, CameraAddress camera, const QString &address,
                 const QString &name)
{
    if (CameraTable::wasLoaded(draft.snapshot(), camera)) {
        forgetCamera(draft, camera);
        forgetRow(draft, camera);
    }
    setUrl(draft, camera, address);
    if (!name.isEmpty()) {
        setCameraName(draft, camera, name);
    }
}

std::optional<CameraAddress> firstFreeRow(const SettingsSnapshot &settings)
{
    const auto isFree = [&settings](CameraAddress camera) {
        return CameraTable::url(settings, camera).isEmpty();
    };
    const auto found = std::ranges::find_if(kAllCameras, isFree);
    return found == kAllCameras.end() ? std::nullopt : std::optional(*found);
}

std::vector<ListedCamera> tableAsList(const SettingsSnapshot &settings)
{
    std::vector<ListedCamera> cameras;
    for (const CameraAddress camera : configuredCameras(settings)) {
        cameras.push_back({0,
                           cameraName(settings, camera),
                           CameraTable::url(settings, camera),
                           camera.group,
                           camera.row,
                           {}});
    }
    return cameras;
}

} // namespace velmora
