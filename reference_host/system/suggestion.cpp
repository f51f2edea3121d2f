#include "reference_host/system/suggestion.h"

#include <algorithm>
#include <cctype>
#include <numeric>

namespace reference_host
{
namespace
{

bool is_same_letter(char one, char other)
{
    return std::tolower(static_cast<unsigned char>(one)) ==
           std::tolower(static_cast<unsigned char>(other));
}

// How many letters must be added, removed or replaced to get from one word to the other.
size_t distance(const std::string& from, const std::string& to)
{
    std::vector<size_t> row(to.size() + 1); // of the table of all their beginnings
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 0; i < from.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i + 1;
        for (size_t j = 0; j < to.size(); ++j) {
            const size_t replaced = diagonal + (is_same_letter(from[i], to[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

} // namespace

std::string nearest(const std::string& word, const std::vector<std::string>& candidates)
{
    std::string best;
    size_t smallest = std::max<size_t>(word.size() / 3, 2) + 1;
    for (const std::string& candidate : candidates) {
        const size_t d = distance(word, candidate);
        if (d < smallest && d < candidate.size()) {
            smallest = d;
            best = candidate;
        }
    }
    return best;
}

std::string suggestion(const std::string& word, const std::vector<std::string>& candidates)
{
    const std::string best = nearest(word, candidates);
    return best.empty() ? "" : "; did you mean '" + best + "'?";
}

} // namespace reference_host
