// A main window over a capture whose cameras answer by chance, and the checks of the settings file
// and of the window's rows against what the rules make of all that happened.
#pragma once

#include "RowHands.h"
#include "base/AnsiText.h"

namespace velmora::test {

class RowWorld : public RowHands
{
protected:
    RowWorld() { connectCapture(); }

    // The dates of what is captured are the answers' own.
    void connectCapture()
    {
        ImageStore &store = house_.store;
        const auto seconds = [this](CameraAddress camera, int taken) {
            rules_.showLoadSeconds(camera, taken);
        };
        QObject::connect(&store, &ImageStore::downloaded, &another_, seconds);
        QObject::connect(&rooms_.live, &LiveView::downloaded, &another_, seconds);
        QObject::connect(&store, &ImageStore::cameraAnswered, &another_,
                         [this](CameraAddress camera) {
                             takeTimes(camera);
                             rules_.answer(camera, now(camera, u"LastModified"));
                         });
        QObject::connect(&store, &ImageStore::cameraFailed, &another_,
                         [this](CameraAddress camera) {
                             takeTimes(camera);
                             rules_.fail(camera);
                         });
        QObject::connect(&store, &ImageStore::imageStored, &another_,
                         [this](CameraAddress camera) { rules_.countImage(camera); });
    }

    void takeTimes(CameraAddress camera)
    {
        for (const QString &word : {QStringLiteral("TimeLoad"), QStringLiteral("LocalTime")}) {
            rules_.at(camera).row[word] = now(camera, word);
        }
    }

    QString now(CameraAddress camera, QStringView word) { return house_.value(word, camera); }

    void tick()
    {
        for (const QString &url : kUrls) {
            const QDateTime date = QDateTime({2006, 3, 7}, {0, 0}).addSecs(60 * ++answers_ / 3);
            rooms_.source.answer(
                url, {QByteArray(oneIn(5) ? 500 : 2000, 'x'),
                      QLocale::c().toString(date, QStringLiteral("ddd, dd MMM yyyy HH:mm:ss")) +
                          QStringLiteral(" GMT"),
                      {},
                      std::chrono::seconds{below(4)},
                      {}});
        }
        house_.scheduler.setTickCounter(59);
        house_.scope.launch(house_.scheduler.Timer_Timer());
    }

    void passTime() { rooms_.clock.advance(std::chrono::milliseconds{below(4) * 1000}); }

    // Which values of the program itself are compared, and what all of them should be.
    virtual bool isCompared(const QString &key) { return key == u"Selecteur"; }

    virtual QMap<QString, QString> wanted() { return rules_.file(); }

    static QString withoutQuotes(const QString &value)
    {
        const bool isQuoted = value.size() > 1 && value.front() == value.back() &&
                              (value.front() == u'"' || value.front() == u'\'');
        return isQuoted ? value.mid(1).chopped(1) : value;
    }

    // Everything about cameras and groups, as another program would read it.
    QMap<QString, QString> file()
    {
        QMap<QString, QString> values;
        QString section;
        for (const QByteArray &bytes : house_.tree.read(u"Velmora.ini").split('\n')) {
            const QString line = fromAnsi(bytes.trimmed());
            if (line.startsWith(u'[')) {
                section = line.mid(1).chopped(1);
            } else if (!line.startsWith(u';') &&
                       (section != u"Control" || isCompared(line.section(u'=', 0, 0)))) {
                values.insert(section + u' ' + line.section(u'=', 0, 0),
                              withoutQuotes(line.section(u'=', 1)));
            }
        }
        values.removeIf([](const auto &value) { return value->isEmpty(); });
        return values;
    }

    void checkFile()
    {
        const QMap<QString, QString> stored = file();
        const QMap<QString, QString> rules = wanted();
        if (stored == rules) {
            return;
        }
        for (const QString &key : (stored.keys() + rules.keys())) {
            EXPECT_EQ(stored[key].toStdString(), rules[key].toStdString()) << key.toStdString();
        }
    }

    void checkSwitch(const QString &name, bool on)
    {
        if (!isPressed(name)) {
            EXPECT_EQ(rooms_.find<QCheckBox>(name).isChecked(), on) << name.toStdString();
        }
    }

    void checkWindow()
    {
        checkSwitch(QStringLiteral("ActLst"), rules_.groupOn);
        for (int row = 0; row < kRows; ++row) {
            const ShownRow &rules = rules_.shown(row);
            EXPECT_EQ(box(row).text().toStdString(), rules.box.toStdString()) << row;
            checkSwitch(rowKey(u"AutoDelay", row), rules.automatic);
            checkSwitch(rowKey(u"EffM", row), rules.deletes);
            checkLabel(rowKey(u"BestTime", row), rules.bestTime);
            checkLabel(rowKey(u"lNew", row), QString::number(rules.newImages));
            checkLabel(rowKey(u"TimeLoad", row), QString::number(rules.loadSeconds));
        }
    }

    void checkLabel(const QString &name, const QString &text)
    {
        EXPECT_EQ(rooms_.find<QLabel>(name).text(), text) << name.toStdString();
    }

    // No camera is being fetched. The end of a fetch for an address that the row has no more shows
    // what is stored for the one that it has.
    void checkLamps()
    {
        for (int row = 0; row < kRows; ++row) {
            const int lamp = rooms_.find<Lamp>(rowKey(u"SB", row)).property("FillColor").toInt();
            EXPECT_TRUE(lamp == rules_.shown(row).lamp || lamp == rules_.storedLamp(row))
                << row << ": " << lamp << " for " << rules_.shown(row).lamp;
        }
    }

    [[nodiscard]] qsizetype stored() const { return house_.stored().size(); }

private:
    int answers_ = 0;
};

} // namespace velmora::test
