#include "DeletionHands.h"

#include <algorithm>

namespace velmora::test {

// Between two turns of the event loop, in the middle of any work.
void DeletionHands::disturb()
{
    if (mayDisturb_ && !isQueued_ && oneIn(6)) {
        isQueued_ = true;
        QMetaObject::invokeMethod(
            &here_,
            [this] {
                isQueued_ = false;
                meanwhile();
            },
            Qt::QueuedConnection);
    }
}

void DeletionHands::meanwhile()
{
    static const QList<void (DeletionHands::*)()> kEvents{
        &DeletionHands::setClock,     &DeletionHands::tickBox,   &DeletionHands::tickBox,
        &DeletionHands::chooseRoom,   &DeletionHands::setLimit,  &DeletionHands::fillDisk,
        &DeletionHands::changeUrl,    &DeletionHands::addOld,    &DeletionHands::removeNewest,
        &DeletionHands::removeNewest, &DeletionHands::removeAny, &DeletionHands::editStorage,
        &DeletionHands::changeZone,   &DeletionHands::store};
    if (!mayDisturb_) {
        return;
    }
    judge();
    isDisturbed_ = true;
    (this->*anyOf(kEvents))();
}

void DeletionHands::takeState()
{
    const WallTime local = house_.clock.localNow();
    const WallTime universal = local - house_.clock.utcOffset();
    rules_.read(house_.house.tree.read(u"Velmora.ini"));
    rules_.storage = house_.house.tree.path(QStringLiteral("drives/c/") + inForce_);
    rules_.isEdited = storage().isBeingEdited();
    rules_.earlier = std::min(local, universal);
    rules_.later = std::max(local, universal);
    rules_.allBytes = kDisk;
}

// Paths of the images that are newly listed as deleted for room.
QStringList DeletionHands::newRecords()
{
    if (!house_.house.tree.exists(u"Velmora.deleted")) {
        return {};
    }
    const QStringList lines = QString::fromUtf8(house_.house.tree.read(u"Velmora.deleted"))
                                  .split(u'\n', Qt::SkipEmptyParts);
    QStringList paths;
    for (const QString &line : lines.mid(std::exchange(recordsRead_, lines.size()))) {
        const auto camera = cameraFromText(line.section(u' ', -2, -2));
        EXPECT_TRUE(camera) << line.toStdString();
        paths.append(rules_.folder(rules_.urls[camera.value_or(CameraAddress())]) + u'/' +
                     line.section(u' ', -1));
    }
    return paths;
}

DeletionHands::Gone DeletionHands::gone(const StoredFiles &now)
{
    Gone gone{{}, newRecords()};
    for (const QString &path : gone.forRoom) {
        EXPECT_FALSE(now.contains(path)) << path.toStdString();
    }
    for (const QString &path : files_.keys()) {
        if (!now.contains(path) && !gone.forRoom.contains(path) && path != killed_) {
            gone.forAge.append(path);
        }
    }
    return gone;
}

// Nothing goes but while events are handled, and then all holds as it does now.
void DeletionHands::judge()
{
    takeState();
    const StoredFiles now = stored();
    const Gone gone = this->gone(now);
    for (const QString &path : gone.forAge) {
        EXPECT_EQ(rules_.faultOfAge(path, now).toStdString(), "") << path.toStdString();
    }
    forAge_ += static_cast<int>(gone.forAge.size());
    forRoom_ += static_cast<int>(gone.forRoom.size());
    if (!gone.forRoom.isEmpty()) {
        judgeRoom(gone.forRoom, gone.forAge.size(), now);
    }
    files_ = now;
}

// Only as many as are needed, and in the order of their dates.
void DeletionHands::judgeRoom(const QStringList &paths, qsizetype forAge, const StoredFiles &now)
{
    QString last;
    for (const QString &path : paths) {
        EXPECT_EQ(rules_.faultOfRoom(path, files_.value(path), now).toStdString(), "")
            << path.toStdString();
        last = std::max(last, path.section(u'/', -1).left(15));
    }
    const qint64 without = keptCount_ ? 0 : kImage * (1 + forAge);
    EXPECT_LT(freeBytes() - without, rules_.wantedBytes());
    if (isDisturbed_) {
        return;
    }
    for (const QString &path : rules_.roomOnes(now)) {
        EXPECT_TRUE(path.section(u'/', -1).left(15) >= last || !before_.contains(path))
            << path.toStdString() << " is older than " << last.toStdString();
    }
}

} // namespace velmora::test
