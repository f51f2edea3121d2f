// Whether an export may replace files that exist.
#ifndef REFERENCE_HOST_APP_REPLACEMENT_H
#define REFERENCE_HOST_APP_REPLACEMENT_H

#include <string>
#include <vector>

namespace reference_host
{

enum class Overwrite {
    ask, // on the terminal; without one: no
    yes,
    no,    // the export fails
    skip,  // the export is left out, and that is not a failure
    backup // the old file is kept as NAME.~1~
};

struct Overwrite_policy {
    Overwrite overwrite = Overwrite::ask;
    bool edited = false; // also files that were edited since they were exported
};

struct Existing_file {
    std::string path;
    bool was_edited = false; // since it was exported
};

// Decides for one export after the other, and remembers "all", "skip all" and "quit".
class Replacement
{
public:
    enum class Decision { replace, back_up, refuse, skip };

    explicit Replacement(const Overwrite_policy& policy) : m_policy(policy) {}
    virtual ~Replacement() = default;
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    // One decision for all files of an export: they belong together. There is one at least.
    Decision decide(const std::vector<Existing_file>& files);

    // Whether the user wants no more exports at all.
    bool has_quit() const { return m_has_quit; }

private:
    // Asks the user: here on the terminal.
    virtual Decision ask(const std::vector<Existing_file>& files);

    Overwrite_policy m_policy;
    bool m_has_quit = false;
};

} // namespace reference_host

#endif
