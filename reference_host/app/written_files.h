// Which files an export wrote, seen from outside.
#ifndef REFERENCE_HOST_APP_WRITTEN_FILES_H
#define REFERENCE_HOST_APP_WRITTEN_FILES_H

#include <map>
#include <string>
#include <vector>

namespace reference_host
{

struct Written_file {
    std::string path;
    std::string content;
};

// Watches the files that an exporter may derive from a chosen name: those in its folder whose names
// begin like it, extensions and the suffixes of vertex and fragment files aside.
class Written_files
{
public:
    // Notes the present state.
    explicit Written_files(const std::string& chosen_name);

    // The files that are new or changed since then, ordered by name.
    std::vector<Written_file> changes() const;

private:
    struct State {
        long long size;
        long long seconds; // of the last change
        long long nanoseconds;
        bool operator==(const State& other) const;
    };

    std::map<std::string, State> look() const;

    std::string m_folder;
    std::string m_stem;
    std::map<std::string, State> m_before;
};

} // namespace reference_host

#endif
