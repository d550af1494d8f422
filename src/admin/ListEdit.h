// A list of cameras being edited before it is stored.
#pragma once

#include "admin/ListPlan.h"

#include <QByteArray>

namespace velmora {

enum class ListStoring {
    Stored,
    Overtaken, // the cameras have changed since the plan was shown: nothing was stored
    Failed
};

/// The list, and where its cameras would go as the user was shown it.
class ListEdit
{
public:
    /// settings: outlives the object.
    explicit ListEdit(const SettingsFile &settings);

    /// Takes the bytes of another list.
    void read(const QByteArray &bytes);

    /// Plans again, since rows may have been taken meanwhile, in another window or by another
    /// program. True when that changed the plan.
    bool planAgain();

    [[nodiscard]] const ListPlan &plan() const { return plan_; }

    /// The counts, or what is wrong with the whole list.
    [[nodiscard]] QString summary() const;

    /// True when there is something to store and nothing is wrong.
    [[nodiscard]] bool mayStore() const;

    /// Cameras go where the plan has them, or nowhere. The plan is then made again.
    [[nodiscard]] ListStoring store();

private:
    [[nodiscard]] qsizetype count(Fate fate) const;

    const SettingsFile &settings_;
    QByteArray list_;
    ListPlan plan_;
};

/// A list in a file.
struct ListFile
{
    QByteArray bytes;
    QString text;  // to be corrected; empty if it cannot be read, or is far too long
    QString fault; // why the file could not be read, in words
};

/// Reads an ordinary file, whole or not at all. path: native.
[[nodiscard]] ListFile readListFile(const QString &path);

} // namespace velmora
