#include "platform/SingleInstance.h"

#include <QCoreApplication>

#include <cstdio>
#include <memory>

// A start of the program, as far as it finds out whether it is the only one. It prints "first" and stays,
// or prints "second" and ends; with each activation it prints "activated" and the token.
// With GIVE_UP_WHEN_ASKED it then gives up its place, prints "given up" and stays.

namespace {

void print(const QByteArray &line) {
    std::puts(line.constData());
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    auto instance = std::make_unique<SingleInstance>();
    QObject::connect(instance.get(), &SingleInstance::activationRequested, instance.get(),
                     [](const QString &token) { print("activated " + token.toUtf8()); });
    if (!instance->claim()) {
        print("second");
        return 0;
    }
    print("first");
    if (qEnvironmentVariableIsSet("GIVE_UP_WHEN_ASKED"))
        QObject::connect(
            instance.get(), &SingleInstance::activationRequested, &application,
            [&] {
                instance.reset();
                print("given up");
            },
            Qt::QueuedConnection);
    return QCoreApplication::exec();
}
