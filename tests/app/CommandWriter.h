// Someone who gives commands by chance, right and wrong, and what the rules make of each.
#pragma once

#include "CommandHands.h"
#include "ListPaper.h"

#include <array>

namespace velmora::test {

class CommandWriter : public CommandHands
{
protected:
    const Word &any(const QList<Word> &words)
    {
        return words.at(below(static_cast<int>(words.size())));
    }

    CameraAddress anyPlace()
    {
        return oneIn(6) ? CameraAddress{below(kGroups), below(kRows)} : anyCamera();
    }

    static CommandResult failed(Verdict verdict)
    {
        return verdict == Verdict::Refused ? refused() : malformed();
    }

    // Commands.
    PlannedCommand add()
    {
        const Word url = any(kAddressWords);
        const Word name = oneIn(2) ? any(kNameWords) : Word{QString()};
        Word keep = oneIn(3) ? any(kKeepWords) : Word{QString()};
        keep = keep.typed.isEmpty() ? Word{QString()} : keep;
        const bool isPlaced = !oneIn(3);
        const CameraAddress place = anyPlace();
        PlannedCommand planned{{QStringLiteral("--add"), url.typed}, {}, true, false};
        if (isPlaced) {
            planned.arguments += {QStringLiteral("--camera"), placeText(place)};
        }
        if (!name.typed.isEmpty()) {
            planned.arguments += {QStringLiteral("--name"), name.typed};
        }
        if (!keep.typed.isEmpty()) {
            planned.arguments += {QStringLiteral("--keep"), keep.typed};
        }
        planned.play = [this, url, name, keep,
                        where = isPlaced ? std::optional(place) : std::nullopt] {
            return addCamera(url, name, keep, where);
        };
        return planned;
    }

    CommandResult addCamera(const Word &url, const Word &name, const Word &keep,
                            std::optional<CameraAddress> where)
    {
        if (url.verdict == Verdict::Malformed || keep.verdict == Verdict::Malformed) {
            return malformed();
        }
        where = where ? where : freeRow(rules_);
        const bool isRefused = url.verdict == Verdict::Refused ||
                               name.verdict == Verdict::Refused || keep.verdict == Verdict::Refused;
        if (isRefused || !where || !rules_.at(*where).url.isEmpty()) {
            return refused();
        }
        rules_.at(*where).add(url.stored, name.stored);
        if (!keep.typed.isEmpty()) {
            rules_.at(*where).choices[QStringLiteral("Keep")] = keep.stored;
        }
        return done(placeText(*where) + u'\n', offNote(rules_, {where->group}));
    }

    PlannedCommand remove()
    {
        const CameraAddress place = anyPlace();
        return {{QStringLiteral("--remove"), placeText(place)}, [this, place] {
                    if (rules_.at(place).url.isEmpty()) {
                        return refused();
                    }
                    rules_.at(place) = {};
                    return done();
                }};
    }

