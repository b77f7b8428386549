#pragma once

#include <algorithm>
#include <vector>

/// The median of one value or more; of an even number, the upper of the two in the middle.
inline double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<long>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}
