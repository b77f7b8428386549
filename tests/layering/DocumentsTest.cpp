/// What the documents name exists, and each room says what it is for.

#include "layering/SourceTree.h"

#include <QDirIterator>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString projectFolder = QStringLiteral(PROJECT_FOLDER);
const QStringList sourceFolders{u"src"_s, u"tests"_s, u"benchmarks"_s, u"fuzz"_s};

/// Every folder that holds sources of its own, and those of the scripts and the resources.
QStringList foldersWithAReadme() {
    QStringList folders = sourceFolders + QStringList{u"scripts"_s, u"resources"_s};
    for (const QString &top : {u"src"_s, u"tests"_s}) {
        QDirIterator below(projectFolder + u'/' + top, QDir::Dirs | QDir::NoDotAndDotDot,
                           QDirIterator::Subdirectories);
        while (below.hasNext())
            folders.append(QDir(projectFolder).relativeFilePath(below.next()));
    }
    return folders;
}

/// The documents whose names are held against the source, as paths from the top of the project.
QStringList documents() {
    QStringList all{u"docs/architecture.md"_s, u"docs/road-of-a-message.md"_s};
    for (const QString &folder : foldersWithAReadme())
        all.append(folder + u"/README.md"_s);
    return all;
}

/// What stands between backticks in a text, but for its diagrams and examples.
QStringList namesIn(QString text) {
    static const QRegularExpression fenced(u"^ *```.*?^ *```"_s,
                                           QRegularExpression::MultilineOption |
                                               QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression quoted(u"`([^`\\n]+)`"_s);
    text.remove(fenced);
    QStringList names;
    for (auto matches = quoted.globalMatch(text); matches.hasNext();)
        names.append(matches.next().captured(1));
    return names;
}

/// The targets of a text's links within the project.
QStringList linksIn(const QString &text) {
    static const QRegularExpression link(u"\\]\\(([^)#:]+)\\)"_s);
    QStringList targets;
    for (auto matches = link.globalMatch(text); matches.hasNext();)
        targets.append(matches.next().captured(1));
    return targets;
}

bool isFileName(const QString &name) {
    static const QRegularExpression pattern(
        u"^(src|tests|benchmarks|fuzz|scripts|resources|docs)/[\\w./-]*$|^[\\w./-]+\\.(h|cpp|md)$"_s);
    return pattern.match(name).hasMatch();
}

/// The sources, each once, by their paths.
const QHash<QString, QString> &sources() {
    static const QHash<QString, QString> all = [] {
        QHash<QString, QString> texts;
        for (const QString &folder : sourceFolders) {
            for (const QString &path : filesBelow(folder, {u"*.h"_s, u"*.cpp"_s}))
                texts.insert(path, textOf(path));
        }
        return texts;
    }();
    return all;
}

/// A file may be named from the document's folder, from the top, from src/, or by its name alone.
bool isFile(const QString &name, const QString &document) {
    for (const QString &start : {QFileInfo(document).path() + u'/', QString(), u"src/"_s, u"tests/"_s}) {
        if (QFileInfo::exists(projectFolder + u'/' + start + name))
            return true;
    }
    return !name.contains(u'/') &&
           std::any_of(sources().keyBegin(), sources().keyEnd(),
                       [&](const QString &path) { return path.endsWith(u'/' + name); });
}

bool isWordOfASource(const QString &word) {
    static const QSet<QString> words = [] {
        static const QRegularExpression pattern(u"\\w+"_s);
        QSet<QString> all;
        for (const QString &text : sources()) {
            for (auto matches = pattern.globalMatch(text); matches.hasNext();)
                all.insert(matches.next().captured());
        }
        return all;
    }();
    return words.contains(word);
}

/// True if the header that declares `type` names `member` as well.
bool isMember(const QString &type, const QString &member) {
    const QRegularExpression declaration(u"\\b(class|struct|namespace|enum class) %1\\b[^;]*\\{"_s.arg(type));
    const QRegularExpression mention(u"\\b%1\\b"_s.arg(member));
    return std::any_of(sources().cbegin(), sources().cend(), [&](const QString &text) {
        return text.contains(declaration) && text.contains(mention);
    });
}

/// True for what exists, and for what is no name of this project's.
bool isTrue(const QString &name, const QString &document) {
    static const QRegularExpression member(u"^(\\w+)::(\\w+)(\\(\\))?$"_s);
    static const QRegularExpression word(u"^([A-Za-z]\\w*)(\\(\\))?$"_s);
    if (isFileName(name))
        return isFile(name, document);
    if (const auto match = member.match(name); match.hasMatch() && match.captured(1) != u"std")
        return isMember(match.captured(1), match.captured(2));
    if (const auto match = word.match(name); match.hasMatch() && name != name.toLower())
        return isWordOfASource(match.captured(1)) || isFile(name, document);
    return true;
}

} // namespace

TEST(Documents, whatTheyNameExists) {
    qsizetype names = 0;
    for (const QString &document : documents()) {
        for (const QString &name : namesIn(textOf(document))) {
            ++names;
            EXPECT_TRUE(isTrue(name, document)) << document.toStdString() << " names " << name.toStdString();
        }
    }
    EXPECT_GT(names, 200);
}

TEST(Documents, theirLinksLeadSomewhere) {
    QStringList all = documents() + filesBelow(u"docs"_s, {u"*.md"_s});
    for (const QString &name : {u"README"_s, u"CHANGELOG"_s, u"CONTRIBUTING"_s, u"NOTICE"_s, u"SECURITY"_s})
        all << name + u".md"_s;
    for (const QString &document : all) {
        for (const QString &target : linksIn(textOf(document)))
            EXPECT_TRUE(QFileInfo::exists(projectFolder + u'/' + QFileInfo(document).path() + u'/' + target))
                << document.toStdString() << " leads to " << target.toStdString();
    }
}

TEST(Documents, eachRoomSaysBrieflyWhatItIsFor) {
    for (const QString &folder : foldersWithAReadme())
        EXPECT_LE(textOf(folder + u"/README.md"_s).count(u'\n'), 25) << folder.toStdString();
}

TEST(Documents, theDoorOfEachRoomIsAHeaderOfIts) {
    static const QRegularExpression door(u"^Door: `([^`]+)`"_s, QRegularExpression::MultilineOption);
    for (const QString &room : rooms) {
        const QString name = door.match(textOf(u"src/%1/README.md"_s.arg(room))).captured(1);
        EXPECT_TRUE(QFileInfo(projectFolder + u"/src/"_s + room + u'/' + name).isFile())
            << room.toStdString() << " has no door";
    }
}
