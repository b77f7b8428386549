#include "figures/Measure.h"
#include "web/PageFetch.h"
#include "web/PlainMarkup.h"
#include "web/SearchResults.h"

#include <QElapsedTimer>
#include <QRegularExpression>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

// Pages that strangers wrote, as many bytes as are read at most: an ordinary one, and those that were made to
// take long, from their bytes to what the model gets. And a search page.

namespace {

constexpr qsizetype length = 2'000'000;

QByteArray filled(const QString &unit) {
    const QByteArray bytes = unit.toUtf8();
    return bytes.repeated(length / bytes.size());
}

QByteArray ordinaryPage() {
    return "<html><head><title>Birds</title><style>p { margin: 0 }</style></head><body>" +
           filled(uR"(<nav><a href="/">Home</a></nav>
<script>if (a < b && c > d) track("page");</script>
<div class="text"><h2 id="nests">Where they nest &amp; why</h2>
<p>A <a href="https://example.org/wren" title="Wren">wren</a> builds several nests, of which the hen chooses
one; the others stay empty, though <em>never&nbsp;quite</em> unused &lt;as we know&gt;.</p></div>
<footer>Printed on recycled electrons.</footer>)"_s) +
           "</body></html>";
}

void readableText(benchmark::State &state) {
    const QByteArray page = ordinaryPage();
    for (auto round : state)
        benchmark::DoNotOptimize(textOfPage(page));
}
BENCHMARK(readableText)->Unit(benchmark::kMillisecond);

void tagsAlone(benchmark::State &state) {
    const QString page = QString::fromUtf8(ordinaryPage());
    const QRegularExpression tag(u"<[^>]+>"_s);
    for (auto round : state)
        benchmark::DoNotOptimize(QString(page).replace(tag, u" "_s));
}
BENCHMARK(tagsAlone)->Unit(benchmark::kMillisecond);

/// The page that takes longest of those that take long, or would if they were read another way.
QByteArray worstPage() {
    QByteArray worst;
    qint64 longest = -1;
    for (const QString &unit :
         {u"<"_s, u"<>"_s, u"</"_s, u"&"_s, u"&amp;"_s, u"&lt;"_s, u"&amp"_s, u" "_s, u"a "_s, u"a\u0301"_s,
          u"<script>"_s, u"</script>"_s, u"<script></script"_s, u"<script></script>"_s, u"<scripts>"_s,
          u"<noscript><footer><nav><style><script>"_s, u"<body>"_s, u"<body></body>"_s, u"<bodyx></bod"_s}) {
        for (const QByteArray &page : {filled(unit), "<body>" + filled(unit) + "</body>"}) {
            QElapsedTimer timer;
            timer.start();
            textOfPage(page);
            if (timer.nsecsElapsed() > longest) {
                longest = timer.nsecsElapsed();
                worst = page;
            }
        }
    }
    return worst;
}

void readableTextOfTheWorst(benchmark::State &state) {
    static const QByteArray page = worstPage();
    for (auto round : state)
        benchmark::DoNotOptimize(textOfPage(page));
}
BENCHMARK(readableTextOfTheWorst)->Unit(benchmark::kMillisecond);

/// As many results as make 200 KB of a page, with what stands around them.
QString searchPage() {
    const QString result =
        uR"(<div class="result results_links web-result"><div class="links_main result__body"><h2 class="result__title">
<a rel="nofollow" class="result__a" href="//duckduckgo.com/l/?uddg=https%3A%2F%2Fexample.org%2Fwren%3Fa%3D1&amp;rut=0f3a">The <b>wren</b> &amp; its nests</a></h2>
<div class="result__extras"><span class="result__icon"><img width="16" src="//external.test/wren.ico" /></span></div>
<a class="result__snippet" href="//duckduckgo.com/l/?uddg=https%3A%2F%2Fexample.org%2Fwren">A <b>wren</b> builds several nests, of which the hen chooses one.</a></div></div>
)"_s;
    return u"<!DOCTYPE html><html><body>"_s + result.repeated(200'000 / result.size()) + u"</body></html>"_s;
}

void results(benchmark::State &state) {
    const QString page = searchPage();
    for (auto round : state)
        benchmark::DoNotOptimize(parseSearchResults(page));
}
BENCHMARK(results)->Unit(benchmark::kMillisecond);

void resultsByExpressions(benchmark::State &state) {
    const QString page = searchPage();
    for (auto round : state)
        benchmark::DoNotOptimize(plainlyReadResults(page));
}
BENCHMARK(resultsByExpressions)->Unit(benchmark::kMillisecond);

const Declared ordinary{{.name = "readable text of a page of 2 MB (peer: expression for its tags)",
                         .function = "readableText",
                         .peer = "tagsAlone",
                         .budget = {.most = 500}}};
const Declared hostile{{.name = "readable text of the worst hostile page of 2 MB (peer: ordinary)",
                        .function = "readableTextOfTheWorst",
                        .peer = "readableText",
                        .budget = {.most = 500}}};
const Declared search{{.name = "results of a search page of 200 KB (peer: regular expressions)",
                       .function = "results",
                       .peer = "resultsByExpressions"}};

} // namespace
