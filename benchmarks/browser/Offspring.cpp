#include "browser/Offspring.h"

#include "figures/ProcessorTime.h"

#include <QDir>
#include <QFile>

#include <stdexcept>
#include <vector>

#include <sys/prctl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

QByteArray contents(pid_t process, const QString &name) {
    QFile file(u"/proc/%1/%2"_s.arg(process).arg(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The living processes of this machine, each with its parent.
std::map<pid_t, pid_t> parents() {
    std::map<pid_t, pid_t> result;
    for (const QString &name : QDir(u"/proc"_s).entryList(QDir::Dirs)) {
        const pid_t process = name.toInt();
        // proc(5): the name stands in brackets and may hold anything; then come the state and the parent.
        const QByteArray stat = process > 0 ? contents(process, u"stat"_s) : QByteArray();
        const QList<QByteArray> fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
        if (fields.size() > 1 && fields.first() != "Z")
            result[process] = fields.at(1).toInt();
    }
    return result;
}

std::vector<pid_t> offspring() {
    const std::map<pid_t, pid_t> all = parents();
    std::vector<pid_t> found{getpid()};
    for (size_t index = 0; index < found.size(); ++index) {
        for (const auto &[process, parent] : all) {
            if (parent == found.at(index))
                found.push_back(process);
        }
    }
    found.erase(found.begin());
    return found;
}

/// The bytes that a line of smaps_rollup (proc(5)) tells in kibibytes.
double bytesOf(const QByteArray &rollup, const QByteArray &name) {
    const qsizetype line = rollup.indexOf('\n' + name);
    return rollup.mid(line + 1 + name.size(), 24).trimmed().split(' ').first().toDouble() * 1024;
}

} // namespace

void adoptOrphans() {
    ::prctl(PR_SET_CHILD_SUBREAPER, 1);
}

int offspringCount() {
    return static_cast<int>(offspring().size());
}

std::map<pid_t, double> offspringProcessorSeconds() {
    std::map<pid_t, double> result;
    for (const pid_t process : offspring()) {
        try {
            result[process] = processorSecondsOf(process);
        } catch (const std::runtime_error &) {
            if (parents().contains(process))
                throw;
        }
    }
    return result;
}

OffspringMemory offspringMemory() {
    OffspringMemory sum;
    for (const pid_t process : offspring()) {
        const QByteArray rollup = contents(process, u"smaps_rollup"_s);
        if (rollup.isEmpty() && parents().contains(process))
            throw std::runtime_error("the memory of a process can't be read");
        sum.resident += bytesOf(rollup, "Rss:");
        sum.proportional += bytesOf(rollup, "Pss:");
    }
    return sum;
}
