// Whatever happens to cameras, settings, clocks and disks while images are deleted for their age
// and for room on the disk, in any order and in the middle of that work: only images go that may,
// the oldest first and no more than needed, those that must go do, and the browser follows.
#include "DeletionHands.h"
#include "support/Sequences.h"

namespace velmora::test {
namespace {

constexpr int kEvents = 40;
constexpr int kSequences = 12;

class DeletionModel : public DeletionHands
{
protected:
    using Kind = EventKind<DeletionModel>;

    void play(int sequence)
    {
        seed(sequence);
        tidyUp();
        playEvents(
            *this, kKinds, {sequence, kEvents}, [this](int bound) { return below(bound); },
            [this] { finish(); });
    }

    // A new house costs more than a sequence.
    void tidyUp()
    {
        mayDisturb_ = false;
        letGo();
        house_.filmWindow.close();
        window_.close();
        keptCount_.reset();
        house_.clock.setUtcOffset({});
        house_.clock.setLocal(kFakeStart);
        storage().edit(QStringLiteral("C:\\in"));
        storage().putInForce();
        inForce_ = QStringLiteral("in");
        outside_.write(u"Health", u"DeleteOldest", 0);
        taken_ = 0;
        house_.clock.stall(std::chrono::hours{1});
        settle();
        fillFolders();
        fillRows();
        house_.house.engine.adoptSettings();
        refreshAll();
        settle();
        files_ = stored();
        start();
    }

    void fillFolders()
    {
        for (const QString &name : {QStringLiteral("in"), QStringLiteral("other")}) {
            const QString path = house_.house.tree.path(QStringLiteral("drives/c/") + name);
            QDir(path).removeRecursively();
            QDir().mkpath(path);
            rules_.storage = path;
            for (const QString &url : urls_) {
                for (int images = below(2) * below(25); images > 0; --images) {
                    put(url, anyDate());
                }
            }
        }
        takeState();
        for (const QString &name :
             {QStringLiteral("notes.txt"), QStringLiteral("18991230_0000000714.jpg"),
              QStringLiteral("20060131_2500000714.jpg")}) {
            put(anyOf(urls_), name);
        }
    }

    void fillRows()
    {
        for (const CameraAddress camera : cameras_) {
            outside_.write(QStringLiteral("Liste%1").arg(camera.group),
                           QStringLiteral("lst%1").arg(camera.row), anyOf(urls_));
            outside_.write(QStringLiteral("Groupe%1").arg(camera.group),
                           QStringLiteral("EffM%1").arg(camera.row),
                           QString::number(below(3) > 0 ? 1 : 0));
        }
        outside_.write(u"Health", u"LimitMB", 200);
        outside_.write(u"Health", u"DeleteOldest", QString::number(below(2)));
    }

    void start()
    {
        house_.busy.setCost(std::chrono::milliseconds{below(2) * 8});
        mayDisturb_ = below(2) == 0;
        isDisturbed_ = false;
        killed_.clear();
        before_ = files_;
        wasSelected_ = selected();
        wasListed_ = isListed_;
    }

    void settle()
    {
        house_.settle();
        house_.clock.advance(std::chrono::milliseconds{0});
    }

    // After an event.
    void finish()
    {
        settle();
        judge();
        mayDisturb_ = false;
        letGoAndLook();
        start();
    }

    void letGoAndLook()
    {
        lookAtRest();
        judge();
        if (isListed_ && isShowing()) {
            EXPECT_EQ(without(listed(), onDisk()), "");
            EXPECT_EQ(without(onDisk(), listed()), "");
            const QString newest = listed().isEmpty() ? QString() : listed().last();
            EXPECT_TRUE(!isPassive_ || !wasListed_ ||
                        selected() == (listed().contains(wasSelected_) ? wasSelected_ : newest))
                << selected().toStdString() << " was " << wasSelected_.toStdString();
        }
    }

    // Camera view, without a film, of a folder that can be read.
    bool isShowing() { return !isGroupView() && !house_.film.isOpen() && storage().isUsable(); }

    QStringList listed()
    {
        QStringList names;
        for (int i = 0; i < house_.data.files.count(); ++i) {
            names.append(house_.data.files.file(i).name);
        }
        return names;
    }

    QStringList onDisk()
    {
        const QDir folder(storage().native(house_.data.files.folder()));
        return folder.entryList({QStringLiteral("20*.*")}, QDir::Files, QDir::Name);
    }

    static std::string without(QStringList names, const QStringList &others)
    {
        names.removeIf([&](const QString &name) { return others.contains(name); });
        return names.join(u' ').toStdString();
    }

    QString selected() { return isGroupView() ? QString() : house_.data.files.selected().name; }

    // Kinds of events.
    template <auto Event>
    void passive() // the browser's list changes by the program's own deletion alone
    {
        isPassive_ = true;
        (this->*Event)();
        isListed_ = isListed_ && !mayDisturb_;
    }

    template <auto Event>
    void other()
    {
        isPassive_ = false;
        isListed_ = false;
        (this->*Event)();
    }

