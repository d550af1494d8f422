// Random sequences of all that happens to the health window and behind it: after each event it
// lists the cameras as the rules know them, in order, and stays on its camera.
#include "HealthHands.h"
#include "support/Sequences.h"

#include <vector>

namespace velmora::test {
namespace {

constexpr int kSequences = 3;
constexpr int kEvents = 40;

class HealthRun : public HealthHands
{
public:
    using HealthHands::HealthHands;

    void play(int sequence)
    {
        compare();
        for (int i = 0; i < kEvents && !testing::Test::HasFailure(); ++i) {
            const Kind &kind = anyOfKinds(kKinds, [this](int bound) { return below(bound); });
            done_.append(QString::fromLatin1(kind.name));
            (this->*kind.run)();
            SCOPED_TRACE("sequence " + std::to_string(sequence));
            look();
            compare();
        }
        EXPECT_FALSE(testing::Test::HasFailure()) << done_.join(QStringLiteral(", ")).toStdString();
    }

private:
    using Kind = EventKind<HealthHands>;

    static const std::vector<Kind> kKinds;

    void compare()
    {
        compareLate();
        compareBook();
        if (window_.isVisible()) {
            compareRows();
            compareOrder();
            compareNever();
        }
    }

    // Where the rules cannot tell to the second, the program is believed.
    void compareLate()
    {
        for (auto &[camera, known] : rules_.cameras) {
            const int must = rules_.mustBeLate(camera);
            const bool isLate = book_.camera(camera).lateSince.has_value();
            if (must >= 0 && !isStanding() && rules_.isTrusted) {
                EXPECT_EQ(isLate, must == 1)
                    << cameraText(camera).toStdString() << " quiet " << known.quiet << " asked "
                    << known.asked.value_or(-1) << " usual " << known.usual().value_or(-1);
            }
            known.isLate = isLate;
        }
    }

    void compareBook()
    {
        std::vector<CameraAddress> cameras;
        for (const auto &[camera, known] : rules_.cameras) {
            cameras.push_back(camera);
            if (known.isCounted) {
                EXPECT_EQ(book_.camera(camera).images, known.images)
                    << cameraText(camera).toStdString();
            }
        }
        EXPECT_EQ(book_.cameras(), cameras);
    }

    [[nodiscard]] QString age(const std::optional<qint64> &moment) const
    {
        return moment ? ageText(std::chrono::seconds{std::max<qint64>(0, rules_.now - *moment)})
                      : QString();
    }

    // What its row says, with the number of its state before it.
    [[nodiscard]] QStringList row(CameraAddress camera) const
    {
        const RuleCamera &known = rules_.cameras.at(camera);
        const int state = known.isLate ? 3 : known.failures > 0 ? 2 : known.newest ? 0 : 1;
        static const QStringList states{QStringLiteral("good"), QStringLiteral("no image yet"),
                                        QStringLiteral("failing"), QStringLiteral("late")};
        const auto usual = known.usual();
        return {states.at(state),
                cameraText(camera) + u' ' + known.url.mid(7),
                age(known.newest),
                usual ? ageText(std::chrono::seconds{*usual}) : QString(),
                known.failure,
                age(known.failures > 0 ? std::optional(known.failedSince) : std::nullopt),
                QString::number(known.failures)};
    }

    [[nodiscard]] QStringList shownRow(int row) const
    {
        QStringList texts;
        for (const auto column :
             {HealthTable::Lamp, HealthTable::Camera, HealthTable::Age, HealthTable::Interval,
              HealthTable::Failure, HealthTable::FailedFor, HealthTable::Failures}) {
            texts.append(cell(row, column));
        }
        return texts;
    }

    [[nodiscard]] bool isWanted(int row) const
    {
        for (int column = 0; column < HealthTable::kColumns; ++column) {
            if (cell(row, static_cast<HealthTable::Column>(column))
                    .contains(filter_, Qt::CaseInsensitive)) {
                return true;
            }
        }
        return false;
    }