    PlannedCommand nonsense()
    {
        static const QList<QStringList> lines{
            {QStringLiteral("--remove"), QStringLiteral("0:10")},
            {QStringLiteral("--remove"), QStringLiteral("0:0\n")},
            {QStringLiteral("--remove"), QStringLiteral("http://me:geheim7@a/")},
            {QStringLiteral("--remove"), QString()},
            {QStringLiteral("--add"), QStringLiteral("http://a/"), QStringLiteral("--camera"),
             QStringLiteral("10:0")},
            {QStringLiteral("--set")},
            {QStringLiteral("--get"), QStringLiteral("Tick")},
            {QStringLiteral("--get"), QStringLiteral("tick\n")},
            {QStringLiteral("--get"), QStringLiteral("group.1\n")},
            {QStringLiteral("--get"), QStringLiteral("camera.0:0.name\n")},
            {QStringLiteral("--get"), QStringLiteral("camera.0:10.name")},
            {QStringLiteral("--get"), QStringLiteral("http://me:geheim7@a/")},
            {QStringLiteral("--set"), QStringLiteral("tick")},
            {QStringLiteral("--set"), QString()},
            {QStringLiteral("--set"), QStringLiteral("TICK=30")},
            {QStringLiteral("--set"), QStringLiteral("tick =30")},
            {QStringLiteral("--set"), QStringLiteral("tick\n=30")},
            {QStringLiteral("--set"), QStringLiteral("group.0\n=on")},
            {QStringLiteral("--set"), QStringLiteral("camera.0:0.name\n=x")},
            {QStringLiteral("--set"), QStringLiteral("group.10=on")},
            {QStringLiteral("--set"), QStringLiteral("camera.0:10.name=x")},
            {QStringLiteral("--set"), QStringLiteral("http://me:geheim7@a/=1")},
            {QStringLiteral("--list"), QStringLiteral("--status")},
            {QStringLiteral("--list"), QStringLiteral("--list")},
            {QStringLiteral("--list"), QStringLiteral("http://me:geheim7@a/")},
            {QStringLiteral("--export-list"), QString()},
            {QStringLiteral("--import-list"), QStringLiteral("--json")},
        };
        return {lines.at(below(static_cast<int>(lines.size()))), [] { return malformed(); }};
    }

    // A key, and where its value goes.
    struct Assignment
    {
        QString key;
        Word word;
        std::function<void(const QString &stored)> store;
    };

    Assignment ofProgram(const char *key, const char *stored, const QList<Word> &words)
    {
        return {QString::fromLatin1(key), any(words),
                [this, key = QString::fromLatin1(stored)](const QString &value) {
                    stored_[key] = value;
                }};
    }

    Assignment ofCamera(const char *word, const char *stored, const QList<Word> &words)
    {
        const CameraAddress place = anyPlace();
        const QString inFile = QString::fromLatin1(stored);
        return {QStringLiteral("camera.%1.%2").arg(placeText(place), QString::fromLatin1(word)),
                any(words), [this, place, inFile](const QString &value) {
                    StoredCamera &camera = rules_.at(place);
                    (kRowWords.contains(inFile) ? camera.row : camera.choices)[inFile] = value;
                }};
    }

    Assignment ofGroup()
    {
        const int group = oneIn(4) ? below(kGroups) : rules_.group;
        return {QStringLiteral("group.%1").arg(group), any(kSwitchWords),
                [this, group](const QString &value) {
                    rules_.active.at(static_cast<std::size_t>(group)) = value;
                }};
    }

    Assignment assignment()
    {
        switch (below(9)) {
        case 0:
            return ofProgram("tick", "Tempo", kTickWords);
        case 1:
            return ofProgram("timeout", "TIO", kTimeoutWords);
        case 2:
            return ofProgram("debug", "Debug", kSwitchWords);
        case 3:
            return ofProgram("storage", "StRep", kStorageWords);
        case 4:
            return ofCamera("keep", "Keep", kKeepWords);
        case 5:
            return ofCamera("name", "Name", kNameWords);
        case 6:
            return ofCamera("auto", "AutoDelai", kSwitchWords);
        case 7:
            return ofCamera("delete", "EffM", kSwitchWords);
        default:
            return ofGroup();
        }
    }

    // All or none; the first that is wrong says how.
    PlannedCommand set()
    {
        QList<Assignment> all;
        PlannedCommand planned;
        for (int left = oneIn(3) ? 1 + below(3) : 1; left > 0; --left) {
            all.append(assignment());
            planned.arguments +=
                {QStringLiteral("--set"), all.last().key + u'=' + all.last().word.typed};
        }
        planned.play = [all] {
            for (const Assignment &one : all) {
                if (one.word.verdict != Verdict::Taken) {
                    return failed(one.word.verdict);
                }
            }
            for (const Assignment &one : all) {
                one.store(one.word.stored);
            }
            return done();
        };
        return planned;
    }

