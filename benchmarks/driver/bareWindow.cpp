#include <QApplication>
#include <QLabel>
#include <QMainWindow>

// The least that a program with a window needs.

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    QMainWindow window;
    window.setCentralWidget(new QLabel(QStringLiteral("A window.")));
    window.resize(1100, 760);
    window.show();
    return QApplication::exec();
}
