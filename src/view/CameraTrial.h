// Tries out one camera: what it answers, and what the program would do with it. Nothing is stored.
#pragma once

#include "base/Clock.h"
#include "base/TaskScope.h"
#include "cameras/CameraChoices.h"
#include "capture/AnswerWorth.h"
#include "capture/CameraRequests.h"
#include "capture/HttpClient.h"

#include <QObject>

#include <optional>
#include <stop_token>

namespace velmora {

/// What to try, as the fields have it; none of it need be stored.
struct TrialRequest
{
    CameraAddress camera;
    QString address;
    CameraLogin login;
    KeepChoice keep;
};

struct TrialResult
{
    QByteArray picture; // the answer's body; empty when none came
    QString contentType;
    QString lastModified;
    QString date;
    std::chrono::milliseconds duration{0};
    std::optional<double> differencePercent; // from the last picture kept, where both have a look
    QString verdict;                         // in words
};

class CameraTrial : public QObject
{
    Q_OBJECT

public:
    /// What a trial uses; all of it outlives this object, and the scope is joined before it is
    /// destroyed.
    struct Uses
    {
        const CameraTable &table;
        const StorageFolder &storage;
        const CameraRequests &requests;
        PictureSource &source;
        Clock &clock;
        TaskScope &scope;
    };

    explicit CameraTrial(const Uses &uses);

    /// Fetches once; gives up any trial under way.
    void begin(const TrialRequest &request);

    /// Ends a trial under way without a result.
    void giveUp();

Q_SIGNALS:
    void ended(const velmora::TrialResult &result);

private:
    QCoro::Task<> run(TrialRequest request, std::stop_source abandon);
    QCoro::Task<TrialResult> judged(TrialRequest request, HttpReply reply);
    [[nodiscard]] Answer answer(const TrialRequest &request, const HttpReply &reply,
                                const PictureMark &mark) const;

    Uses uses_;
    std::stop_source current_;
};

} // namespace velmora
