// Loads a window's pictures one after another, with a turn of the event loop before each, so that
// keys, timers and painting never wait for more than one picture.
#pragma once

#include "base/Clock.h"
#include "base/TaskScope.h"
#include "pictures/PictureCache.h"

#include <QCoro/QCoroTask>
#include <QImage>
#include <QList>
#include <QObject>
#include <QString>

namespace velmora {

struct PictureOrder
{
    int place = 0; ///< whatever identifies it to the caller
    QString path;  ///< native
    PictureWish wish;

    bool operator==(const PictureOrder &) const = default;
};

/// Works in the scope, which must be joined before the loader is destroyed.
class PictureLoader : public QObject
{
    Q_OBJECT

public:
    PictureLoader(PictureCache &cache, Clock &clock, TaskScope &scope);

    /// Loads these, in this order, and drops those still waiting. The ones in the cache are
    /// delivered at once, within the call; the others one per turn of the event loop. Does nothing
    /// once the scope was asked to stop.
    void load(QList<PictureOrder> orders);

    /// Nothing is waiting.
    [[nodiscard]] bool isIdle() const { return waiting_.isEmpty(); }

Q_SIGNALS:
    /// image: null when there is no picture.
    void loaded(const velmora::PictureOrder &order, const QImage &image);

    /// The last order of a load() was delivered: within the call when the cache had all of them (or
    /// there were none). Not emitted for a load() that was abandoned for a newer one.
    void finished();

private:
    struct Delivery
    {
        PictureOrder order;
        QImage image;
    };

    [[nodiscard]] QList<Delivery> takeRemembered(QList<PictureOrder> orders);
    void deliver(const QList<Delivery> &deliveries);
    void deliverNext();
    QCoro::Task<> work();

    PictureCache &cache_;
    Clock &clock_;
    TaskScope &scope_;
    QList<PictureOrder> waiting_;
    quint64 round_ = 0; // counts load(): a listener may call it while a picture is delivered
    bool working_ = false;
};

} // namespace velmora
