#include "CaptureRules.h"

#include "cameras/Credentials.h"

#include <QRegularExpression>

#include <algorithm>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr int kOrange = 33023;
constexpr int kGreen = 65280;
constexpr int kRed = 255;
constexpr int kRound = 60;
constexpr qsizetype kShortest = 1000;
constexpr qsizetype kLong = qsizetype{256} * 1024;

const WallTime kNoDate =
    std::chrono::local_days{std::chrono::year{1899} / std::chrono::December / 30};

QString two(qint64 number)
{
    return QStringLiteral("%1").arg(number, 2, 10, QChar(u'0'));
}

// Hours, minutes and seconds of a best time; none if it is unknown.
std::optional<std::chrono::seconds> bestTime(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("^(\\d\\d):([0-5]\\d):([0-5]\\d)$"));
    const QRegularExpressionMatch match = form.match(text);
    const std::chrono::seconds time = std::chrono::hours{match.captured(1).toInt()} +
                                      std::chrono::minutes{match.captured(2).toInt()} +
                                      std::chrono::seconds{match.captured(3).toInt()};
    return match.hasMatch() && time > 0s ? std::optional(time) : std::nullopt;
}

QString lastAlternative(const QString &url)
{
    static const QRegularExpression list(QStringLiteral("<([^>]*:)?([^:>]*)>"));
    return QString(url).replace(list, QStringLiteral("\\2"));
}

QString extension(const QString &url, const QByteArray &body)
{
    static const QRegularExpression unfit(QStringLiteral("[/\\\\:*?<>|\"]"));
    const QString rest = url.mid(url.lastIndexOf(u'.'));
    if (!rest.contains(unfit)) {
        return rest;
    }
    return body.startsWith("\x89PNG") ? QStringLiteral(".png") : QStringLiteral(".jpg");
}

} // namespace

double ruleNumber(const QString &text)
{
    static const QRegularExpression number(QStringLiteral("^[-+]?\\d+(\\.\\d+)?"));
    return number.match(text).captured().toDouble();
}

QString rowName(CameraAddress camera)
{
    return QStringLiteral("%1:%2").arg(camera.group).arg(camera.row);
}

CaptureRules::CaptureRules(Server server, std::function<QString(int)> shown, WallTime start,
                           const QString &storage)
    : inForce(storage)
    , storedStorage(storage)
    , local(start)
    , server_(std::move(server))
    , shown_(std::move(shown))
    , typed_(storage)
    , seenStorage_(storage)
{
}

QString &CaptureRules::row(CameraAddress camera, const QString &word)
{
    return values[QStringLiteral("Groupe%1 %2%3").arg(camera.group).arg(word).arg(camera.row)];
}

QString CaptureRules::url(CameraAddress camera) const
{
    return values[QStringLiteral("Liste%1 lst%2").arg(camera.group).arg(camera.row)];
}

QString CaptureRules::choice(CameraAddress camera, const QString &key) const
{
    return values[QStringLiteral("Camera%1%2 %3").arg(camera.group).arg(camera.row).arg(key)];
}

void CaptureRules::write(const QString &line)
{
    log += isLogOn ? line + u'\n' : QString();
}

void CaptureRules::tick()
{
    if (isPassing || isSuspended) {
        return;
    }
    if (isCheckWanted_) {
        check();
    } else if (isEdited) {
        write(QStringLiteral("arret Timers"));
    } else if (isGreen) {
        counter = counter >= kRound ? 0 : counter + 1;
        isPassing = true;
        index_ = 0;
        if (readAhead()) {
            walk();
        } else {
            index_ = kCameras;
            endPass();
        }
        takeTurns();
    }
}

void CaptureRules::passSecond()
{
    now_ += 1s;
    local += 1s;
    for (auto &[camera, transfer] : transfers_) {
        answer(transfer);
    }
    walk();
    takeTurns();
}

void CaptureRules::passIdle(std::chrono::seconds time)
{
    now_ += time;
    local += time;
}

void CaptureRules::suspend()
{
    isSuspended = true;
}

void CaptureRules::resume()
{
    isSuspended = false;
    walk();
    takeTurns();
}

bool CaptureRules::isAutomatic(CameraAddress camera)
{
    return ruleNumber(row(camera, QStringLiteral("AutoDelai"))) != 0 &&
           bestTime(row(camera, QStringLiteral("BestTime"))) && automatic[camera] < 10 &&
           isFirstPassDone_;
}

// Whole days and time of day are compared each for itself.
bool CaptureRules::isAutomaticDue(CameraAddress camera)
{
    const auto known = ruleDate(row(camera, QStringLiteral("LocalTime")));
    const WallTime last = known && *known <= local ? *known : kNoDate;
    const auto elapsed = (local - last - std::chrono::seconds{automatic[camera]}).count();
    const auto best = bestTime(row(camera, QStringLiteral("BestTime"))).value_or(0s).count();
    constexpr auto kDay = 86400;
    return elapsed >= 0 && elapsed / kDay >= best / kDay && elapsed % kDay >= best % kDay;
}

