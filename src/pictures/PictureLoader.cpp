#include "pictures/PictureLoader.h"

#include <QScopeGuard>

#include <utility>

namespace velmora {

PictureLoader::PictureLoader(PictureCache &cache, Clock &clock, TaskScope &scope)
    : cache_(cache)
    , clock_(clock)
    , scope_(scope)
{
}

void PictureLoader::load(QList<PictureOrder> orders)
{
    ++round_;
    waiting_.clear();
    if (scope_.stopToken().stop_requested()) {
        return;
    }
    const QList<Delivery> remembered = takeRemembered(std::move(orders));
    if (!waiting_.isEmpty() && !working_) {
        scope_.launch(work());
    }
    deliver(remembered);
}

// What waits is settled before anything is delivered: a listener may load again.
QList<PictureLoader::Delivery> PictureLoader::takeRemembered(QList<PictureOrder> orders)
{
    QList<Delivery> remembered;
    for (PictureOrder &order : orders) {
        if (const std::optional<QImage> image = cache_.known(order.path, order.wish)) {
            remembered.append({std::move(order), *image});
        } else {
            waiting_.append(std::move(order));
        }
    }
    return remembered;
}

void PictureLoader::deliver(const QList<Delivery> &deliveries)
{
    const quint64 round = round_;
    for (const Delivery &delivery : deliveries) {
        Q_EMIT loaded(delivery.order, delivery.image);
        if (round != round_ || scope_.stopToken().stop_requested()) {
            return;
        }
    }
    if (waiting_.isEmpty()) {
        Q_EMIT finished();
    }
}

QCoro::Task<> PictureLoader::work()
{
    working_ = true;
    const auto ended = qScopeGuard([this] {
        working_ = false;
        waiting_.clear();
    });
    while (!waiting_.isEmpty()) {
        co_await clock_.yield();
        if (scope_.stopToken().stop_requested()) {
            co_return;
        }
        deliverNext();
    }
}

void PictureLoader::deliverNext()
{
    if (waiting_.isEmpty()) {
        return; // given up meanwhile
    }
    PictureOrder order = waiting_.takeFirst();
    QImage image = cache_.read(order.path, order.wish);
    deliver({{std::move(order), std::move(image)}});
}

} // namespace velmora
