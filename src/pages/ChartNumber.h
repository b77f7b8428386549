#pragma once

#include <QString>
#include <QStringView>

/// The numbers of charts, as they are written and as they are shown. Any thread.

/// The number that a value says: percent signs, dollar signs and commas are left out, and the rest must
/// be a number as C's strtod reads one in the C locale ("1e3", ".5", "-inf" and "0x10" are). What is
/// none, an empty text included, is 1.0: a bad number is a small bar rather than a lost row.
double parseChartNumber(QStringView value);

/// A number as a figure shows it: one decimal, or none if it is whole. A whole one beyond 64 bits is
/// shown in powers of ten, and an infinite one by its sign.
QString formatChartValue(double value);
