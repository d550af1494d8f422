// The command line beside a program that runs: what is typed there, what comes of it, and the boxes
// of the main window that its commands change as well.
#pragma once

#include "CommandRules.h"
#include "admin/Administration.h"
#include "admin/ProgramDesk.h"
#include "start/CommandLine.h"
#include "ui/RowWorld.h"

#include <QDeadlineTimer>
#include <QFileInfo>

#include <functional>
#include <future>

namespace velmora::test {

inline constexpr qint64 kProcess = 4711;

/// A command line, and what the rules make of it. It is played on them when the command is given.
struct PlannedCommand
{
    QStringList arguments;
    std::function<CommandResult()> play; // changed: the program must have heard
    bool isExact = true;                 // the texts are compared, not just the status
    bool mayTellSecret = false;
};

/// A box of the program's own options, stored at every keystroke.
struct OptionBox
{
    QString name;
    QString key;
};

inline const QList<OptionBox> kOptionBoxes{{QStringLiteral("tempo"), QStringLiteral("Tempo")},
                                           {QStringLiteral("TIO"), QStringLiteral("TIO")}};

class CommandHands : public RowWorld
{
protected:
    CommandHands()
    {
        house_.tree.makeFolder(u"drives/c/in2");
        QObject::connect(&desk_, &ProgramDesk::settingsChanged, &house_.engine,
                         &CaptureEngine::adoptSettings);
        desk_.open();
    }

    static CommandResult done(const QString &out = {}, const QString &note = {})
    {
        return {kDone, out, note, true};
    }

    static CommandResult told(const QString &out) { return {kDone, out, {}, false}; }

    static CommandResult refused() { return CommandResult::refused({}); }

    static CommandResult malformed() { return CommandResult::malformed({}); }

    /// What the process prints, as main() does, on a thread of its own.
    std::future<CommandResult> begin(const QStringList &arguments)
    {
        const StartRequest request =
            parseCommandLine(QStringList{QStringLiteral("velmora")} + arguments);
        if (const auto *const wrong = std::get_if<UsageError>(&request)) {
            return std::async(std::launch::deferred,
                              [text = wrong->text] { return CommandResult::malformed(text); });
        }
        const AdminCommand command = std::get<AdminRequest>(request).command;
        return std::async(std::launch::async, [folder = house_.tree.path(), command] {
            return administer(folder, command,
                              [](const QString &) { return std::optional<qint64>(kProcess); });
        });
    }

