#pragma once

#include <QString>

#include <random>

/// A text put together by chance from the pieces of the page dialect, whole ones and broken ones, so that
/// every rule meets every other.
QString dialectText(std::mt19937 &random);