    void compareRows()
    {
        std::vector<CameraAddress> listed = this->listed();
        for (std::size_t i = 0; i < listed.size(); ++i) {
            const int number = static_cast<int>(i);
            ASSERT_TRUE(rules_.cameras.contains(listed[i]));
            EXPECT_EQ(text(shownRow(number)), text(row(listed[i])));
            EXPECT_TRUE(isWanted(number)) << text(shownRow(number));
        }
        if (filter_.isEmpty()) {
            EXPECT_EQ(listed.size(), rules_.cameras.size());
        }
        for (const auto &[camera, known] : rules_.cameras) {
            if (text(row(camera)).find(filter_.toStdString()) != std::string::npos) {
                EXPECT_TRUE(isListed(camera)) << cameraText(camera).toStdString();
            }
        }
    }

    // By the column that was last clicked.
    [[nodiscard]] double sortValue(CameraAddress camera) const
    {
        const RuleCamera &known = rules_.cameras.at(camera);
        switch (sorted_) {
        case HealthTable::Lamp:
            return known.isLate ? 3 : known.failures > 0 ? 2 : known.newest ? 0 : 1;
        case HealthTable::Age:
            return known.newest ? -static_cast<double>(*known.newest) : 0;
        case HealthTable::Interval:
            return static_cast<double>(known.usual().value_or(0));
        case HealthTable::FailedFor:
            return known.failures > 0 ? static_cast<double>(rules_.now - known.failedSince) : -1;
        case HealthTable::Failures:
            return known.failures;
        default:
            return indexOf(camera);
        }
    }

    void compareOrder()
    {
        const std::vector<CameraAddress> listed = this->listed();
        for (std::size_t i = 1; i < listed.size(); ++i) {
            const double before = sortValue(listed[i - 1]);
            const double after = sortValue(listed[i]);
            EXPECT_TRUE(order_ == Qt::AscendingOrder ? before <= after : before >= after)
                << sorted_ << ": " << before << ' ' << after;
        }
    }

    void compareNever()
    {
        const auto now = current();
        auto &box = find<QCheckBox>("healthNever");
        if (wasCurrent_ && isListed(*wasCurrent_)) {
            EXPECT_EQ(now, wasCurrent_);
        }
        EXPECT_EQ(box.isEnabled(), now.has_value());
        if (!pressed_) {
            EXPECT_EQ(box.isChecked(), now && rules_.isNever[*now]);
        }
        wasCurrent_ = now;
        for (const auto &[camera, never] : rules_.isNever) {
            EXPECT_EQ(options_.isNever(camera), never) << cameraText(camera).toStdString();
        }
    }
};

const std::vector<HealthRun::Kind> HealthRun::kKinds{
    {"pass", &HealthHands::pass, 10},
    {"time", &HealthHands::passTime, 6},
    {"set clock", &HealthHands::setClock},
    {"stall", &HealthHands::stall},
    {"suspend", &HealthHands::suspend},
    {"resume", &HealthHands::resume, 2},
    {"group", &HealthHands::switchGroup, 2},
    {"address", &HealthHands::changeAddress, 3},
    {"storage", &HealthHands::moveStorage, 2},
    {"delete", &HealthHands::deleteImage, 2},
    {"never elsewhere", &HealthHands::setNever},
    {"times", &HealthHands::setTimes},
    {"filter", &HealthHands::typeFilter, 2},
    {"clear filter", &HealthHands::clearFilter, 2},
    {"sort", &HealthHands::sort, 2},
    {"select", &HealthHands::select, 3},
    {"press never", &HealthHands::pressNever, 3},
    {"release never", &HealthHands::releaseNever, 3},
    {"close", &HealthHands::close},
    {"present", &HealthHands::present, 2},
};

TEST(HealthModel, HoldsAfterEveryEventOfRandomSequences)
{
    playSequences(kSequences, [](int sequence) { HealthRun(sequence).play(sequence); });
}

} // namespace
} // namespace velmora::test
