// The opener of links: hands them to the desktop, and shows a message box when that fails.
#include "ui/mOuvreLien.h"

#include "base/LinkTarget.h"
#include "ui/MessageBoxes.h"

#include <array>
#include <string_view>

namespace velmora {
namespace {

// Results of asking a desktop shell to open something; all above 32 mean success.
constexpr int kLastFailure = 32;
constexpr int kSuccess = 33;
constexpr int kUnknownError = 0;
constexpr int kFileMissing = 2;
constexpr int kFolderMissing = 3;
constexpr int kNoPermission = 5;
constexpr int kNoHandler = 31;

struct Failure
{
    int result;
    std::u16string_view text;
};

constexpr std::array kFailures = {
    Failure{kFileMissing, u"Fichier non trouvé"},
    Failure{kFolderMissing, u"Chemin non trouvé"},
    Failure{kNoPermission, u"Accès refusé"},
    Failure{8, u"Pas assez de mémoire"},
    Failure{11, u"Fichier EXE invalide"},
    Failure{26, u"Une violation de partage est apparue"},
    Failure{27, u"Association incomplète ou invalide"},
    Failure{28, u"DDE Délai dépassé"},
    Failure{29, u"DDE transaction abortée"},
    Failure{30, u"DDE occupé"},
    Failure{kNoHandler, u"Pas d'association enregistrée pour ce type de fichier"},
    Failure{32, u"DLL non trouvée"},
};

int resultOf(FollowOutcome outcome)
{
    switch (outcome) {
    case FollowOutcome::NotFound:
        return kFileMissing;
    case FollowOutcome::NoHandler:
        return kNoHandler;
    case FollowOutcome::Failed:
        return kUnknownError;
    case FollowOutcome::Opened:
    case FollowOutcome::Stopped:
        break;
    }
    return kSuccess;
}

} // namespace

mOuvreLien::mOuvreLien(DesktopOpener &opener, const NativePaths &paths, TaskScope &scope)
    : opener_(opener)
    , paths_(paths)
    , scope_(scope)
{
}

void mOuvreLien::OuvreLien(const QString &target)
{
    scope_.launch(run(target));
}

std::optional<QString> mOuvreLien::message(int result)
{
    if (result > kLastFailure) {
        return std::nullopt;
    }
    for (const Failure &failure : kFailures) {
        if (failure.result == result) {
            return QString::fromUtf16(failure.text.data(),
                                      static_cast<qsizetype>(failure.text.size()));
        }
    }
    return QStringLiteral("Erreur inconnue");
}

QCoro::Task<> mOuvreLien::run(QString target)
{
    const int outcome = co_await result(target);
    if (const std::optional<QString> text = message(outcome)) {
        show(*text);
    }
}

QCoro::Task<int> mOuvreLien::result(QString target)
{
    const LinkTarget link = linkTarget(target, paths_);
    switch (link.state) {
    case TargetState::FileMissing:
        co_return kFileMissing;
    case TargetState::FolderMissing:
        co_return kFolderMissing;
    case TargetState::NoPermission:
        co_return kNoPermission;
    case TargetState::Reachable:
        break;
    }
    const FollowOutcome outcome = co_await opener_.follow(link.target, scope_.stopToken());
    co_return resultOf(outcome);
}

void mOuvreLien::show(const QString &message)
{
    if (!isOpen(box_)) {
        box_ = newWarningBox(QStringLiteral("Erreur"));
    }
    box_->setText(message);
    box_->show();
}

} // namespace velmora