bool CaptureRules::isDue(CameraAddress camera)
{
    if (isAutomatic(camera)) {
        return isAutomaticDue(camera);
    }
    return counter == kRound || (!isFirstPassDone_ && !reached_[camera]);
}

bool CaptureRules::mustLoad(CameraAddress camera)
{
    const QString on = values[QStringLiteral("Liste%1 LstAct").arg(camera.group)];
    return ruleNumber(on) == 1 && !url(camera).isEmpty() &&
           (isDue(camera) || !disk().mayHoldFile(ruleFolder(url(camera))));
}

CaptureRules::Request CaptureRules::request(CameraAddress camera) const
{
    const QString user = choice(camera, QStringLiteral("User"));
    return {lastAlternative(url(camera)), user,
            user.isEmpty() ? QString() : choice(camera, QStringLiteral("Password")),
            std::max(5, timeout),
            choice(camera, QStringLiteral("Keep")) == QStringLiteral("differing")};
}

bool CaptureRules::readAhead()
{
    mustReadAhead_ = false;
    bool any = false;
    for (int i = index_; i < kCameras; ++i) {
        if (mustLoad(cameraAt(i))) {
            begin(cameraAt(i));
            any = true;
        }
    }
    return any;
}

void CaptureRules::begin(CameraAddress camera)
{
    const Request wanted = request(camera);
    const int delay = server_(wanted.url).delay;
    Transfer transfer{wanted, now_, std::min(delay, wanted.limit), delay > wanted.limit, {}};
    answer(transfer);
    transfers_[camera] = transfer;
}

void CaptureRules::answer(Transfer &transfer)
{
    if (transfer.answer || now_ < transfer.began + std::chrono::seconds{transfer.seconds}) {
        return;
    }
    ServerAnswer given = server_(transfer.request.url);
    const bool isOpen = !given.isLocked || (transfer.request.user == QStringLiteral("user") &&
                                            transfer.request.password == QStringLiteral("secret"));
    given.isGood = given.isGood && isOpen && !transfer.isLate;
    given.delay = transfer.seconds;
    given.isLost = given.body.size() > kLong && (disk().isRefusing || !disk().isThere);
    transfer.answer = given;
}

void CaptureRules::walk()
{
    while (isPassing && index_ < kCameras) {
        if (loading_) {
            if (!transfers_[*loading_].answer) {
                return;
            }
            endLoad();
            continue;
        }
        if (isHeld()) {
            return;
        }
        if (mustReadAhead_ && mayStart()) {
            readAhead();
        }
        if (!mayStart()) {
            break;
        }
        if (mustLoad(cameraAt(index_))) {
            beginLoad(cameraAt(index_));
        } else {
            ++index_;
        }
    }
    if (isPassing) {
        endPass();
    }
}

void CaptureRules::endPass()
{
    transfers_.clear();
    isPassing = false;
    isFirstPassDone_ = isFirstPassDone_ || index_ == kCameras;
}

void CaptureRules::beginLoad(CameraAddress camera)
{
    const QString row = addressWithoutCredentials(shown_(camera.row)) + u' ' + rowName(camera);
    if (isAutomatic(camera) && isAutomaticDue(camera)) {
        write(QStringLiteral("\r\nTest true pour Auto ") + row);
    }
    lamps[camera] = kOrange;
    write(QStringLiteral("\r\nChargement de ") + row);
    write(QStringLiteral("<-Interface ChargeFile->"));
    loading_ = camera;
    loadingUrl_ = url(camera);
    loadingRequest_ = request(camera).url;
    disk().make(ruleFolder(loadingUrl_));
    write(QStringLiteral("Load ") + rowName(camera));
    timeout = std::max(5, timeout);
    write(QStringLiteral("Test ") + addressWithoutCredentials(loadingRequest_));
    const auto found = transfers_.find(camera);
    if (found == transfers_.end() || found->second.request != request(camera)) {
        begin(camera);
    }
}

void CaptureRules::giveUp()
{
    const CameraAddress camera = *loading_;
    loading_.reset();
    lamps[camera] = url(camera).isEmpty()
                        ? kRed
                        : static_cast<int>(ruleNumber(row(camera, QStringLiteral("SB"))));
}

void CaptureRules::endLoad()
{
    const CameraAddress camera = *loading_;
    const ServerAnswer given = *transfers_[camera].answer;
    transfers_.erase(camera);
    if (url(camera) != loadingUrl_) {
        giveUp();
    } else {
        loading_.reset();
        row(camera, QStringLiteral("TimeLoad")) = QString::number(given.delay);
        take(camera, given);
    }
    if (!isCheckWanted_) {
        reached_[camera] = true;
        ++index_;
    }
}

