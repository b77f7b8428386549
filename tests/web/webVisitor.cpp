// Makes a small web of its own network, at addresses that are kept for documentation (RFC 5737), visits it
// as a model would, and prints what each visit gives.

#include "support/OwnNetwork.h"
#include "support/ScriptedEngine.h"
#include "web/PageFetch.h"
#include "web/WebSearch.h"
#include "web/WebURL.h"

#include <QCoreApplication>
#include <QTimer>

#include <cstdio>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr unsigned secondsToLive = 60;

const QList<QByteArray> addresses{"203.0.113.7", "198.51.100.9", "10.0.0.1"};
const QByteArray names = "127.0.0.1 localhost\n"
                         "203.0.113.7 site.example\n"
                         "203.0.113.7 mixed.example\n"
                         "10.0.0.1 mixed.example\n"
                         "10.0.0.1 inside.example\n";

void print(const QString &visit, const QString &result) {
    std::printf("%s: %s\n", qUtf8Printable(visit), qUtf8Printable(QString(result).replace(u'\n', u'|')));
    std::fflush(stdout);
}

Task<> visit(QString name, QUrl url) {
    const QString text = url.toString();
    const QSet<QString> allowed{normalizeFetchURL(text)};
    const QString page = co_await fetchPage(text, allowed, {});
    print(name, page);
}

QUrl at(const ScriptedEngine &server, const QString &host) {
    QUrl url = server.url();
    url.setHost(host);
    return url;
}

Task<> visitAll() {
    ScriptedEngine site(u"203.0.113.7"_s);
    ScriptedEngine other(u"198.51.100.9"_s);
    ScriptedEngine inside(u"10.0.0.1"_s);
    site.answer(Script(200).raw("<body>A page of the site</body>"));
    inside.answer(Script(200).raw("A page inside"));
    other.answer(Script(302).header("Location", inside.url().toEncoded()));
    co_await visit(u"an address"_s, site.url());
    co_await visit(u"a name"_s, at(site, u"site.example"_s));
    co_await visit(u"a name with an inner address, too"_s, at(site, u"mixed.example"_s));
    co_await visit(u"an inner address"_s, inside.url());
    co_await visit(u"a name of an inner address"_s, at(inside, u"inside.example"_s));
    co_await visit(u"a name that nobody has"_s, at(site, u"nobody.example"_s));
    co_await visit(u"nobody listens"_s, QUrl(u"http://203.0.113.7:9/"_s));
    co_await visit(u"a page that has moved inside"_s, other.url());
    site.answer(Script(200).raw("<a class='result__a' href='//other.example/'>Other</a>"));
    const SearchOutcome outcome = co_await webSearch(u"other"_s, at(site, u"site.example"_s), {});
    print(u"a search"_s, outcome.text);
    print(u"requests inside"_s, QString::number(inside.requests().size()));
    QTimer::singleShot(0, QCoreApplication::instance(), &QCoreApplication::quit);
}

} // namespace

int main(int argc, char **argv) {
    if (!enterOwnNetwork(addresses, names))
        return 1;
    QCoreApplication application(argc, argv);
    std::puts("a network of its own");
    ::alarm(secondsToLive);
    const Task<> task = visitAll();
    return QCoreApplication::exec();
}
