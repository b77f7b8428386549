#include "client/TextRepair.h"
#include "client/WrittenToolCalls.h"
#include "conversation/DisplayText.h"
#include "figures/Measure.h"
#include "pages/MarkdownParser.h"

#include <benchmark/benchmark.h>
#include <md4c.h>

using namespace Qt::StringLiterals;

// A long page: how long its blocks take, before md4c with callbacks that do nothing on the same text;
// and what a streaming reply of that length costs at each update before it is drawn.

namespace {

constexpr qsizetype length = 100'000;

/// A section with the blocks that pages have, and about as many words between them.
const QString section = uR"(# Quarterly report

```subtitle
What changed since spring, and what it means for the naïve reader
```

The **garden** was quiet, and a [song bird](https://example.org/bird) kept singing to its *neighbours* – as if nothing had happened. It `seemed` so. Nobody knew why, and those who had an idea kept it to themselves until the figures came in: visits are up, costs are down, and the fence at the far end is finally mended.

```metric:green
Visitors: 1,200
Growth: 12.5%
Opening time: 10:30
```

## Where the money went

Most of it went where it always goes. **Rent** is the largest item by far, as it has been for years; food follows, although _mostly_ bread. The rest is small enough to fit into one line of a table, and it shrinks.

- **Rent** and everything that comes with it: heating, water, the caretaker's bicycle
- **Food**, mostly bread, which has become a little more expensive than it was in spring
- **Books**, bought second-hand wherever that was possible at all

1. First, look at the table below and find the largest number in it
2. Then ask whether it has to be that large, and what would happen if it weren't
3. At last, write down what you found, with the date and your name

| Item | Cost | Share of the whole |
|---|:-:|--:|
| Rent and heating | $1,200 | 60% |
| Food | $600 | 30% |
| Miscellaneous | $200 | 10% |

```chart
Rent: $1,200
Food: 30%
Misc: 7.25
```

> Whoever reads this far has understood that numbers alone don't tell a story,
> and that somebody has to tell it.

```flow:blue
Ask the question -> Look at the numbers -> Think about them -> Answer
```

```compare
The fast way || The slow way
Cheap, but needs care || Dear, and needs none
```

```python
def share(item, total):
    """How much of the whole an item is, in percent."""
    if total <= 0:
        return 0
    return round(100 * item / total)
```

---

A last paragraph closes the section. It is longer than the others, since that is what last paragraphs are; it runs on for a while, says little that hasn't been said before, and ends when everybody has stopped listening. Even then it adds a sentence, in case somebody has come back.

)"_s;

QString page() {
    return section.repeated(length / section.size() + 1);
}

/// A reply that thinks, calls a tool, and then says something long.
QString reply() {
    return u"<think>"_s + page().first(length / 4) +
           u"</think><tool_call>{\"name\":\"web_search\",\"arguments\":{\"query\":\"a < b\"}}</tool_call>"_s +
           page().first(length / 2) + u"\n```page\n"_s + page().first(length / 4);
}

void blocksOfAPage(benchmark::State &state) {
    const QString text = page();
    for (auto round : state)
        benchmark::DoNotOptimize(parseMarkdownBlocks(text));
}
BENCHMARK(blocksOfAPage)->Unit(benchmark::kMicrosecond);

void blocksOfAPageByMd4c(benchmark::State &state) {
    const QByteArray text = page().toUtf8();
    MD_PARSER parser{};
    parser.flags = MD_FLAG_TABLES;
    parser.enter_block = [](MD_BLOCKTYPE, void *, void *) { return 0; };
    parser.leave_block = [](MD_BLOCKTYPE, void *, void *) { return 0; };
    parser.enter_span = [](MD_SPANTYPE, void *, void *) { return 0; };
    parser.leave_span = [](MD_SPANTYPE, void *, void *) { return 0; };
    parser.text = [](MD_TEXTTYPE, const MD_CHAR *, MD_SIZE, void *) { return 0; };
    for (auto round : state) {
        if (md_parse(text.constData(), static_cast<MD_SIZE>(text.size()), &parser, nullptr) != 0)
            state.SkipWithError("md4c has failed");
    }
}
BENCHMARK(blocksOfAPageByMd4c)->Unit(benchmark::kMicrosecond);

void shownText(benchmark::State &state) {
    const QString text = reply();
    for (auto round : state)
        benchmark::DoNotOptimize(displayText(text));
}
BENCHMARK(shownText)->Unit(benchmark::kMicrosecond);

void recoveredText(benchmark::State &state) {
    const QString text = reply();
    for (auto round : state)
        benchmark::DoNotOptimize(extractToolCalls(extractThinking(text).text));
}
BENCHMARK(recoveredText)->Unit(benchmark::kMicrosecond);

const Declared blocks{{.name = "blocks of a page of 100 KB (peer: md4c)",
                       .function = "blocksOfAPage",
                       .peer = "blocksOfAPageByMd4c",
                       .budget = {.mostRatio = 1.0}}};
const Declared shown{{.name = "a reply of 100 KB as it is shown", .function = "shownText"}};
const Declared recovered{{.name = "thinking and calls of that reply recovered", .function = "recoveredText"}};

} // namespace
