#include "capture/AnswerWorth.h"

#include "base/DateText.h"
#include "base/Folders.h"
#include "capture/HttpDate.h"

namespace velmora {

bool isCompared(const Answer &answer)
{
    return answer.choice.keep != Keep::Dated && answer.dates.header.isEmpty();
}

Worth worthOf(const Answer &answer)
{
    const bool isNew =
        isCompared(answer)
            ? isNewUndated({answer.choice, answer.mark, answer.stored}, answer.folder)
            : isNewImage(answer.dates, answer.folder);
    if (isNew) {
        return Worth::New;
    }
    return isCompared(answer) || !answer.dates.header.isEmpty() ? Worth::Unchanged
                                                                : Worth::NotDated;
}

Worth worthIn(const QString &folder, Answer answer)
{
    answer.folder = FolderState::HoldsFiles; // in an empty one every picture is new
    if (worthOf(answer) != Worth::New) {
        answer.folder = folderState(folder);
    }
    return worthOf(answer);
}

ImageDates imageDates(const QString &header, const QString &stored, const KeepChoice &choice)
{
    const std::optional<WallTime> modified = CalculDate(header);
    const bool isNone = !modified && choice.keep != Keep::Dated;
    return {isNone ? QString() : header, modified, dateFromText(stored)};
}

FolderState folderState(const QString &folder)
{
    return folderMayHoldFile(folder) ? FolderState::HoldsFiles : FolderState::Empty;
}

} // namespace velmora
