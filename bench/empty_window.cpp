// A window with nothing in it: the least that a program of this toolkit can be.
#include <QApplication>
#include <QWidget>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QWidget window;
    window.resize(1280, 800);
    window.show();
    return QApplication::exec();
}
