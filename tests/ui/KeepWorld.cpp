#include "KeepWorld.h"

#include "../capture/DiskRules.h"
#include "base/ImagesText.h"

namespace velmora::test {

const QStringList KeepWorld::kTargetFolders{QStringLiteral("one"), QStringLiteral("two")};

KeepWorld::KeepWorld(const TempTree &out, int seed)
    : out_(out)
    , random_(static_cast<quint32>(seed))
{
    for (const QString &name : kTargetFolders) {
        QDir(out_.path(name)).removeRecursively();
        out_.makeFolder(name);
    }
    for (const CameraAddress camera : cameras_) {
        house_.house.addCamera(camera, cameraUrl(camera));
        const QString path = folder(camera);
        QDir().mkpath(path);
        for (int images = below(20); images > 0; --images) {
            put(path, anyName());
        }
        put(QString(path).replace(QStringLiteral("/in/"), QStringLiteral("/other/")), anyName());
    }
    house_.open();
    keep_ = std::make_unique<FilmKeep>(house_.images.filmMaker(), house_.film);
    QObject::connect(&house_.window, &planche::keepWanted, keep_.get(),
                     [this] { keep_->present({}); });
    QObject::connect(keep_.get(), &FilmKeep::openWanted, keep_.get(),
                     [this](const QString &path) { opened_ = path; });
    QObject::connect(&house_.data.files, &QAbstractItemModel::modelReset, &here_,
                     [this] { followList(); });
    QObject::connect(&maker(), &FilmMaker::ended, &here_, [this](const QString &text) {
        ended_.append(text);
        isEndNews_ = !keep_->isVisible();
    });
    QObject::connect(&maker(), &FilmMaker::advanced, &here_, [this] { lookAtTargets(); });
}

KeepWorld::~KeepWorld()
{
    if (oneIn(2)) {
        maker().cancel();
        keep_->close();
    }
}

QString KeepWorld::folder(CameraAddress camera) const
{
    return house_.house.tree.path(QStringLiteral("drives/c/in/") + ruleFolder(cameraUrl(camera)));
}

QString KeepWorld::anyName()
{
    static const QStringList kDays{QStringLiteral("05"), QStringLiteral("07"),
                                   QStringLiteral("11")};
    static const QStringList kTimes{QStringLiteral("0000"), QStringLiteral("0930"),
                                    QStringLiteral("1405"), QStringLiteral("2359")};
    return QStringLiteral("200603%1_%2%3")
               .arg(anyOf(kDays), anyOf(kTimes))
               .arg(below(3) * 10, 2, 10, QLatin1Char('0')) +
           QStringLiteral("0714.jpg");
}

QString KeepWorld::anyFilm()
{
    static const QStringList kNames{QStringLiteral("a"),      QStringLiteral("b.gif"),
                                    QStringLiteral("b.gif"),  QStringLiteral("c.GIF"),
                                    QStringLiteral("d.webp"), QStringLiteral("e.avi"),
                                    QStringLiteral("f.mp4")};
    return anyOf(kNames);
}

// Of the cameras in use.
QString KeepWorld::anyImage()
{
    const QString path = folder(anyCamera()) + u'/';
    QStringList images = images_.keys();
    images.removeIf([&](const QString &image) { return !image.startsWith(path); });
    return images.isEmpty() || !isDiskThere() ? QString() : anyOf(images);
}

bool KeepWorld::isDiskThere() const
{
    return !house_.house.tree.exists(u"drives/c/away");
}

void KeepWorld::write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    EXPECT_EQ(file.write(bytes), bytes.size());
}

QByteArray KeepWorld::read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// No two are alike.
QByteArray KeepWorld::picture(const QString &path)
{
    static QMap<int, QByteArray> pictures;
    const int hue = below(360);
    if (!pictures.contains(hue)) {
        pictures[hue] = pictureBytes(QColor::fromHsv(hue, 200, 200), {32, 24});
    }
    return pictures[hue] + path.section(u'/', -3).toLatin1();
}

