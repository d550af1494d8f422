#include "admin/ListEdit.h"

#include "admin/ListText.h"
#include "admin/Refusals.h"
#include "base/FileReader.h"

#include <QCoreApplication>

#include <algorithm>

namespace velmora {
namespace {

QString readingFault(std::error_code error)
{
    return error == std::errc::file_too_large
               ? QCoreApplication::translate("ListEdit",
                                             "it is far longer than a hundred cameras can be")
               : QString::fromStdString(error.message());
}

} // namespace

ListEdit::ListEdit(const SettingsFile &settings)
    : settings_(settings)
{
}

void ListEdit::read(const QByteArray &bytes)
{
    list_ = bytes;
    planAgain();
}

bool ListEdit::planAgain()
{
    ListPlan plan = planList(readCameraList(list_), settings_.snapshot());
    const bool isChanged = plan != plan_;
    plan_ = std::move(plan);
    return isChanged;
}

qsizetype ListEdit::count(Fate fate) const
{
    return std::ranges::count_if(
        plan_.cameras, [fate](const PlannedCamera &planned) { return planned.fate == fate; });
}

QString ListEdit::summary() const
{
    if (!plan_.fault.isEmpty()) {
        return plan_.fault;
    }
    const qsizetype wrong = count(Fate::Wrong);
    const QString counts = QCoreApplication::translate("ListEdit", "%1 new, %2 double, %3 wrong")
                               .arg(count(Fate::Added))
                               .arg(count(Fate::Double))
                               .arg(wrong);
    return wrong > 0 ? counts + QCoreApplication::translate(
                                    "ListEdit", ". Nothing is stored while a line is wrong.")
                     : counts;
}

bool ListEdit::mayStore() const
{
    return plan_.isSound() && count(Fate::Added) > 0;
}

ListStoring ListEdit::store()
{
    bool isAsShown = false;
    const SettingsChange change = settings_.change([&](SettingsDraft &draft) {
        isAsShown = planList(readCameraList(list_), draft.snapshot()) == plan_;
        if (isAsShown) {
            applyPlan(plan_, draft);
        }
    });
    if (change == SettingsChange::Failed) {
        return ListStoring::Failed;
    }
    planAgain();
    return isAsShown ? ListStoring::Stored : ListStoring::Overtaken;
}

ListFile readListFile(const QString &path)
{
    const WholeFile file = readWholeFile(path, kMostListFileBytes);
    if (!file.bytes) {
        return {{}, {}, unreadListText(path, readingFault(file.error))};
    }
    const bool isList = readCameraList(*file.bytes).fault.isEmpty();
    return {*file.bytes, isList ? listText(*file.bytes).value_or(QString()) : QString(), {}};
}

} // namespace velmora
