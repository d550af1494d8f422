// Copies a range of a camera's images to a folder.
#pragma once

#include "base/FileCopy.h"
#include "base/WorkSlice.h"
#include "tools/FilmRange.h"

#include <QCoro/QCoroTask>
#include <QObject>

#include <memory>
#include <stop_token>

namespace velmora {

struct CopyOrder
{
    QString folder; // native path of the images
    std::shared_ptr<const ImageNames> names;
    FilmPicks picks;
    QString target; // native path of an existing folder
};

struct CopyTally
{
    qint64 all = 0;
    qint64 done = 0; // looked at
    qint64 copied = 0;
    qint64 there = 0;          // a file of that name existed and is left alone
    qint64 gone = 0;           // deleted meanwhile
    bool isRenaming = false;   // another program gives the images other names
    std::error_code error;     // of the target
    std::error_code readError; // why images of the range may be missing from the list
};

/// One range at a time. An incomplete copy has no name.
class RangeCopy : public QObject
{
    Q_OBJECT

public:
    /// The clock outlives the object.
    explicit RangeCopy(Clock &clock);

    [[nodiscard]] const CopyTally &tally() const { return tally_; }

    /// Copies until all is done, the target fails, an image has got another name or a stop is
    /// requested.
    QCoro::Task<> run(CopyOrder order, std::stop_token stop);

Q_SIGNALS:
    void advanced();

private:
    [[nodiscard]] bool copySome(const CopyOrder &order);
    void begin(const CopyOrder &order, const QByteArray &name);
    void finish(const CopyOrder &order);

    Clock &clock_;
    WorkSlice slice_;
    CopyMeans means_;
    std::unique_ptr<FileCopy> copy_;
    QByteArray name_;
    CopyTally tally_;
};

} // namespace velmora