    PlannedCommand get()
    {
        const CameraAddress place = anyPlace();
        const QString camera = QStringLiteral("camera.%1.").arg(placeText(place));
        const QString group = QStringLiteral("group.%1").arg(place.group);
        return {{QStringLiteral("--get"), QStringLiteral("tick"), QStringLiteral("--get"),
                 QStringLiteral("timeout"), QStringLiteral("--get"), QStringLiteral("debug"),
                 QStringLiteral("--get"), QStringLiteral("storage"), QStringLiteral("--get"), group,
                 QStringLiteral("--get"), camera + QStringLiteral("name"), QStringLiteral("--get"),
                 camera + QStringLiteral("keep"), QStringLiteral("--get"),
                 camera + QStringLiteral("auto"), QStringLiteral("--get"),
                 camera + QStringLiteral("delete")},
                [this, place] { return told(gotten(place)); }};
    }

    static QString onOff(const QString &stored)
    {
        return stored == u"1" ? QStringLiteral("on") : QStringLiteral("off");
    }

    QString gotten(CameraAddress place)
    {
        const StoredCamera &camera = rules_.at(place);
        const QString keep = camera.choices[QStringLiteral("Keep")];
        return QStringList{stored_[QStringLiteral("Tempo")],
                           stored_[QStringLiteral("TIO")],
                           onOff(stored_[QStringLiteral("Debug")]),
                           nativeFolder(stored_[QStringLiteral("StRep")]),
                           onOff(rules_.active.at(static_cast<std::size_t>(place.group))),
                           camera.choices[QStringLiteral("Name")],
                           keep.isEmpty() ? QStringLiteral("dated") : keep,
                           onOff(camera.row[QStringLiteral("AutoDelai")]),
                           onOff(camera.row[QStringLiteral("EffM")])}
                   .join(u'\n') +
               u'\n';
    }

    PlannedCommand list()
    {
        return {{QStringLiteral("--list")}, [this] { return told(listedText(rules_)); }};
    }

    PlannedCommand exportToOutput()
    {
        return {{QStringLiteral("--export-list"), QStringLiteral("-")},
                [this] { return told(exportedText(rules_)); },
                true,
                true};
    }

    PlannedCommand exportToFile()
    {
        return {{QStringLiteral("--export-list"), house_.tree.path(u"out.csv")}, [this] {
                    exported_ = linesOfTable(rules_);
                    return told({});
                }};
    }

    PlannedCommand importBack()
    {
        if (!exported_) {
            return exportToFile();
        }
        return {{QStringLiteral("--import-list"), house_.tree.path(u"out.csv")},
                [this] { return imported(*exported_); }};
    }

    CommandResult imported(const QList<ListLine> &lines)
    {
        const ListOutcome outcome = takeList(rules_, lines);
        if (!outcome.isStored) {
            return refused();
        }
        return done(outcome.out, offNote(rules_, outcome.groups));
    }

    PlannedCommand importNew()
    {
        ListPaper paper([this](int bound) { return below(bound); });
        const WrittenList list = paper.write();
        house_.tree.write(u"new.csv", list.bytes);
        given_.append(QString::fromUtf8(list.bytes.toPercentEncoding(" ,;:/\"#\t")));
        return {{QStringLiteral("--import-list"), house_.tree.path(u"new.csv")},
                [this, list] { return imported(list.lines); }};
    }

    PlannedCommand anyCommand()
    {
        static const std::array kinds{&CommandWriter::add,          &CommandWriter::add,
                                      &CommandWriter::remove,       &CommandWriter::nonsense,
                                      &CommandWriter::set,          &CommandWriter::set,
                                      &CommandWriter::set,          &CommandWriter::get,
                                      &CommandWriter::list,         &CommandWriter::exportToOutput,
                                      &CommandWriter::exportToFile, &CommandWriter::importBack,
                                      &CommandWriter::importNew,    &CommandWriter::importNew};
        return (this->*kinds.at(static_cast<std::size_t>(below(kinds.size()))))();
    }

    std::optional<QList<ListLine>> exported_; // in the file
};

} // namespace velmora::test