    template <auto Event>
    void browse()
    {
        isPassive_ = false;
        (this->*Event)();
        isListed_ = isListed_ && !mayDisturb_;
    }

    void list()
    {
        isPassive_ = false;
        mayDisturb_ = false;
        refreshAll();
        isListed_ = isShowing();
    }

    // An hour later a ticked camera's next image makes its old ones go.
    void storeLater()
    {
        other<&DeletionModel::endEdit>();
        calm();
        house_.clock.stall(std::chrono::minutes{61});
        house_.clock.advance(std::chrono::seconds{5});
        judge();
        const qsizetype before = house_.house.stored().size();
        store();
        settle();
        judge();
        if (house_.house.stored().size() == before) {
            return;
        }
        const auto camera = cameraFromText(house_.house.stored().last());
        const QString url = rules_.urls[*camera];
        const QString folder = rules_.folder(url);
        if (rules_.ticked.contains(*camera) && !rules_.isKept(folder, url)) {
            for (const QString &path : rules_.oldOnes(stored())) {
                EXPECT_FALSE(path.startsWith(folder + u'/')) << path.toStdString() << " is left";
            }
        }
    }

    // Where room is wanted, it is there a quarter of an hour later, or nothing is left that may go.
    void waitForRoom()
    {
        other<&DeletionModel::endEdit>();
        calm();
        for (int times = 0; times < 3; ++times) {
            house_.clock.stall(std::chrono::minutes{11});
            house_.clock.advance(std::chrono::seconds{5});
            judge();
        }
        if (rules_.makesRoom && storage().isUsable() && !keptCount_) {
            EXPECT_TRUE(freeBytes() >= rules_.leastBytes() || rules_.roomOnes(stored()).isEmpty())
                << freeBytes() << " of " << rules_.leastBytes() << ": "
                << rules_.roomOnes(stored()).join(u' ').toStdString();
        }
    }

    void calm()
    {
        mayDisturb_ = false;
        settle();
        judge();
    }

    static const std::vector<Kind> kKinds;

    QString wasSelected_;
    bool isListed_ = false; // what is on show is what is on the disk
    bool wasListed_ = false;
    bool isPassive_ = false;
};

const std::vector<DeletionModel::Kind> DeletionModel::kKinds{
    {"time", &DeletionModel::passive<&DeletionModel::passTime>, 8},
    {"set clock", &DeletionModel::passive<&DeletionModel::setClock>, 2},
    {"right clock", &DeletionModel::passive<&DeletionModel::rightClock>, 3},
    {"zone", &DeletionModel::passive<&DeletionModel::changeZone>},
    {"tick box", &DeletionModel::passive<&DeletionModel::tickBox>, 4},
    {"choose room", &DeletionModel::passive<&DeletionModel::chooseRoom>, 3},
    {"limit", &DeletionModel::passive<&DeletionModel::setLimit>, 2},
    {"health window", &DeletionModel::passive<&DeletionModel::openHealth>},
    {"address", &DeletionModel::other<&DeletionModel::changeUrl>, 2},
    {"fill disk", &DeletionModel::passive<&DeletionModel::fillDisk>, 5},
    {"keep states", &DeletionModel::passive<&DeletionModel::keepStates>},
    {"edit storage", &DeletionModel::other<&DeletionModel::editStorage>},
    {"end edit", &DeletionModel::other<&DeletionModel::endEdit>},
    {"store", &DeletionModel::other<&DeletionModel::store>, 5},
    {"add old", &DeletionModel::other<&DeletionModel::addOld>, 6},
    {"add many", &DeletionModel::other<&DeletionModel::addMany>},
    {"remove newest", &DeletionModel::other<&DeletionModel::removeNewest>},
    {"remove any", &DeletionModel::other<&DeletionModel::removeAny>},
    {"link folder", &DeletionModel::other<&DeletionModel::linkFolder>},
    {"begin", &DeletionModel::passive<&DeletionModel::begin>},
    {"kill", &DeletionModel::other<&DeletionModel::kill>},
    {"list", &DeletionModel::list, 5},
    {"click a row", &DeletionModel::browse<&DeletionModel::clickRow>, 2},
    {"press a cell", &DeletionModel::browse<&DeletionModel::pressCell>},
    {"let go", &DeletionModel::browse<&DeletionModel::letGo>},
    {"key", &DeletionModel::browse<&DeletionModel::key>},
    {"mode", &DeletionModel::other<&DeletionModel::mode>},
    {"film", &DeletionModel::other<&DeletionModel::film>},
    {"film ticks", &DeletionModel::browse<&DeletionModel::tick>},
    {"close film", &DeletionModel::other<&DeletionModel::closeFilm>},
    {"store later", &DeletionModel::storeLater, 4},
    {"wait for room", &DeletionModel::waitForRoom, 3},
};

TEST_F(DeletionModel, HoldsAfterEveryEventOfRandomSequences)
{
    const int played = playSequences(kSequences, [this](int sequence) { play(sequence); });
    EXPECT_TRUE((forRoom_ > 0 && forAge_ > 0) || played < kSequences);
}

} // namespace
} // namespace velmora::test
