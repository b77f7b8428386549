#include "screens/RowEstimate.h"

#include "screens/AttachmentChip.h"
#include "screens/Look.h"
#include "screens/MessageRowModel.h"
#include "screens/ReplyExtrasView.h"
#include "screens/Style.h"
#include "screens/ThinkingDisclosure.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace {

/// How many lines a text takes if as many characters go into one. Between the blocks of a reply is less room
/// than an empty line takes.
double guessedLines(const MessageRowModel &model, double charactersInLine) {
    const double emptyLine = model.kind == MessageRowModel::Kind::assistant ? 0.5 : 1;
    double lines = 0;
    for (const QStringView line : QStringView(model.text).tokenize(u'\n'))
        lines += line.isEmpty() ? emptyLine : std::ceil(double(line.size()) / charactersInLine);
    return lines;
}

} // namespace

int estimatedRowHeight(const Look &look, const MessageRowModel &model, int width) {
    const QFontMetricsF metrics(look.font(TextStyle::body));
    const bool isUser = model.kind == MessageRowModel::Kind::user;
    const int inner = width - 2 * style::rowOutset;
    const int textWidth =
        isUser ? std::min(style::bubbleMaximumWidth, inner) - 2 * style::bubblePaddingX : inner;
    const double lines = guessedLines(model, std::max(textWidth, 1) / metrics.averageCharWidth());
    const int spacing = lineSpacing(look.text().size);
    const double text = lines * (metrics.height() + spacing) - spacing;
    const int foot = model.hasFoot() ? style::footGap + style::footHeight : 0;
    const int thinking =
        model.reasoning.isEmpty() ? 0 : ThinkingDisclosure::initialHeight(look) + style::partGap;
    const int chips =
        int(model.attachments.size()) * (AttachmentChip::lineHeight(look) + style::attachmentGap);
    const int bubble = isUser ? 2 * style::bubblePaddingY : 0;
    return 2 * style::rowOutset + chips + thinking + (model.text.isEmpty() ? 0 : int(text) + bubble) + foot +
           ReplyExtrasView::estimatedHeight(look, model.extras);
}
