#pragma once
// Ratios of measurements that were taken in turn. A machine that does something else for a moment slows both of a
// pair, so the median of the pairs' ratios holds where the ratio of two medians does not.
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

struct PairedRatio {
    double median = 0;
    double spread = 0; ///< the middle half of the ratios, as a share of the median

    /// Too far apart for a figure.
    [[nodiscard]] bool isNoisy() const { return spread > 0.15; }
    /// "1.03 (±2 %)", or that there is none to tell.
    [[nodiscard]] std::string text() const {
        char line[64];
        if (isNoisy()) {
            std::snprintf(line, sizeof line, "too noisy (±%.0f %%)", spread * 50);
        } else {
            std::snprintf(line, sizeof line, "%.2f (±%.0f %%)", median, spread * 50);
        }
        return line;
    }
};

/// `first` and `other` hold one value a round, in the same order.
inline PairedRatio pairedRatio(const std::vector<double>& first, const std::vector<double>& other) {
    std::vector<double> ratios;
    for (std::size_t round = 0; round < std::min(first.size(), other.size()); ++round) {
        ratios.push_back(first[round] / other[round]);
    }
    const double median = medianOf(ratios);
    return {.median = median, .spread = (quantile(ratios, 0.75) - quantile(ratios, 0.25)) / median};
}

/// Adds "NAME,median,spread" to the file that VELLMOOR_BENCH_RATIOS names, for bench/all.sh. Noisy ones are left out.
inline void record(const std::string& name, const PairedRatio& ratio) {
    const char* path = std::getenv("VELLMOOR_BENCH_RATIOS");
    if (path == nullptr || ratio.isNoisy()) {
        return;
    }
    if (std::FILE* file = std::fopen(path, "a"); file != nullptr) {
        std::fprintf(file, "%s,%.3f,%.3f\n", name.c_str(), ratio.median, ratio.spread);
        std::fclose(file);
    }
}
