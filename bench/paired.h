#pragma once
// Figures with their spread, and ratios of measurements that were taken in turn. A machine that does something else for
// a moment slows both of a pair, so the median of the pairs' ratios holds where the ratio of two medians does not.
#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

/// The value below which the given share of the values lies; the values are sorted by it.
inline double quantile(std::vector<double> values, double share) {
    std::ranges::sort(values);
    const auto last = static_cast<double>(values.size() - 1);
    return values[static_cast<std::size_t>(last * share + 0.5)];
}

inline double medianOf(const std::vector<double>& values) {
    return quantile(values, 0.5);
}

struct Figure {
    double median = 0;
    double spread = 0; ///< the middle half of the values, as a share of the median
    int decimals = 2;  ///< as it is shown

    /// Too far apart for a figure.
    [[nodiscard]] bool isNoisy() const { return spread > 0.15; }
    /// "1.03 (±2 %)", or that there is none to tell.
    [[nodiscard]] std::string text() const {
        char line[64];
        if (isNoisy()) {
            std::snprintf(line, sizeof line, "too noisy (±%.0f %%)", spread * 50);
        } else {
            std::snprintf(line, sizeof line, "%.*f (±%.0f %%)", decimals, median, spread * 50);
        }
        return line;
    }
};

inline Figure figureOf(const std::vector<double>& values, int decimals = 1) {
    const double median = medianOf(values);
    return {.median = median,
            .spread = median > 0 ? (quantile(values, 0.75) - quantile(values, 0.25)) / median : 0,
            .decimals = decimals};
}

/// `first` and `other` hold one value a round, in the same order.
inline Figure pairedRatio(const std::vector<double>& first, const std::vector<double>& other) {
    std::vector<double> ratios;
    for (std::size_t round = 0; round < std::min(first.size(), other.size()); ++round) {
        ratios.push_back(first[round] / other[round]);
    }
    return figureOf(ratios, 2);
}

/// Adds "NAME,median,spread" to the file that VELLMOOR_BENCH_FIGURES names, for bench/all.sh; "noisy" for a median that
/// is none.
inline void record(const std::string& name, const Figure& figure) {
    const char* path = std::getenv("VELLMOOR_BENCH_FIGURES");
    if (path == nullptr) {
        return;
    }
    if (std::FILE* file = std::fopen(path, "a"); file != nullptr) {
        if (figure.isNoisy()) {
            std::fprintf(file, "%s,noisy,%.3f\n", name.c_str(), figure.spread);
        } else {
            std::fprintf(file, "%s,%.3f,%.3f\n", name.c_str(), figure.median, figure.spread);
        }
        std::fclose(file);
    }
}
