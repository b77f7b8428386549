#include "screens/TypingMotion.h"

#include "screens/Style.h"

#include <QEasingCurve>

#include <algorithm>

namespace {

double eased(double progress) {
    static const QEasingCurve curve(QEasingCurve::InOutSine);
    return curve.valueForProgress(progress);
}

} // namespace

double typing::scaleAt(std::chrono::milliseconds time, int dot) {
    const auto since = std::max(time - dot * style::typingDelay, std::chrono::milliseconds(0));
    const double swells = double(since.count()) / double(style::typingSwell.count());
    const double inPair = swells - 2 * int(swells / 2);
    const double progress = inPair <= 1 ? inPair : 2 - inPair;
    return style::typingSmallest + (1 - style::typingSmallest) * eased(progress);
}

double typing::accentShareAt(std::chrono::milliseconds time, int dot) {
    const auto moves = time / style::typingAccentStay;
    const auto sinceMove = time % style::typingAccentStay;
    const int now = int(moves % style::typingDots);
    const int before = int((moves + style::typingDots - 1) % style::typingDots);
    const double arrived =
        moves == 0
            ? 1
            : eased(std::min(1.0, double(sinceMove.count()) / double(style::typingAccentFade.count())));
    if (dot == now)
        return arrived;
    return dot == before ? 1 - arrived : 0;
}
