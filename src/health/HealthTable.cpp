#include "health/HealthTable.h"

#include <QLocale>

#include <algorithm>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr auto kPause = 1s;
constexpr qint64 kBeyondAges = 100'000'000'000; // seconds

using State = HealthTable::State;

State stateOf(const CameraHealth &camera)
{
    if (camera.lateSince) {
        return State::Late;
    }
    if (camera.failures > 0) {
        return State::Failing;
    }
    return camera.newest ? State::Good : State::Unknown;
}

QString spanText(const std::optional<std::chrono::seconds> &span)
{
    return span ? ageText(*span) : QString();
}

QString stateText(const CameraHealth &camera)
{
    switch (stateOf(camera)) {
    case State::Late:
        return HealthTable::tr("late");
    case State::Failing:
        return HealthTable::tr("failing");
    case State::Unknown:
        return HealthTable::tr("no image yet");
    case State::Good:
        break;
    }
    return HealthTable::tr("good");
}

} // namespace

HealthTable::HealthTable(HealthBook &book)
    : book_(book)
    , cameras_(book.cameras())
{
    timer_.setSingleShot(true);
    timer_.setInterval(kPause);
    connect(&timer_, &QTimer::timeout, this, &HealthTable::refresh);
    connect(&book_, &HealthBook::changed, this, &HealthTable::refreshSoon);
    connect(&book_, &HealthBook::tableChanged, this, &HealthTable::followCameras);
}

// Row by row: a view stays on its current camera.
void HealthTable::followCameras()
{
    const std::vector<CameraAddress> wanted = book_.cameras();
    for (int row = rowCount(); row-- > 0;) {
        if (!std::ranges::binary_search(wanted, address(row))) {
            beginRemoveRows({}, row, row);
            cameras_.erase(cameras_.begin() + row);
            endRemoveRows();
        }
    }
    for (int row = 0; row < static_cast<int>(wanted.size()); ++row) {
        const CameraAddress camera = wanted.at(static_cast<std::size_t>(row));
        if (row == rowCount() || address(row) != camera) {
            beginInsertRows({}, row, row);
            cameras_.insert(cameras_.begin() + row, camera);
            endInsertRows();
        }
    }
}

// All rows at once: what sorts them would put one row wrong beside others that have changed as
// well, which it has not been told yet.
void HealthTable::refresh()
{
    followCameras();
    if (!cameras_.empty()) {
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, kColumns - 1));
    }
}

void HealthTable::refreshSoon()
{
    if (!timer_.isActive()) {
        timer_.start();
    }
}

int HealthTable::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(cameras_.size());
}

int HealthTable::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : kColumns;
}

QVariant HealthTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section >= kColumns) {
        return {};
    }
    const std::array<QString, kColumns> titles{
        tr("State"),       tr("Camera"),       tr("Newest image"), tr("Usual interval"),
        tr("Last 24 h"),   tr("Last failure"), tr("Failing for"),  tr("Failures"),
        tr("Bytes a day"), tr("Bytes in all")};
    return titles.at(static_cast<std::size_t>(section));
}

QString HealthTable::text(CameraAddress camera, Column column) const
{
    const CameraHealth &health = book_.camera(camera);
    const auto age = [this](const std::optional<Moment> &when) {
        return when ? ageText(std::max(std::chrono::seconds(0), book_.now() - *when)) : QString();
    };
    const auto size = [](qint64 bytes) { return QLocale().formattedDataSize(bytes); };
    switch (column) {
    case Lamp:
        return stateText(health);
    case Camera:
        return book_.title(camera);
    case Age:
        return age(health.newest);
    case Interval:
        return spanText(health.usualInterval());
    case Day:
        return QString::number(health.imagesADay(book_.now()));
    case Failure:
        return health.failure;
    case FailedFor:
        return age(health.failedSince);
    case Failures:
        return QString::number(health.failures);
    case ADay:
        return size(health.bytesADay(book_.now()));
    case InAll:
        return size(health.bytes);
    }
    return {};
}

// Ages as times since 1970, longest first.
QVariant HealthTable::sortValue(CameraAddress camera, Column column) const
{
    const CameraHealth &health = book_.camera(camera);
    const auto since = [](const std::optional<Moment> &when) {
        return when ? static_cast<qint64>(-when->time_since_epoch().count()) : qint64{0};
    };
    switch (column) {
    case Lamp: // among equals, the one that has been quiet longest
        return static_cast<qint64>(stateOf(health)) * kBeyondAges +
               std::min<qint64>(kBeyondAges - 1, book_.quiet(camera).value_or(0s).count());
    case Age:
        return since(health.newest);
    case Interval:
        return static_cast<qint64>(health.usualInterval().value_or(0s).count());
    case Day:
        return health.imagesADay(book_.now());
    case FailedFor:
        return health.failedSince ? static_cast<qint64>((book_.now() - *health.failedSince).count())
                                  : qint64{-1};
    case Failures:
        return health.failures;
    case ADay:
        return health.bytesADay(book_.now());
    case InAll:
        return health.bytes;
    default:
        return text(camera, column);
    }
}

QVariantList HealthTable::bars(CameraAddress camera) const
{
    QVariantList list;
    for (const HourBar &hour : book_.camera(camera).bars(book_.now())) {
        list.append(hour.images);
    }
    return list;
}

QVariant HealthTable::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount() || index.column() >= kColumns) {
        return {};
    }
    const CameraAddress camera = address(index.row());
    const auto column = static_cast<Column>(index.column());
    switch (role) {
    case Qt::DisplayRole:
        return text(camera, column);
    case kStateRole:
        return static_cast<int>(stateOf(book_.camera(camera)));
    case kSortRole:
        return sortValue(camera, column);
    case kBarsRole:
        return column == Day ? QVariant(bars(camera)) : QVariant();
    default:
        return {};
    }
}

} // namespace velmora
