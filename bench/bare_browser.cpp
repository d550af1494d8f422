// The peer of a start with a very full camera: a bare window that, once it is on the screen, lists
// the folder and decodes the ten newest pictures at the size of the sheet's cells.
//   bare_browser FOLDER
#include <QApplication>
#include <QFile>
#include <QImageReader>
#include <QLabel>
#include <QTimer>

#include <algorithm>
#include <array>
#include <dirent.h>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t kCells = 10;
constexpr int kColumns = 3;
constexpr QSize kCell(240, 180);

std::vector<std::string> newestNames(const QString &folder)
{
    const std::unique_ptr<DIR, int (*)(DIR *)> listing(
        ::opendir(QFile::encodeName(folder).constData()), ::closedir);
    std::vector<std::string> names;
    while (const dirent *const entry = listing ? ::readdir(listing.get()) : nullptr) {
        if (entry->d_name[0] != '.') {
            names.emplace_back(entry->d_name);
        }
    }
    const std::size_t count = std::min(kCells, names.size());
    std::ranges::partial_sort(names, names.begin() + static_cast<std::ptrdiff_t>(count),
                              std::greater<>());
    names.resize(count);
    return names;
}

QPixmap decoded(const QString &path)
{
    QImageReader reader(path);
    reader.setScaledSize(kCell);
    return QPixmap::fromImage(reader.read());
}

using Cells = std::array<QLabel *, kCells>;

Cells cellsIn(QWidget &window)
{
    Cells cells{};
    for (std::size_t i = 0; i < kCells; ++i) {
        const int place = static_cast<int>(i);
        cells.at(i) = new QLabel(&window);
        cells.at(i)->setObjectName(QStringLiteral("Vue%1").arg(place)); // as in the program
        cells.at(i)->setGeometry(place % kColumns * kCell.width(),
                                 place / kColumns * kCell.height(), kCell.width(), kCell.height());
    }
    return cells;
}

void fill(const Cells &cells, const QString &folder)
{
    std::size_t cell = 0;
    for (const std::string &name : newestNames(folder)) {
        cells.at(cell++)->setPixmap(decoded(folder + u'/' + QString::fromStdString(name)));
    }
}

/// A window that shows itself empty first, like the program.
class Window : public QWidget
{
public:
    explicit Window(const QString &folder)
        : folder_(folder)
        , cells_(cellsIn(*this))
    {
        resize(1280, 800);
    }

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QWidget::paintEvent(event);
        if (!std::exchange(isPainted_, true)) {
            QTimer::singleShot(0, this, [this] { fill(cells_, folder_); });
        }
    }

private:
    QString folder_;
    Cells cells_;
    bool isPainted_ = false;
};

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    Window window(QCoreApplication::arguments().value(1));
    window.show();
    return QApplication::exec();
}