void CaptureRules::fail(CameraAddress camera)
{
    lamps[camera] = kRed;
    row(camera, QStringLiteral("SB")) = QString::number(kRed);
    failed.append(rowName(camera));
}

// A long one was written as it came.
bool CaptureRules::isRefused(const ServerAnswer &answer)
{
    return answer.body.size() > kLong ? answer.isLost : disk().isRefusing;
}

void CaptureRules::take(CameraAddress camera, const ServerAnswer &answer)
{
    if (!answer.isGood || answer.body.size() < kShortest) {
        fail(camera);
        return;
    }
    const Picture picture = judge(camera, answer);
    if (!picture.isNew) {
        learn(camera, picture);
    } else if (disk().open(ruleFolder(url(camera))) == nullptr || isRefused(answer)) {
        isCheckWanted_ = isCheckWanted_ || !disk().isThere;
        fail(camera);
    } else {
        keep(camera, picture);
    }
}

CaptureRules::Picture CaptureRules::judge(CameraAddress camera, const ServerAnswer &answer)
{
    const bool compares = choice(camera, QStringLiteral("Keep")) == QStringLiteral("differing");
    const bool isEmpty = !disk().mayHoldFile(ruleFolder(url(camera)));
    Picture picture{answer, compares && !answer.date, isEmpty, answer.date,
                    ruleDate(row(camera, QStringLiteral("LastModified")))};
    if (!picture.isCompared) {
        const bool hasHeader = !answer.header.trimmed().isEmpty();
        picture.isNew = isEmpty || (hasHeader && (!answer.date || answer.date != picture.before));
        return picture;
    }
    const auto last = kept_.find(camera);
    picture.isNew = isEmpty || last == kept_.end() || last->second != answer.body;
    const WallTime now = universal();
    const auto &before = picture.before;
    const bool isPlausible = answer.clock && *answer.clock >= now - 24h &&
                             *answer.clock <= now + 24h && (!before || *answer.clock > *before);
    const bool isTaken = before && *before >= now && *before < now + 1min;
    picture.date = !picture.isNew ? before
                   : isPlausible  ? answer.clock
                                  : std::optional(isTaken ? *before + 1s : now);
    return picture;
}

QString CaptureRules::fileName(const Picture &picture) const
{
    return (ruleText(picture.date.value_or(kNoDate), QStringLiteral("yyyyMMdd_HHmmss")) +
            ruleText(local, QStringLiteral("ddHH")) +
            extension(loadingRequest_, picture.answer.body))
        .left(23);
}

void CaptureRules::keep(CameraAddress camera, const Picture &picture)
{
    const QString file = fileName(picture);
    RuleFolder &folder = *disk().open(ruleFolder(url(camera)));
    const bool isTaken = folder.files.contains(file);
    QString &count = row(camera, QStringLiteral("lNew"));
    if (!isTaken) {
        folder.files[file] = picture.answer.body;
        ++cameNow_[&folder];
        count = QString::number(static_cast<int>(ruleNumber(count)) + 1);
    }
    row(camera, QStringLiteral("LastModified")) = ruleDate(picture.date.value_or(kNoDate));
    learn(camera, picture);
    if (isTaken) {
        return;
    }
    if (choice(camera, QStringLiteral("Keep")) == QStringLiteral("differing")) {
        kept_[camera] = picture.answer.body;
    }
    write(QStringLiteral(" Ecrit ") + file + u' ' + ruleDate(local) + QStringLiteral("\r\n"));
    write(QStringLiteral("Ajout de ") + file);
    automatic[camera] = ruleNumber(row(camera, QStringLiteral("AutoDelai"))) == 1 ? 1 : 0;
    stored.append(rowName(camera));
    wishTurn(camera);
}

void CaptureRules::learn(CameraAddress camera, const Picture &picture)
{
    lamps[camera] = kGreen;
    row(camera, QStringLiteral("SB")) = QString::number(kGreen);
    learnBestTime(camera, picture);
    row(camera, QStringLiteral("LocalTime")) = ruleDate(local);
}

void CaptureRules::learnBestTime(CameraAddress camera, const Picture &picture)
{
    if (!picture.date || *picture.date == kNoDate) {
        return;
    }
    const auto interval = (*picture.date - picture.before.value_or(kNoDate)).count();
    const bool isKnown = interval >= 0 && interval < qint64{100} * 3600;
    const QString found =
        isKnown ? two(interval / 3600) + u':' + two(interval / 60 % 60) + u':' + two(interval % 60)
                : QStringLiteral("00:00:00");
    QString &best = row(camera, QStringLiteral("BestTime"));
    static const QStringList unknown{{}, QStringLiteral("0"), QStringLiteral("00:00:00")};
    if (unknown.contains(best) || found < best) {
        write(QStringLiteral("Best times ") + found + QStringLiteral(" - ") + best);
        best = found;
    }
}

} // namespace velmora::test