void KeepWorld::put(const QString &folder, const QString &name)
{
    const QString path = folder + u'/' + name;
    const QByteArray bytes = picture(path);
    QDir().mkpath(folder);
    write(path, bytes);
    images_[path] = bytes;
    everSeen_[path].insert(bytes);
}

void KeepWorld::note(const QString &path, int KeepRun::*count)
{
    const bool isPicked = run_ && path.startsWith(run_->source + u'/') &&
                          run_->picks.contains(path.section(u'/', -1));
    if (isPicked) {
        ++((*run_).*count);
    }
}

void KeepWorld::trouble()
{
    if (run_) {
        run_->isTroubled = true;
    }
}

void KeepWorld::press(const char *button)
{
    if (isOpen()) {
        QTest::mouseClick(&in<QWidget>(button), Qt::LeftButton);
    }
}

KeepBoxes KeepWorld::boxes() const
{
    return {in<QLineEdit>("filmFrom").text(),
            in<QLineEdit>("filmTo").text(),
            in<QSpinBox>("filmHoursFrom").value(),
            in<QSpinBox>("filmHoursTo").value(),
            in<QComboBox>("filmThinning").currentIndex(),
            in<QSpinBox>("filmThinningNumber").value(),
            in<QSpinBox>("filmRate").value()};
}

QStringList KeepWorld::listed() const
{
    QStringList names;
    for (int i = 0; i < house_.data.files.count(); ++i) {
        names.append(house_.data.files.file(i).name);
    }
    return names;
}

void KeepWorld::followList()
{
    if (house_.data.files.folder() == keptText_) {
        kept_ = listed();
    }
}

KeepRun KeepWorld::agreed(bool isFilm)
{
    static const QStringList kForms{QStringLiteral(".mp4"), QStringLiteral(".webm"),
                                    QStringLiteral(".webp"), QStringLiteral(".gif")};
    KeepRun run;
    run.isFilm = isFilm;
    run.boxes = boxes();
    run.source = source_;
    run.picks = picked(kept_, run.boxes);
    const QString folder = out_.path(anyOf(kTargetFolders));
    typedTarget_ = folder + u'/' + anyFilm();
    const QString form = kForms.at(in<QComboBox>("filmForm").currentIndex());
    run.target =
        isFilm ? typedTarget_ + (typedTarget_.section(u'/', -1).contains(u'.') ? QString() : form)
               : folder;
    run.before = targets_.value(run.target);
    run.isTroubled =
        full_ || refused_ || !QFileInfo::exists(folder) || !QFileInfo::exists(run.source);
    for (const QString &name : run.picks) {
        const QString path = run.source + u'/' + name;
        run.were += static_cast<int>(targets_.contains(run.target + u'/' + name));
        run.removed += static_cast<int>(!images_.contains(path));
        run.damaged += static_cast<int>(broken_.contains(images_.value(path)));
    }
    return run;
}

// To whatever the box for a file asks besides.
std::unique_ptr<QTimer> KeepWorld::sayYes()
{
    auto timer = std::make_unique<QTimer>();
    QObject::connect(timer.get(), &QTimer::timeout, timer.get(), [] {
        if (auto *const asked = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            QAbstractButton *const yes = asked->button(QMessageBox::Yes);
            QTest::mouseClick(yes != nullptr ? yes : asked->buttons().first(), Qt::LeftButton);
        }
    });
    timer->start(0);
    return timer;
}

QStringList KeepWorld::filesIn(const QString &folder)
{
    QStringList paths;
    QDirIterator files(folder, QDir::Files | QDir::Hidden | QDir::System,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        paths.append(files.next());
    }
    return paths;
}

