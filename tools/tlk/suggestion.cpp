// SPDX-License-Identifier: MIT
#include "suggestion.h"

#include <algorithm>
#include <cctype>
#include <vector>

namespace tlk {
namespace {

constexpr std::size_t kShortestPart = 4;

std::string ToLower(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(),
                           [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return lower;
}

// Counts letters that are missing, added, wrong, or swapped.
std::size_t CountSlips(std::string_view a, std::string_view b) {
    std::vector<std::vector<std::size_t>> slips(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i)
        for (std::size_t j = 0; j <= b.size(); ++j) {
            std::size_t& least = slips[i][j];
            least = i == 0 ? j : slips[i - 1][j] + 1;
            if (j > 0) least = std::min(least, slips[i][j - 1] + 1);
            if (i > 0 && j > 0) least = std::min(least, slips[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1));
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                least = std::min(least, slips[i - 2][j - 2] + 1);
        }
    return slips[a.size()][b.size()];
}

// The beginning of a name is similar, too.
std::size_t Distance(const std::string& name, const std::string& known) {
    const bool isPart = name.size() >= kShortestPart && known.starts_with(name);
    return isPart ? 1 : CountSlips(name, known);
}

}  // namespace

std::optional<std::string> FindNearest(std::string_view name, std::string_view known) {
    constexpr std::size_t kLongestName = 64;
    constexpr std::size_t kLettersForASlip = 3;
    constexpr std::string_view kComma = ", ";
    if (name.size() > kLongestName) return std::nullopt;
    std::optional<std::string> nearest;
    std::size_t least = name.size() / kLettersForASlip + 1;
    for (std::size_t start = 0; start < known.size();) {
        const std::size_t end = std::min(known.find(kComma, start), known.size());
        const std::string_view candidate = known.substr(start, end - start);
        start = end + kComma.size();
        const std::size_t distance = Distance(ToLower(name), ToLower(candidate));
        if (distance >= least) continue;
        least = distance;
        nearest = std::string(candidate);
    }
    return nearest;
}

std::string Advise(std::string_view name, std::string_view known) {
    if (const auto nearest = FindNearest(name, known)) return "did you mean '" + *nearest + "'?";
    return "use " + std::string(known);
}

}  // namespace tlk
