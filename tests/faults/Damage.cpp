#include "faults/Damage.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

void write(const QString &path, const QByteArray &bytes) {
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(bytes);
}

QByteArray read(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray garbage(qsizetype size, Dice &dice) {
    QByteArray bytes(size, '\0');
    for (char &byte : bytes)
        byte = char(dice.upTo(255));
    return bytes;
}

QJsonValue otherValue(Dice &dice) {
    const QList<QJsonValue> values{QJsonValue::Null,         true, -1e300, u"oops"_s, QJsonArray{1, u"a"_s},
                                   QJsonObject{{u"id"_s, 5}}};
    return dice.pick(values);
}

/// The same with another value somewhere in it, which may be of another type.
QJsonValue withOneWrong(const QJsonValue &json, Dice &dice) {
    if (json.isObject() && !json.toObject().isEmpty() && !dice.oneIn(6)) {
        QJsonObject object = json.toObject();
        const QString key = dice.pick(object.keys());
        if (dice.oneIn(4))
            object.remove(key);
        else
            object.insert(key, withOneWrong(object.value(key), dice));
        return object;
    }
    if (json.isArray() && !json.toArray().isEmpty() && !dice.oneIn(6)) {
        QJsonArray array = json.toArray();
        const int place = dice.upTo(int(array.size()) - 1);
        array.replace(place, withOneWrong(array.at(place), dice));
        return array;
    }
    return otherValue(dice);
}

void makeWrong(const QString &path, Dice &dice) {
    const QJsonDocument document = QJsonDocument::fromJson(read(path));
    const QJsonValue whole = document.isArray() ? QJsonValue(document.array()) : document.object();
    // A document has no value but an object or a list, so that the value goes through a list of one.
    const QByteArray list = QJsonDocument(QJsonArray{withOneWrong(whole, dice)}).toJson();
    write(path, list.mid(list.indexOf('[') + 1, list.lastIndexOf(']') - list.indexOf('[') - 1));
}

/// The bytes of another file beside it.
void replaceByNeighbour(const QString &path, Dice &dice) {
    const QFileInfoList neighbours = QFileInfo(path).dir().entryInfoList(QDir::Files);
    if (!neighbours.isEmpty())
        write(path, read(dice.pick(neighbours).filePath()));
}

} // namespace

QString damage(const QString &path, Dice &dice) {
    const QByteArray bytes = read(path);
    switch (dice.upTo(9)) {
    case 0:
        write(path, {});
        return u"empty"_s;
    case 1:
        write(path, bytes.left(dice.upTo(int(bytes.size()))));
        return u"cut off"_s;
    case 2:
        write(path, garbage(bytes.size() + 1, dice));
        return u"garbage"_s;
    case 3:
        write(path, QByteArray(bytes.size(), '\0'));
        return u"zeros"_s;
    case 4:
        write(path, QByteArray(100'000, '['));
        return u"a hundred thousand brackets"_s;
    case 5:
        QFile::remove(path);
        return u"gone"_s;
    case 6:
        QFile::remove(path);
        QDir().mkdir(path);
        return u"a folder"_s;
    case 7:
        replaceByNeighbour(path, dice);
        return u"the content of another file"_s;
    default:
        makeWrong(path, dice);
        return u"one wrong value"_s;
    }
}
