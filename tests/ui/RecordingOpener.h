// A desktop that opens nothing.
#pragma once

#include "base/DesktopOpener.h"

#include <QStringList>

namespace velmora::test {

/// Remembers what it was asked to open.
class RecordingOpener final : public DesktopOpener
{
public:
    OpenOutcome open(const QString &target) override
    {
        opened.append(target);
        return outcome;
    }

    QCoro::Task<FollowOutcome> follow(QString target, std::stop_token) override
    {
        opened.append(target);
        co_return followed;
    }

    QStringList opened;
    FollowOutcome followed = FollowOutcome::Opened;
    OpenOutcome outcome = OpenOutcome::Started;
};

} // namespace velmora::test
