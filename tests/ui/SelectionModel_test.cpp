// Whatever a user and the program's own events do to the browser, in any order: what is highlighted
// is selected, framed, counted, enlarged and acted on by keys, and nothing is deleted but that, nor
// outside the storage folder in force. Sequences of random events, each followed by a check of the
// window.
#include "BrowserModel.h"
#include "support/Sequences.h"

namespace velmora::test {
namespace {

constexpr int kEvents = 50;
constexpr int kSequences = 60;

class SelectionModel : public BrowserModel
{
protected:
    void play(int sequence)
    {
        seed(sequence);
        for (int event = 0; event < kEvents && !HasFailure(); ++event) {
            const int kind = below(static_cast<int>(kKinds.size()));
            done_.append(QString::fromLatin1(kKinds.at(kind).name));
            (this->*kKinds.at(kind).run)();
            if (below(3) > 0) {
                house_.settle();
                SCOPED_TRACE(("sequence " + std::to_string(sequence) + ": " +
                              done_.join(QStringLiteral(", ")).toStdString()));
                lookAtRest();
            } else {
                look();
            }
        }
        letGo();
        putInForce();
        house_.settle();
        done_.clear();
    }

private:
    struct Kind
    {
        const char *name;
        void (SelectionModel::*run)();
    };

    static const QList<Kind> kKinds;

    QStringList done_;
};

const QList<SelectionModel::Kind> SelectionModel::kKinds{
    {"press a row", &SelectionModel::pressRow},
    {"press a row", &SelectionModel::pressRow},
    {"let go", &SelectionModel::letGo},
    {"let go", &SelectionModel::letGo},
    {"press a cell", &SelectionModel::pressCell},
    {"press another button", &SelectionModel::pressAnotherButton},
    {"press another button", &SelectionModel::pressAnotherButton},
    {"click a row", &SelectionModel::clickRow},
    {"click a row", &SelectionModel::clickRow},
    {"click a cell", &SelectionModel::clickCell},
    {"double click a row", &SelectionModel::doubleClickRow},
    {"key", &SelectionModel::key},
    {"key", &SelectionModel::key},
    {"key", &SelectionModel::key},
    {"wheel", &SelectionModel::wheel},
    {"focus", &SelectionModel::focus},
    {"other window", &SelectionModel::otherWindow},
    {"type", &SelectionModel::type},
    {"mode", &SelectionModel::mode},
    {"film", &SelectionModel::film},
    {"tick", &SelectionModel::tick},
    {"scan", &SelectionModel::scan},
    {"stored image", &SelectionModel::storedImage},
    {"vanished image", &SelectionModel::vanishedImage},
    {"delete", &SelectionModel::deleteImage},
    {"delete", &SelectionModel::deleteImage},
    {"type folder", &SelectionModel::typeFolder},
    {"put folder in force", &SelectionModel::putInForce},
    {"put folder in force", &SelectionModel::putInForce},
    {"refresh", &SelectionModel::refresh},
    {"other address", &SelectionModel::otherAddress},
    {"import", &SelectionModel::imported},
    {"pause film", &SelectionModel::pauseFilm},
    {"film's end", &SelectionModel::moveFilmsEnd},
    {"click film", &SelectionModel::clickFilm},
    {"close film", &SelectionModel::closeFilm},
    {"close and reopen", &SelectionModel::closeAndReopen},
    {"hour", &SelectionModel::goToHour},
    {"deleted for its age", &SelectionModel::deletedForItsAge}};

TEST_F(SelectionModel, HoldsAfterEveryEventOfRandomSequences)
{
    playSequences(kSequences, [this](int sequence) { play(sequence); });
}

} // namespace
} // namespace velmora::test
