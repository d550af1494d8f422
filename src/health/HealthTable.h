// The table of all cameras, worst first, for a view.
#pragma once

#include "health/HealthBook.h"

#include <QAbstractTableModel>
#include <QTimer>

#include <vector>

namespace velmora {

/// Changes are shown together, once a second at most.
class HealthTable : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// Better first.
    enum class State { Good, Unknown, Failing, Late };

    static constexpr std::size_t kStates = 4;

    enum Column { Lamp, Camera, Age, Interval, Day, Failure, FailedFor, Failures, ADay, InAll };

    static constexpr int kColumns = InAll + 1;
    static constexpr int kSortRole = Qt::UserRole;
    static constexpr int kBarsRole = Qt::UserRole + 1;  // images of each of 24 hours
    static constexpr int kStateRole = Qt::UserRole + 2; // State as an int, for the lamp

    /// The book outlives the table.
    explicit HealthTable(HealthBook &book);

    /// Shows the current state; ages grow while they are on show.
    void refresh();

    [[nodiscard]] CameraAddress address(int row) const
    {
        return cameras_.at(static_cast<std::size_t>(row));
    }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    void followCameras();
    void refreshSoon();
    [[nodiscard]] QString text(CameraAddress camera, Column column) const;
    [[nodiscard]] QVariant sortValue(CameraAddress camera, Column column) const;
    [[nodiscard]] QVariantList bars(CameraAddress camera) const;

    HealthBook &book_;
    std::vector<CameraAddress> cameras_;
    QTimer timer_;
};

} // namespace velmora
