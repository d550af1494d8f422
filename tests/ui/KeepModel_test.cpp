// Whatever a user, the capture, other programs and the disks do while films and copies of ranges
// are made, up to the end of the program, in any order: each has the images that were agreed and no
// others, the window says what became of it, no file is ever seen in part, and nothing stored is
// lost.
#include "KeepHands.h"
#include "support/Sequences.h"

namespace velmora::test {
namespace {

constexpr int kEvents = 60;
constexpr int kSequences = 10;

using Kind = EventKind<KeepHands>;

const std::vector<Kind> kKinds{{"click camera", &KeepHands::clickCamera},
                               {"open keep", &KeepHands::openKeep, 4},
                               {"film", &KeepHands::film},
                               {"refresh", &KeepHands::refresh},
                               {"type range", &KeepHands::typeRange, 5},
                               {"turn number", &KeepHands::turnNumber, 2},
                               {"turn choice", &KeepHands::turnChoice, 2},
                               {"make", &KeepHands::make},
                               {"copy", &KeepHands::copy},
                               {"make now", &KeepHands::makeNow, 8},
                               {"copy now", &KeepHands::copyNow, 8},
                               {"heal", &KeepHands::heal, 4},
                               {"answer", &KeepHands::answer, 3},
                               {"cancel", &KeepHands::cancel},
                               {"close", &KeepHands::close},
                               {"open result", &KeepHands::openResult, 2},
                               {"store image", &KeepHands::storeImage, 4},
                               {"remove image", &KeepHands::removeImage, 2},
                               {"damage image", &KeepHands::damageImage, 2},
                               {"turn the disk", &KeepHands::turnTheDisk},
                               {"type storage", &KeepHands::typeStorage},
                               {"change row", &KeepHands::changeRow},
                               {"change target folder", &KeepHands::changeTargetFolder},
                               {"put into target", &KeepHands::putIntoTarget, 2},
                               {"fill disk", &KeepHands::fillDisk},
                               {"free disk", &KeepHands::freeDisk, 3},
                               {"pass a turn", &KeepHands::passATurn, 2},
                               {"pass turns", &KeepHands::passTurns, 4},
                               {"finish", &KeepHands::finish, 6}};

class KeepModel : public testing::Test
{
protected:
    void play(int sequence)
    {
        QMap<QString, QByteArray> targets;
        {
            KeepHands hands(out_, sequence);
            playEvents(
                hands, kKinds, {sequence, kEvents},
                [&hands](int bound) { return hands.below(bound); }, [&hands] { hands.check(); });
            targets = hands.targets();
            films_ += hands.films();
            copies_ += hands.copies();
        }
        SCOPED_TRACE("the end of sequence " + std::to_string(sequence));
        EXPECT_EQ(KeepHands::filesIn(out_.path()).size(), targets.size());
    }

    TempTree out_;
    int films_ = 0;
    int copies_ = 0;
};

TEST_F(KeepModel, HoldsAfterEveryEventOfRandomSequences)
{
    const int played = playSequences(kSequences, [this](int sequence) { play(sequence); });
    EXPECT_TRUE((films_ > 0 && copies_ > 0) || played < kSequences);
}

} // namespace
} // namespace velmora::test
