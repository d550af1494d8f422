#include "ui/ReasonLine.h"

#include "cameras/CameraChoices.h"
#include "ui/ToolTips.h"

#include <algorithm>
#include <vector>

namespace velmora {

ReasonLine::ReasonLine(QLabel &line, std::span<CameraRowBoxes *const> rows, CameraPage &page,
                       LiveView &live)
    : QObject(&line)
    , line_(line)
    , page_(page)
    , live_(live)
{
    const std::vector<CameraRowBoxes *> all(rows.begin(), rows.end());
    for (CameraRowBoxes *const row : all) {
        connect(row, &CameraRowBoxes::taken, this, &ReasonLine::take);
    }
    connect(&page_, &CameraPage::rowChanged, this, &ReasonLine::show);
    connect(&page_, &CameraPage::pageLoaded, this, [this, all] { forget(all); });
    connect(&live_, &LiveView::reasonChanged, this, &ReasonLine::show);
}

void ReasonLine::take(int row)
{
    row_ = row;
    show();
}

void ReasonLine::forget(std::span<CameraRowBoxes *const> rows)
{
    const auto focused = std::ranges::find_if(rows, &CameraRowBoxes::hasFocus);
    row_ = focused == rows.end() ? std::nullopt
                                 : std::optional(static_cast<int>(focused - rows.begin()));
    show();
}

QString ReasonLine::text() const
{
    if (!row_) {
        return {};
    }
    const QString camera = tr("Camera %1").arg(cameraText({page_.group(), *row_}));
    const QString live = live_.reason({page_.group(), *row_});
    if (!live.isEmpty()) {
        return tr("%1, live picture: %2").arg(camera, live);
    }
    const QString reason = page_.reason(*row_);
    return reason.isEmpty() ? QString() : tr("%1: %2").arg(camera, reason);
}

void ReasonLine::show()
{
    const QString now = text();
    if (line_.text() != now) {
        line_.setText(now);
        setPlainToolTip(line_, now);
    }
}

} // namespace velmora
