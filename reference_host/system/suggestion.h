// "Did you mean": the known word that comes nearest to one that is not known.
#ifndef REFERENCE_HOST_SYSTEM_SUGGESTION_H
#define REFERENCE_HOST_SYSTEM_SUGGESTION_H

#include <string>
#include <vector>

namespace reference_host
{

// The candidate that differs least, upper and lower case aside; empty when none is near: more than
// a third of the word, or two letters where the word is short, would have to change.
std::string nearest(const std::string& word, const std::vector<std::string>& candidates);

// "; did you mean 'CANDIDATE'?", or empty when none is near.
std::string suggestion(const std::string& word, const std::vector<std::string>& candidates);

} // namespace reference_host

#endif