    // While the program goes on.
    static CommandResult await(std::future<CommandResult> command)
    {
        const QDeadlineTimer deadline(20'000);
        while (command.wait_for(std::chrono::seconds{0}) == std::future_status::timeout &&
               !deadline.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        }
        return command.get();
    }

    void give(const PlannedCommand &planned)
    {
        given_.append(planned.arguments.join(u' ').left(200));
        SCOPED_TRACE(given_.last().toStdString());
        const CommandResult wanted = planned.play();
        const CommandResult result = await(begin(planned.arguments));
        compare(planned, result, wanted);
        if (wanted.changed) {
            hear();
        }
    }

    void compare(const PlannedCommand &planned, const CommandResult &result,
                 const CommandResult &wanted)
    {
        EXPECT_EQ(result.status, wanted.status) << result.error.toStdString();
        if (planned.isExact && wanted.status == kDone) {
            EXPECT_EQ(result.out.toStdString(), wanted.out.toStdString());
            EXPECT_TRUE(result.error.endsWith(wanted.error)) << result.error.toStdString();
        } else if (planned.isExact) {
            EXPECT_EQ(result.out, QString());
            EXPECT_FALSE(result.error.isEmpty());
        }
        EXPECT_FALSE(result.error.contains(kSecret)) << result.error.toStdString();
        EXPECT_TRUE(planned.mayTellSecret || !result.out.contains(kSecret))
            << result.out.toStdString();
    }

    void hear()
    {
        rules_.reread();
        for (const OptionBox &box : kOptionBoxes) {
            if (box.key == edited_) {
                optionElsewhere_ = stored_[box.key] != optionSeen_ ? std::optional(stored_[box.key])
                                                                   : optionElsewhere_;
                optionSeen_ = stored_[box.key];
            } else {
                shown_[box.key] = stored_[box.key];
            }
        }
        hearStorage();
    }

    void hearStorage()
    {
        const QString &now = stored_[QStringLiteral("StRep")];
        if (now == std::exchange(storageSeen_, now)) {
            return;
        }
        if (edited_ == u"StRep") {
            storageElsewhere_ = now;
        } else {
            shown_[QStringLiteral("StRep")] = now;
            storageInForce_ = now;
        }
    }

    QLineEdit &edit(const QString &name) { return rooms_.find<QLineEdit>(name); }

    void enter(const QString &name)
    {
        const int before = cursorRow();
        QTest::mouseClick(&edit(name), Qt::LeftButton);
        followFocus(before);
    }

    void leaveToTabs()
    {
        const int before = cursorRow();
        rooms_.find<QTabBar>(QStringLiteral("Selecteur")).setFocus(Qt::TabFocusReason);
        followFocus(before);
    }

    // What is typed counts for more than what a command names meanwhile.
    void editOption()
    {
        if (!mayUseMain()) {
            return;
        }
        const OptionBox &box = kOptionBoxes.at(below(2));
        QString &text = shown_[box.key];
        const QString before = text;
        enter(box.name);
        edited_ = box.key;
        optionSeen_ = stored_[box.key];
        behindEdit();
        if (oneIn(2)) {
            text = QString::number(30 + below(30));
            QGuiApplication::clipboard()->setText(text);
            QTest::keyClick(&edit(box.name), Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(&edit(box.name), Qt::Key_V, Qt::ControlModifier);
            stored_[box.key] = text;
            optionSeen_ = text;
            optionElsewhere_.reset();
        }
        behindEdit();
        leaveToTabs();
        edited_.clear();
        if (const auto named = std::exchange(optionElsewhere_, std::nullopt)) {
            text = text == before ? *named : text;
            stored_[box.key] = text;
        }
    }

    void editStorage()
    {
        if (!mayUseMain()) {
            return;
        }
        const QString key = QStringLiteral("StRep");
        enter(key);
        edited_ = key;
        behindEdit();
        if (!oneIn(3)) {
            QTest::keyClick(&edit(key), Qt::Key_End);
            typeStorage(Qt::Key_X, storageInForce_ + QStringLiteral("x\\"));
            behindEdit();
            if (oneIn(2)) {
                typeStorage(Qt::Key_Backspace, storageInForce_);
                behindEdit();
            }
        }
        leaveToTabs();
        edited_.clear();
        endStorage();
    }

    void typeStorage(Qt::Key key, const QString &text)
    {
        QTest::keyClick(&edit(QStringLiteral("StRep")), key);
        shown_[QStringLiteral("StRep")] = text;
        stored_[QStringLiteral("StRep")] = text;
        storageSeen_ = text;
    }

    void endStorage()
    {
        QString &text = shown_[QStringLiteral("StRep")];
        if (const auto named = std::exchange(storageElsewhere_, std::nullopt)) {
            text = text == storageInForce_ ? *named : text;
        }
        stored_[QStringLiteral("StRep")] = text;
        storageSeen_ = text;
        storageInForce_ = text;
    }

    [[nodiscard]] QString nativeFolder(const QString &text) const
    {
        const QString below = text.mid(3).chopped(1);
        return house_.tree.path(QStringLiteral("drives/c/") + QString(below).replace(u'\\', u'/'));
    }

    void behindEdit()
    {
        check();
        for (int events = below(3); events > 0; --events) {
            behind();
            check();
        }
    }

    bool isCompared(const QString &key) override
    {
        return RowWorld::isCompared(key) || stored_.contains(key);
    }

    QMap<QString, QString> wanted() override
    {
        QMap<QString, QString> values = rules_.file();
        for (const auto &[key, value] : stored_.asKeyValueRange()) {
            values.insert(QStringLiteral("Control ") + key, value);
        }
        values.insert(QStringLiteral("Other mine"), QStringLiteral("kept"));
        values.removeIf([](const auto &value) { return value->isEmpty(); });
        return values;
    }

    void checkOptions()
    {
        for (const OptionBox &box : kOptionBoxes) {
            EXPECT_EQ(edit(box.name).text().toStdString(), shown_[box.key].toStdString());
        }
        EXPECT_EQ(edit(QStringLiteral("StRep")).text().toStdString(),
                  shown_[QStringLiteral("StRep")].toStdString());
        const bool isDebug = stored_[QStringLiteral("Debug")] == u"1";
        EXPECT_EQ(rooms_.find<QCheckBox>(QStringLiteral("cDebug")).isChecked(), isDebug);
        if (edited_.isEmpty()) {
            EXPECT_EQ(house_.storage.isPresent(), QFileInfo(nativeFolder(storageInForce_)).isDir());
        }
    }

    ProgramDesk desk_{house_.tree.path(), house_.table, house_.store};
    QMap<QString, QString> stored_; // of the program itself, by key
    QMap<QString, QString> shown_;  // in its boxes
    QString edited_;                // the key of the box that has the cursor
    QString optionSeen_;
    std::optional<QString> optionElsewhere_;
    QString storageSeen_;
    QString storageInForce_;
    std::optional<QString> storageElsewhere_;
    QStringList given_;
};

} // namespace velmora::test
