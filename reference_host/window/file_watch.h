// Notices when files change on the disk, however they are replaced.
#ifndef REFERENCE_HOST_WINDOW_FILE_WATCH_H
#define REFERENCE_HOST_WINDOW_FILE_WATCH_H

#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace reference_host
{

class File_watch
{
public:
    // Whether the file has changed, appeared or gone since it was asked about before; the first
    // time it has not.
    bool has_changed(const std::string& file);

private:
    struct State {
        std::filesystem::file_time_type time;
        std::uintmax_t size;
        bool operator==(const State& other) const
        {
            return time == other.time && size == other.size;
        }
    };

    std::map<std::string, std::optional<State>> m_states; // nothing: no such file
};

} // namespace reference_host

#endif
