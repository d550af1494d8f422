// The window that makes a film file of a range of images, or copies them to a folder.
//
//   filmExport
//     filmPreview   filmFrom filmTo filmHoursFrom filmHoursTo
//                   filmThinning filmThinningNumber filmSize filmRate filmForm filmStamp
//     filmForecast
//     filmProgress  filmTimeLeft
//     filmMake filmCopy filmCancel filmOpen filmShowFolder
#pragma once

#include "browser/Calendar.h"
#include "tools/FilmMaker.h"

#include <QTimer>
#include <QWidget>

#include <memory>

class QFileDialog;

namespace Ui {
class FilmKeep;
}

namespace velmora {

class FilmKeep : public QWidget
{
    Q_OBJECT

public:
    /// Everything passed in outlives the window.
    FilmKeep(FilmMaker &maker, Slideshow &film);
    Q_DISABLE_COPY_MOVE(FilmKeep)
    ~FilmKeep() override;

    /// Shows the window in front, for the images that the browser lists now; days: the range to
    /// begin with instead of all of them. What was typed in an open window stays.
    void present(const std::optional<DayRange> &days);

    /// Days were chosen in the calendar: if the window is open, they become its range.
    void takeDays(const DayRange &days);

Q_SIGNALS:
    /// Native path of a film or a folder.
    void openWanted(const QString &path);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    /// Where the range in the boxes is from.
    enum class RangeOf {
        TheFilm,
        AllImages, // which may become more
        TheUser    // typed, or chosen in the calendar
    };

    void fillChoices();
    void bindRange();
    void bindFilm();
    void bindButtons();
    [[nodiscard]] FilmWish wish() const;
    void showRange(const FilmWish &wish, RangeOf whose);
    [[nodiscard]] bool isTyping() const;
    void takeTyped();
    void play(const FilmWish &wish);
    void keepRange();
    void takeFilmRange();
    void leaveFilm();
    void begin(const std::optional<DayRange> &days);
    void showDays(const DayRange &days);
    void showAll();
    void followImages();
    void catchUp();
    [[nodiscard]] bool isAsking() const;
    void showForecast();
    [[nodiscard]] QString forecastText(const FilmForecast &found) const;
    void showProgress();
    void showEnd(const QString &text);
    void showNextPicture();
    void restartPreview();
    void chooseTarget();
    void chooseFolder();
    void ask(QFileDialog &box) const;
    void setBusy(bool busy);

    FilmMaker &maker_;
    Slideshow &film_;
    std::unique_ptr<Ui::FilmKeep> ui_;
    QTimer previewTimer_;
    qsizetype previewAt_ = 0;
    PlayRange seenRange_;
    FilmWish settled_; // the range in the boxes, without what is being typed
    RangeOf rangeOf_ = RangeOf::TheFilm;
    bool isSettingFilm_ = false; // the film is being given that range
    bool isEndNews_ = false;     // what was made ended while the window was closed
};

} // namespace velmora