void KeepWorld::look()
{
    if (run_ && !maker().isBusy() && !ended_.isEmpty()) {
        lookAtTargets();
        EXPECT_EQ(ended_.size(), 1);
        judgeEnd(ended_.takeLast());
    }
    lookAtTargets();
    lookAtImages();
    lookAtWindow();
}

void KeepWorld::settle()
{
    EXPECT_TRUE(QTest::qWaitFor(
        [this] {
            house_.clock.advance(std::chrono::milliseconds{0});
            return !maker().isBusy();
        },
        60'000));
    house_.settle();
}

// Nothing that is stored is lost or changed, and nothing is added.
void KeepWorld::lookAtImages()
{
    const QString away = house_.house.tree.path(u"drives/c/away/");
    const QString there = house_.house.tree.path(u"drives/c/in/");
    QMap<QString, QByteArray> images;
    for (const QString &path : filesIn(house_.house.tree.path(u"drives/c"))) {
        images[QString(path).replace(away, there)] = read(path);
    }
    EXPECT_EQ(images.keys(), images_.keys());
    EXPECT_TRUE(images == images_);
}

void KeepWorld::lookAtTargets()
{
    const QStringList paths = filesIn(out_.path());
    for (const QString &path : paths) {
        lookAtTarget(path);
    }
    for (const QString &path : targets_.keys()) {
        EXPECT_TRUE(paths.contains(path)) << path.toStdString() << " is gone";
    }
}

// A file under a name of its own is whole, whenever it is looked at.
void KeepWorld::lookAtTarget(const QString &path)
{
    const QByteArray bytes = read(path);
    const QString name = path.section(u'/', -1);
    if (targets_.contains(path) && targets_[path] == bytes) {
        return;
    }
    if (name.startsWith(u".velmora-")) {
        EXPECT_TRUE(maker().isBusy()) << path.toStdString() << " is left";
        return;
    }
    ASSERT_TRUE(run_) << path.toStdString();
    if (run_->isFilm) {
        EXPECT_EQ(path.toStdString(), run_->target.toStdString());
        EXPECT_TRUE(isWholeFilm(path)) << path.toStdString();
    } else {
        EXPECT_EQ(path.toStdString(), (run_->target + u'/' + name).toStdString());
        EXPECT_TRUE(run_->picks.contains(name)) << name.toStdString();
        EXPECT_TRUE(everSeen_.value(run_->source + u'/' + name).contains(bytes));
        EXPECT_FALSE(targets_.contains(path)) << path.toStdString() << " is replaced";
    }
    targets_[path] = bytes;
}

void KeepWorld::judgeEnd(const QString &text)
{
    told_ = text;
    hasResult_ = false;
    SCOPED_TRACE(text.toStdString());
    run_->isFilm ? judgeFilm(text) : judgeCopy(text);
    lastRun_ = *run_;
    run_.reset();
}

// What must be said of a film that nothing but its own images and its name keep from being made.
QString KeepWorld::expectedRefusal() const
{
    if (!QStringList{QStringLiteral("mp4"), QStringLiteral("webm"), QStringLiteral("webp"),
                     QStringLiteral("gif")}
             .contains(run_->target.section(u'.', -1).toLower())) {
        return QStringLiteral("The file name must end in .mp4, .webm, .webp or .gif.");
    }
    return run_->picks.isEmpty() ? QStringLiteral("There are no images in this range.") : QString();
}

void KeepWorld::judgeFilm(const QString &text)
{
    const auto film = filmText(text);
    const auto all = static_cast<int>(run_->picks.size());
    if (!film) {
        EXPECT_TRUE(targets_.value(run_->target) == run_->before);
        EXPECT_TRUE(run_->isCancelled || !text.startsWith(QStringLiteral("Cancelled")));
        const QString none = QStringLiteral("There is no picture in this range that could be read");
        const bool isNone = text.startsWith(none) && run_->damaged + run_->removed >= all;
        EXPECT_TRUE(run_->isTroubled || isNone ||
                    (run_->isCancelled && text == u"Cancelled; no film was made.") ||
                    text == expectedRefusal());
        EXPECT_FALSE(text.isEmpty());
        return;
    }
    ++films_;
    EXPECT_EQ(expectedRefusal().toStdString(), "");
    EXPECT_EQ(film->shown + film->broken + film->gone, all);
    EXPECT_LE(film->gone, run_->removed);
    EXPECT_LE(film->broken, run_->damaged);
    EXPECT_TRUE(run_->isTroubled || targets_.contains(run_->target));
    const auto pictures = picturesOfGif(run_->target);
    EXPECT_TRUE(!pictures || run_->boxes.rate > 50 || *pictures == film->shown)
        << pictures.value_or(0);
    hasResult_ = true;
}

void KeepWorld::judgeCopy(const QString &text)
{
    const auto copy = copyText(text);
    if (!copy) {
        EXPECT_TRUE(run_->isTroubled);
        EXPECT_FALSE(text.isEmpty());
        return;
    }
    ++copies_;
    const auto all = static_cast<int>(run_->picks.size());
    const int looked = copy->copied + copy->there + copy->gone;
    EXPECT_LE(copy->gone, run_->removed);
    EXPECT_LE(copy->there, run_->were);
    if (copy->rest.isEmpty()) {
        EXPECT_EQ(looked, all);
    } else if (copy->rest == u"; cancelled") {
        EXPECT_TRUE(run_->isCancelled && looked < all);
    } else {
        EXPECT_TRUE(run_->isTroubled);
    }
    int there = 0;
    for (const QString &name : run_->picks) {
        there += static_cast<int>(targets_.contains(run_->target + u'/' + name));
    }
    EXPECT_TRUE(run_->isTroubled || there - run_->were == copy->copied)
        << there << " less " << run_->were;
    const bool isGood = copy->rest.isEmpty() || copy->rest == u"; cancelled";
    hasResult_ = isGood && copy->copied + copy->there > 0;
}

void KeepWorld::lookAtWindow()
{
    if (!wasOpened_) {
        return;
    }
    const bool isBusy = maker().isBusy();
    EXPECT_EQ(in<QWidget>("filmCancel").isEnabled(), isBusy);
    EXPECT_EQ(in<QWidget>("filmOpen").isEnabled(), !isBusy && hasResult_);
    EXPECT_EQ(in<QWidget>("filmShowFolder").isEnabled(), !isBusy && hasResult_);
    if (isBusy) {
        EXPECT_FALSE(in<QWidget>("filmMake").isEnabled());
        EXPECT_FALSE(in<QWidget>("filmCopy").isEnabled());
    } else {
        EXPECT_EQ(in<QLabel>("filmTimeLeft").text().toStdString(), told_.toStdString());
    }
}

void KeepWorld::lookAtRest()
{
    look();
    if (wasOpened_ && !maker().isBusy()) {
        lookAtForecast();
    }
}

void KeepWorld::lookAtForecast()
{
    const KeepBoxes boxes = this->boxes();
    const qsizetype images = picked(kept_, boxes).size();
    const QString forecast = in<QLabel>("filmForecast").text();
    if (kept_.isEmpty()) {
        EXPECT_EQ(forecast.toStdString(), "There are no images.");
    } else if (areMoments(boxes)) {
        const QString begin = QStringLiteral("%1, %2 seconds, about ")
                                  .arg(imagesText(images))
                                  .arg(lengthOf(images, boxes), 0, 'f', 1);
        EXPECT_TRUE(forecast.startsWith(begin))
            << forecast.toStdString() << " for " << begin.toStdString();
    } else {
        EXPECT_TRUE(forecast.startsWith(QStringLiteral("From and to are days or times")));
    }
    EXPECT_EQ(in<QWidget>("filmMake").isEnabled(), images > 0);
    EXPECT_EQ(in<QWidget>("filmCopy").isEnabled(), images > 0);
}

} // namespace velmora::test
