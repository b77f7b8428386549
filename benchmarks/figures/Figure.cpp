#include "figures/Figure.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

/// The number with three digits that count, never in powers of ten.
std::string text(double number) {
    const double size = std::abs(number);
    const int decimals = size >= 100 || size == 0 ? 0 : size >= 10 ? 1 : size >= 1 ? 2 : size >= 0.1 ? 3 : 4;
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.*f", decimals, number);
    return buffer;
}

/// How many columns a text takes: the bytes that don't continue a character of UTF-8.
size_t columns(const std::string &text) {
    return static_cast<size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

std::string spaces(const std::string &text, size_t width) {
    return std::string(width - std::min(width, columns(text)), ' ');
}

/// The text and its space, and one more, so that no column ever runs into the next.
std::string padded(const std::string &text, size_t width) {
    return text + spaces(text, width) + " ";
}

std::string alignedRight(const std::string &text, size_t width) {
    return spaces(text, width) + text;
}

std::string budgetText(const Budget &budget, const std::string &unit) {
    std::string result;
    const auto add = [&](const std::string &part) { result += (result.empty() ? "" : ", ") + part; };
    if (budget.most)
        add("<= " + text(*budget.most) + " " + unit);
    if (budget.mostAbovePeer)
        add("<= peer + " + text(*budget.mostAbovePeer) + " " + unit);
    if (budget.mostRatio)
        add("<= " + text(*budget.mostRatio) + " x");
    if (budget.leastRatio)
        add(">= " + text(*budget.leastRatio) + " x");
    return result;
}

/// How much of the budget the figure takes: more than 1 if it is over.
double usedPart(const Figure &figure) {
    const Budget &budget = figure.budget;
    double part = 0;
    if (budget.most)
        part = std::max(part, figure.value / *budget.most);
    if (!figure.peer)
        return part;
    const double ratio = figure.value / *figure.peer;
    if (budget.mostAbovePeer)
        part = std::max(part, (figure.value - *figure.peer) / *budget.mostAbovePeer);
    if (budget.mostRatio)
        part = std::max(part, ratio / *budget.mostRatio);
    if (budget.leastRatio)
        part = std::max(part, *budget.leastRatio / ratio);
    return part;
}

std::string verdict(const Figure &figure) {
    const double part = usedPart(figure);
    return (part > 1 ? "over, " : "within, ") + text(part * 100) + " %";
}

} // namespace

void print(const Figure &figure) {
    const std::string peer = figure.peer ? text(*figure.peer) : "-";
    const std::string ratio = figure.peer ? text(figure.value / *figure.peer) + " x" : "-";
    const std::string budget = budgetText(figure.budget, figure.unit);
    const std::string line = padded(figure.name, 69) + alignedRight(text(figure.value), 8) + " " +
                             padded(figure.unit, 8) + "peer " + alignedRight(peer, 8) +
                             alignedRight(ratio, 10) + "   " + padded(budget.empty() ? "-" : budget, 22) +
                             (budget.empty() ? "" : verdict(figure));
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

bool isWanted(const std::string &name, const std::string &filter) {
    return name.find(filter) != std::string::npos;
}
