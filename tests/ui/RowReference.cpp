#include "RowReference.h"

#include "base/DateText.h"
#include "cameras/BestTime.h"
#include "capture/NewImageRule.h"

#include <algorithm>
#include <utility>

namespace velmora::test {
namespace {

constexpr int kMostCharacters = 255;
const QString kNoTime = QStringLiteral("00:00:00");

QString serverOf(const QString &url)
{
    return url.section(u'/', 0, 2);
}

} // namespace

bool StoredCamera::wasLoaded() const
{
    return row[QStringLiteral("TimeLoad")].toInt() != 0 ||
           !row[QStringLiteral("LocalTime")].isEmpty() ||
           !row[QStringLiteral("LastModified")].isEmpty();
}

void StoredCamera::forgetLogin()
{
    choices[QStringLiteral("User")].clear();
    choices[QStringLiteral("Password")].clear();
}

void StoredCamera::replaceUrl(const QString &now)
{
    if (url != now && now.isEmpty()) {
        choices.clear();
    } else if (!url.isEmpty() && serverOf(url) != serverOf(now)) {
        forgetLogin();
    }
    url = now;
}

void StoredCamera::add(const QString &now, const QString &name)
{
    if (wasLoaded()) {
        *this = {};
    }
    url = now;
    if (!name.isEmpty()) {
        choices[QStringLiteral("Name")] = name;
    }
}

// The shortest interval between two dates, below a hundred hours.
void StoredCamera::answer(const QString &date)
{
    const auto before = dateFromText(std::exchange(row[QStringLiteral("LastModified")], date));
    const auto seconds = (*dateFromText(date) - before.value_or(kZeroDate)).count();
    const bool isTime = seconds >= 0 && seconds < 100 * 3600;
    const QString candidate =
        isTime ? timeText(static_cast<int>(seconds / 3600), static_cast<int>(seconds / 60 % 60),
                          static_cast<int>(seconds % 60))
               : kNoTime;
    QString &best = row[QStringLiteral("BestTime")];
    if (best.isEmpty() || best == kNoTime || candidate < best) {
        best = candidate;
    }
    row[QStringLiteral("SB")] = QStringLiteral("65280");
}

void RowReference::load(int selected)
{
    group = selected;
    for (int row = 0; row < kRows; ++row) {
        StoredCamera &camera = inRow(row);
        if (camera.url.isEmpty()) {
            camera.row[QStringLiteral("SB")] = QStringLiteral("255");
            camera.row[QStringLiteral("BestTime")] = kNoTime;
            camera.row[QStringLiteral("lNew")] = QStringLiteral("0");
            camera.row[QStringLiteral("TimeLoad")] = QStringLiteral("0");
        }
        show(row);
        showUrl(row);
    }
    groupOn = active.at(static_cast<std::size_t>(group)) == u"1";
}

void RowReference::show(int row)
{
    const StoredCamera &camera = inRow(row);
    ShownRow &here = shown(row);
    const QString best = camera.row[QStringLiteral("BestTime")];
    here.known = camera.url;
    here.automatic = camera.isOn(QStringLiteral("AutoDelai"));
    here.deletes = camera.isOn(QStringLiteral("EffM"));
    here.bestTime = best.isEmpty() ? kNoTime : best;
    here.newImages = camera.row[QStringLiteral("lNew")].toInt();
    here.loadSeconds = camera.row[QStringLiteral("TimeLoad")].toInt();
    here.lamp = storedLamp(row);
}

int RowReference::storedLamp(int row)
{
    constexpr int kRed = 255;
    const StoredCamera &camera = inRow(row);
    return camera.url.isEmpty() ? kRed : camera.row[QStringLiteral("SB")].toInt();
}

// What is typed is the user's, and so is what was refused.
bool RowReference::keepsItsText(int row) const
{
    return (row == hand && isTyped_) || refused_.at(static_cast<std::size_t>(row));
}

void RowReference::showUrl(int row)
{
    const auto index = static_cast<std::size_t>(row);
    shown(row).box = inRow(row).url;
    refused_.at(index) = false;
    typedOver_.at(index).reset();
}

void RowReference::reread(int row)
{
    show(row);
    if (!keepsItsText(row)) {
        showUrl(row);
    }
}

void RowReference::reread()
{
    for (int row = 0; row < kRows; ++row) {
        reread(row);
    }
    groupOn = active.at(static_cast<std::size_t>(group)) == u"1";
}

void RowReference::enter(int row)
{
    leave();
    hand = row;
}

void RowReference::type(int row, const QString &text)
{
    if (hand != row) {
        enter(row);
    }
    isTyped_ = true;
    std::optional<QString> &before = typedOver_.at(static_cast<std::size_t>(row));
    if (!before && text != shown(row).known) {
        before = shown(row).known;
    }
    shown(row).box = text;
}

void RowReference::leave()
{
    const int row = std::exchange(hand, -1);
    isTyped_ = false;
    if (row < 0) {
        return;
    }
    const auto index = static_cast<std::size_t>(row);
    refused_.at(index) = shown(row).box.trimmed().size() > kMostCharacters;
    if (!refused_.at(index)) {
        storeTyped(row, typedOver_.at(index));
        showUrl(row);
    }
}

void RowReference::storeTyped(int row, const std::optional<QString> &before)
{
    StoredCamera &camera = inRow(row);
    const QString text = shown(row).box.trimmed();
    const bool wasOther = camera.url != shown(row).known;
    if (before && text != *before && text != camera.url) {
        if (camera.url != *before) {
            camera.choices.clear();
        }
        camera.replaceUrl(text);
        shown(row).known = text;
    }
    if (wasOther) {
        show(row);
    }
}

void RowReference::fill(CameraAddress camera, const QString &url)
{
    at(camera).replaceUrl(url);
    if (camera.group != group) {
        return;
    }
    if (hand == camera.row) {
        hand = -1;
        isTyped_ = false;
    }
    showUrl(camera.row);
    shown(camera.row).known = url;
}

bool RowReference::actsFor(CameraAddress camera, const QString &known)
{
    if (camera.group != group) {
        return false;
    }
    const bool isThere = at(camera).url == known;
    if (shown(camera.row).known != at(camera).url) {
        reread(camera.row);
    }
    return isThere;
}

void RowReference::choose(int row, const QString &word, bool on)
{
    inRow(row).row[word] = on ? QStringLiteral("1") : QStringLiteral("0");
    (word == u"EffM" ? shown(row).deletes : shown(row).automatic) = on;
}

void RowReference::resetBestTime(int row)
{
    inRow(row).row[QStringLiteral("BestTime")] = kNoTime;
    shown(row).bestTime = kNoTime;
}

void RowReference::resetNewImages()
{
    for (int row = 0; row < kRows; ++row) {
        inRow(row).row[QStringLiteral("lNew")] = QStringLiteral("0");
        shown(row).newImages = 0;
    }
}

void RowReference::answer(CameraAddress camera, const QString &date)
{
    at(camera).answer(date);
    if (camera.group == group) {
        shown(camera.row).lamp = storedLamp(camera.row);
        shown(camera.row).bestTime = at(camera).row[QStringLiteral("BestTime")];
    }
}

void RowReference::fail(CameraAddress camera)
{
    at(camera).row[QStringLiteral("SB")] = QStringLiteral("255");
    if (camera.group == group) {
        shown(camera.row).lamp = storedLamp(camera.row);
    }
}

void RowReference::countImage(CameraAddress camera)
{
    QString &count = at(camera).row[QStringLiteral("lNew")];
    count = QString::number(count.toInt() + 1);
    if (camera.group == group) {
        shown(camera.row).newImages = count.toInt();
    }
}

void RowReference::showLoadSeconds(CameraAddress camera, int seconds)
{
    if (camera.group == group) {
        shown(camera.row).loadSeconds = seconds;
    }
}

QMap<QString, QString> RowReference::file()
{
    QMap<QString, QString> values{{QStringLiteral("Control Selecteur"), QString::number(group)}};
    for (int g = 0; g < kGroups; ++g) {
        values.insert(QStringLiteral("Liste%1 LstAct").arg(g),
                      active.at(static_cast<std::size_t>(g)));
    }
    for (const CameraAddress place : kAllCameras) {
        const StoredCamera &camera = at(place);
        values.insert(QStringLiteral("Liste%1 lst%2").arg(place.group).arg(place.row), camera.url);
        for (const auto &[word, value] : camera.row.asKeyValueRange()) {
            values.insert(QStringLiteral("Groupe%1 %2%3").arg(place.group).arg(word).arg(place.row),
                          value);
        }
        for (const auto &[word, value] : camera.choices.asKeyValueRange()) {
            values.insert(QStringLiteral("Camera%1%2 %3").arg(place.group).arg(place.row).arg(word),
                          value);
        }
    }
    values.removeIf([](const auto &value) { return value->isEmpty(); });
    return values;
}

std::optional<CameraAddress> RowReference::placeFor(const QString &url)
{
    std::optional<CameraAddress> place;
    for (const CameraAddress camera : kAllCameras) {
        if (at(camera).url == url) {
            return std::nullopt;
        }
        if (!place && at(camera).url.isEmpty()) {
            place = camera;
        }
    }
    return place;
}

} // namespace velmora::test
