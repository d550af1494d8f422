// What commands should make of the settings, told apart from how the program does it: the values
// that a key takes, the rows that a list fills, and what a command then prints.
#pragma once

#include "ui/RowReference.h"

#include <QByteArray>
#include <QList>

namespace velmora::test {

inline const QString kSecret = QStringLiteral("geheim7");

/// What a text does as an argument.
enum class Verdict { Taken, Refused, Malformed };

/// A text for a command, what is stored for it, and what is shown of that.
struct Word
{
    QString typed;
    Verdict verdict = Verdict::Taken;
    QString stored = typed;
    QString shown = stored;
};

extern const QList<Word> kAddressWords;
extern const QList<Word> kNameWords;
extern const QList<Word> kKeepWords;
extern const QList<Word> kSwitchWords;
extern const QList<Word> kTickWords;
extern const QList<Word> kTimeoutWords;
extern const QList<Word> kStorageWords;

/// What is shown of a stored address.
[[nodiscard]] QString shownUrl(const QString &url);

/// A camera of a list, and whether it may be one.
struct ListLine
{
    QString name;
    QString address;
    QString group;
    QString row;
    bool isWrong = false;
};

/// Where a list puts its cameras.
struct ListOutcome
{
    bool isStored = false;
    QString out;
    QList<int> groups; // of the cameras added
};

/// Stores all of a list or nothing.
[[nodiscard]] ListOutcome takeList(RowReference &rules, const QList<ListLine> &list);

/// The cameras as an exported list.
[[nodiscard]] QList<ListLine> linesOfTable(RowReference &rules);
[[nodiscard]] QString exportedText(RowReference &rules);

/// As --list prints them.
[[nodiscard]] QString listedText(RowReference &rules);

/// The first free row.
[[nodiscard]] std::optional<CameraAddress> freeRow(RowReference &rules);

/// The note for groups that are switched off.
[[nodiscard]] QString offNote(const RowReference &rules, QList<int> groups);

/// "g:r".
[[nodiscard]] QString placeText(CameraAddress camera);

} // namespace velmora::test
