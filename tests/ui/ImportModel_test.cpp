// Whatever a user, other programs, disks and the capture do around the import, in any order: its
// window says what the rules make of it, what is copied is whole and has its name, nothing is
// replaced or lost, and the browser shows what came. Sequences of random events, each followed by a
// check of the window and of every file.
#include "ImportChecks.h"
#include "support/Sequences.h"

#include <vector>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr int kSequences = 12;
constexpr int kEvents = 60;

class ImportModel : public ImportChecks
{
public:
    explicit ImportModel(int sequence)
        : sequence_(sequence)
    {
        random_.seed(static_cast<quint32>(sequence));
        changePace();
        fillFolders();
        fillSettings();
        house().clock.advance(20s);
        storage_ = inForce();
        world_ = everything();
    }

    void play()
    {
        open();
        QStringList done;
        for (int i = 0; i < kEvents && !HasFailure(); ++i) {
            const Kind &kind = run_ && oneIn(3)
                                   ? kKinds.back()
                                   : anyOfKinds(kKinds, [this](int bound) { return below(bound); });
            done.append(QString::fromLatin1(kind.name));
            SCOPED_TRACE("sequence " + std::to_string(sequence_) + ": " +
                         done.join(QStringLiteral(", ")).toStdString());
            (this->*kind.run)();
            check();
            if (!HasFailure() && oneIn(run_ ? 6 : 2)) {
                done.append(QStringLiteral("settled"));
                settle();
                checkAtRest();
            }
        }
        SCOPED_TRACE("sequence " + std::to_string(sequence_) + ", at its end");
        end();
    }

private:
    using Kind = EventKind<ImportModel>;

    void settle()
    {
        for (int i = 0; i < 3; ++i) {
            house().clock.advance(0ms);
        }
        check();
    }

    void fillSettings()
    {
        for (const auto &[key, value] :
             {std::pair("Patern", "*.jpg"), std::pair("Drive", "C:"), std::pair("Dir", "C:\\card"),
              std::pair("ICam", "0"), std::pair("ILien", "0")}) {
            const QString name = QString::fromLatin1(key);
            store(name, QString::fromLatin1(value));
            house().settings.write(u"Control", name, QString::fromLatin1(value));
        }
        for (const CameraAddress camera : kUsed) {
            address(camera) = cameraUrl(camera);
            house().addCamera(camera, cameraUrl(camera));
        }
        house().engine.adoptSettings();
    }

    // Of the program, whatever is under way: no part of a file stays behind.
    void end()
    {
        if (HasFailure()) {
            return;
        }
        rooms_.window.close();
        house().scope.requestStop();
        house().clock.advance(1s);
        checkFiles();
        EXPECT_EQ(house().scope.running(), 0);
    }

    void fillFolders()
    {
        house().tree.makeFolder(u"away");
        house().tree.makeFolder(u"drives/c/card/DCIM");
        for (const QString &storage : {QStringLiteral("in"), QStringLiteral("other")}) {
            for (const CameraAddress camera : kUsed) {
                const QString folder = QStringLiteral("drives/c/") + storage + u'/' +
                                       encodedAddress(cameraUrl(camera));
                house().tree.makeFolder(folder);
                for (int images = below(3); images > 0; --images) {
                    write(tree(folder) + u'/' + anyName(), anyBytes());
                }
            }
        }
        for (int files = below(30); files > 0; --files) {
            write(tree(QStringLiteral("drives/c/card/")) + anyName(), anyBytes());
        }
    }

    static const std::vector<Kind> kKinds;

    int sequence_;
};

const std::vector<ImportModel::Kind> ImportModel::kKinds{
    {"open", &ImportModel::open, 6},
    {"close", &ImportModel::close, 3},
    {"reopen", &ImportModel::reopen, 3},
    {"dismiss", &ImportModel::dismiss, 6},
    {"pick camera", &ImportModel::pickCamera, 2},
    {"pick drive", &ImportModel::pickDrive},
    {"open folder", &ImportModel::openFolder, 2},
    {"type filter", &ImportModel::typeFilter, 3},
    {"press file", &ImportModel::pressFile},
    {"release file", &ImportModel::releaseFile, 2},
    {"click file", &ImportModel::clickFile, 2},
    {"key on files", &ImportModel::useKeyOnFiles, 2},
    {"press go", &ImportModel::pressGo},
    {"release go", &ImportModel::releaseGo, 2},
    {"click go", &ImportModel::clickGo, 9},
    {"key on go", &ImportModel::useKeyOnGo, 2},
    {"add file", &ImportModel::addFile, 3},
    {"remove file", &ImportModel::removeFile},
    {"change file", &ImportModel::changeFile},
    {"break file", &ImportModel::breakFile},
    {"turn folder", &ImportModel::turnFolder},
    {"fail reading", &ImportModel::failReading},
    {"fail listing", &ImportModel::failListing},
    {"fill disk", &ImportModel::fillTheDisk},
    {"other file system", &ImportModel::changeFileSystem},
    {"mend", &ImportModel::mend, 4},
    {"turn source", &ImportModel::turnTheSource},
    {"turn disk", &ImportModel::turnTheDisk},
    {"turn target", &ImportModel::turnTheTarget},
    {"check storage", &ImportModel::checkStorage},
    {"type storage", &ImportModel::typeStorage, 2},
    {"leave storage", &ImportModel::leaveStorage, 3},
    {"name storage", &ImportModel::nameStorage},
    {"type address", &ImportModel::typeAddress},
    {"change address", &ImportModel::changeAddress},
    {"capture", &ImportModel::capture, 2},
    {"choose in browser", &ImportModel::chooseInBrowser, 2},
    {"delete in browser", &ImportModel::deleteInBrowser, 2},
    {"refresh browser", &ImportModel::refreshBrowser},
    {"pace", &ImportModel::changePace},
    {"turns", &ImportModel::passTurns, 3},
    {"turn", &ImportModel::passATurn, 3}};

TEST(ImportModel, HoldsAfterEveryEventOfRandomSequences)
{
    playSequences(kSequences, [](int sequence) { ImportModel(sequence).play(); });
}

} // namespace
} // namespace velmora::test
