// A toolkit program with an empty window, to which the start of the real one is compared. With the
// argument "menu" the window has a menu bar, as text takes the toolkit its time to find its fonts.
#include "bench/first_paint.h"

#include <QMenuBar>

#include <cstring>

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    pelmora_bench::EndAtFirstPaint end;
    application.installEventFilter(&end);
    QWidget window;
    window.setWindowTitle("Empty");
    window.setGeometry(10, 10, 480, 75);
    if (argc > 1 && std::strcmp(argv[1], "menu") == 0) {
        auto* menus = new QMenuBar(&window);
        menus->addMenu("&File")->addAction("E&xit");
        menus->addMenu("&Help")->addAction("&About");
    }
    window.show();
    return QApplication::exec();
}
