// The roads that the browser may have taken when several things happened at once: what is asked for
// while a folder is read may be overtaken.
#pragma once

#include "ModesRule.h"

#include <functional>
#include <vector>

namespace velmora::test {

class ModesRoads
{
public:
    using Event = std::function<void(ModesRule &)>;
    using IsSure = std::function<bool(const ModesRule &)>;

    void start(const ModesRule &rule) { roads_ = {rule}; }

    /// isSure: whether it takes place on a road, or may be overtaken there by what is asked for
    /// meanwhile; without it, it does on all.
    void tell(const Event &event, const IsSure &isSure = {})
    {
        if (isHurried_) {
            told_.push_back({event, isSure});
        }
        take(&roads_, {event, isSure});
    }

    /// From now on the folders are slow to read.
    void beginHurry()
    {
        start_ = roads_;
        isHurried_ = true;
    }

    /// What was read may be what was there at the event, or what is there in the end.
    /// hasStored: whether an image has come meanwhile. hasChosen: whether a camera was chosen.
    /// days: of all images, as in their names.
    void endHurry(bool hasStored, bool hasChosen, const QStringList &days)
    {
        isHurried_ = false;
        std::vector<ModesRule> again = start_;
        for (const Told &told : std::exchange(told_, {})) {
            take(&again, told);
        }
        for (std::size_t i = 0; i < again.size() && hasStored; ++i) { // one before, one after it
            roads_.push_back(again.at(i).withNewestOf(roads_.at(i)));
            roads_.push_back(roads_.at(i).withNewestOf(again.at(i)));
        }
        roads_.insert(roads_.end(), again.begin(), again.end());
        for (const ModesRule &road : std::vector(roads_)) {
            roads_.push_back(road.withListOf(begun()));
        }
        addFilms(!hasChosen);
        addDays(days);
    }

    [[nodiscard]] bool isHurried() const { return isHurried_; }

    /// One of them. Outside a hurry, what is to be seen is the same on all.
    [[nodiscard]] const ModesRule &any() const { return roads_.front(); }

    /// Where the hurry began.
    [[nodiscard]] const ModesRule &begun() const { return start_.front(); }

    [[nodiscard]] const std::vector<ModesRule> &all() const { return roads_; }

    /// Goes on with those alone for which this holds; false, without a change, if there are none.
    template <typename Is>
    bool keep(Is is)
    {
        std::vector<ModesRule> kept;
        for (const ModesRule &road : roads_) {
            if (is(road) && std::ranges::find(kept, road) == kept.end()) {
                kept.push_back(road);
            }
        }
        if (kept.empty()) {
            return false;
        }
        roads_ = kept;
        return true;
    }

private:
    struct Told
    {
        Event event;
        IsSure isSure;
    };

    static void take(std::vector<ModesRule> *roads, const Told &told)
    {
        const std::size_t before = roads->size();
        for (std::size_t i = 0; i < before; ++i) {
            if (told.isSure && !told.isSure(roads->at(i))) {
                const ModesRule without = roads->at(i);
                roads->push_back(without);
            }
            told.event(roads->at(i));
        }
    }

    // A paused film may keep its list when the view is left and back before its turn has come, but
    // not when a camera was chosen.
    void addFilms(bool isOldKept)
    {
        for (const ModesRule &road : std::vector(roads_)) {
            if (road.isHeld()) {
                roads_.push_back(road.withOwnList());
                roads_.push_back(isOldKept ? road.withFilmOf(begun()) : road);
            }
        }
    }

    // The calendar may have taken its day from a list that was passed over, or not.
    void addDays(const QStringList &days)
    {
        for (const ModesRule &road : std::vector(roads_)) {
            for (const QString &day : days + QStringList{begun().chosenDay}) {
                roads_.push_back(road);
                roads_.back().chosenDay =
                    road.chosenDay.isEmpty() || day.isEmpty() ? road.chosenDay : day;
            }
        }
    }

    std::vector<ModesRule> roads_;
    std::vector<ModesRule> start_; // of the hurry
    std::vector<Told> told_;       // since then
    bool isHurried_ = false;
};

} // namespace velmora::test
