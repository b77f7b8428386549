#pragma once

#include <QString>

#include <functional>

/// What a screen reader says of a figure, such as "Bar chart: Rent 1200, Food 30". Of very many items only
/// the first ones are told, and how many there are beyond.
QString figureSentence(const QString &title, qsizetype count,
                       const std::function<QString(qsizetype)> &itemAt);
