// An empty window: the minimum for a program of this toolkit.
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
