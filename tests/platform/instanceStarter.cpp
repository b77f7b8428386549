#include "platform/SingleInstance.h"

#include <QCoreApplication>

#include <cstdio>

// A start of the program, as far as it finds out whether it is the only one. It prints "first" and stays,
// or prints "second" and ends; with each activation it prints "activated" and the token.

namespace {

void print(const QByteArray &line) {
    std::puts(line.constData());
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    SingleInstance instance;
    QObject::connect(&instance, &SingleInstance::activationRequested, &instance,
                     [](const QString &token) { print("activated " + token.toUtf8()); });
    if (!instance.claim()) {
        print("second");
        return 0;
    }
    print("first");
    return QCoreApplication::exec();
}
