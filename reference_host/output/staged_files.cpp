#include "reference_host/output/staged_files.h"

#include "reference_host/output/content_hash.h"
#include "reference_host/output/write_failure.h"
#include "reference_host/system/file_access.h"

#include <algorithm>
#include <cerrno>
#include <fstream>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace reference_host
{
namespace
{

namespace fs = std::filesystem;

constexpr const char* stage_prefix = "stage-";
constexpr const char* ready_prefix = "ready-"; // as long as the other
constexpr const char* old_prefix = "old-";
constexpr int most_tries = 10;

// An exclusive hold on a folder, released at the end of its life or that of the process.
class Folder_lock
{
public:
    explicit Folder_lock(const fs::path& folder)
        : m_descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
        while (m_descriptor >= 0 && flock(m_descriptor, LOCK_EX) != 0 && errno == EINTR)
            continue;
    }
    ~Folder_lock()
    {
        if (m_descriptor >= 0)
            close(m_descriptor);
    }
    Folder_lock(const Folder_lock&) = delete;
    Folder_lock& operator=(const Folder_lock&) = delete;

private:
    int m_descriptor;
};

// A hold on the folder, or -1 when somebody else has it.
int try_lock(const fs::path& folder)
{
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0 && flock(descriptor, LOCK_EX | LOCK_NB) == 0)
        return descriptor;
    if (descriptor >= 0)
        close(descriptor);
    return -1;
}

// The names of the regular files in a folder, and of the links, where those count.
std::vector<std::string> files_in(const fs::path& folder, bool with_links)
{
    std::vector<std::string> names;
    std::error_code failure;
    for (fs::directory_iterator entry(folder, failure), end; !failure && entry != end;
         entry.increment(failure)) {
        std::error_code ignored;
        if (entry->is_regular_file(ignored) || (with_links && entry->is_symlink(ignored)))
            names.push_back(entry->path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::string> regular_files(const fs::path& folder)
{
    return files_in(folder, false);
}

// The file itself where the place is a link to one. A link that leads nowhere stands for itself:
// what it names may be anywhere.
fs::path behind_links(const fs::path& place)
{
    std::error_code failure;
    if (!fs::is_symlink(place, failure) || !fs::exists(place, failure))
        return place;
    const fs::path file = fs::canonical(place, failure);
    return failure ? place : file;
}

void set_times_and_mode(const fs::path& file, const struct stat& status)
{
    const timespec times[] = {status.st_atim, status.st_mtim};
    utimensat(AT_FDCWD, file.c_str(), times, 0);
    chmod(file.c_str(), status.st_mode & 07777u);
}

// The same file, or link that leads nowhere, under a second name, or, on a disk without hard links,
// a copy of it.
void keep(const fs::path& file, const fs::path& copy)
{
    if (link(file.c_str(), copy.c_str()) == 0)
        return;
    std::error_code no_link;
    fs::copy_symlink(file, copy, no_link);
    if (!no_link)
        return;
    struct stat status;
    std::error_code failure;
    if (stat(file.c_str(), &status) != 0 || !fs::copy_file(file, copy, failure))
        throw Write_failure(copy.string(), failure ? failure.value() : errno);
    set_times_and_mode(copy, status);
}

void check_place(const fs::path& place)
{
    struct stat status;
    if (stat(place.c_str(), &status) != 0)
        return;
    if (S_ISDIR(status.st_mode))
        throw Write_failure(place.string(), EISDIR);
    if (!S_ISREG(status.st_mode))
        throw Write_failure(place.string(), "not a regular file");
    if (access(place.c_str(), W_OK) != 0)
        throw Write_failure(place.string(), errno);
}

// What tells a stage from the others: the end of its name.
std::string mark_of(const fs::path& stage)
{
    return stage.filename().string().substr(std::string(stage_prefix).size());
}

fs::path old_folder(const fs::path& stage)
{
    return stage.parent_path() / (old_prefix + mark_of(stage));
}

fs::path hash_file(const fs::path& hidden, const std::string& name)
{
    return hidden / (name + ".hash");
}

// The fingerprint of a file that is not at its place yet.
fs::path coming_hash(const fs::path& stage, const std::string& name)
{
    return hash_file(stage.parent_path(), name).string() + "." + mark_of(stage);
}

void place_hashes(const fs::path& stage, const std::vector<std::string>& names)
{
    for (const std::string& name : names)
        rename(coming_hash(stage, name).c_str(), hash_file(stage.parent_path(), name).c_str());
}

void remove_hashes(const fs::path& stage, const std::vector<std::string>& names)
{
    for (const std::string& name : names)
        unlink(coming_hash(stage, name).c_str());
}

// Puts back what was replaced, and removes what replaced nothing.
void take_back(const fs::path& stage, const fs::path& folder, const std::vector<std::string>& moved)
{
    const std::vector<std::string> old = files_in(old_folder(stage), true);
    for (const std::string& name : old)
        rename((old_folder(stage) / name).c_str(), behind_links(folder / name).c_str());
    for (const std::string& name : moved) {
        if (!std::binary_search(old.begin(), old.end(), name))
            unlink((folder / name).c_str());
    }
}

// Moves what is left in the stage to the folder. When a file cannot be moved, the old ones return.
void move_all(const fs::path& stage, const fs::path& folder)
{
    std::vector<std::string> moved;
    for (const std::string& name : regular_files(stage)) {
        const fs::path place = behind_links(folder / name);
        if (rename((stage / name).c_str(), place.c_str()) != 0) {
            const int reason = errno;
            take_back(stage, folder, moved);
            throw Write_failure((folder / name).string(), reason);
        }
        moved.push_back(name);
    }
}

// Removes a stage, and first what goes with it: nothing of that outlives it.
void remove_stage(const fs::path& stage)
{
    std::error_code ignored;
    if (rmdir(old_folder(stage).c_str()) != 0 && errno != ENOENT)
        fs::remove_all(old_folder(stage), ignored);
    if (rmdir(stage.c_str()) != 0) // it is empty after a success
        fs::remove_all(stage, ignored);
}

bool starts_with(const std::string& text, const char* start)
{
    return text.rfind(start, 0) == 0;
}

// Most file systems count a folder's folders as links to it. Asking for their number is much
// quicker than reading the folder, which has a file or two for each export.
bool has_no_folders(const fs::path& folder)
{
    constexpr nlink_t own_links = 2;
    struct stat status;
    return stat(folder.c_str(), &status) == 0 && status.st_nlink == own_links;
}

// The names of the files whose fingerprints a stage has.
std::vector<std::string> hashes_of(const fs::path& stage)
{
    const std::string end = coming_hash(stage, "").filename().string();
    std::vector<std::string> names;
    for (const std::string& file : regular_files(stage.parent_path())) {
        if (file.size() > end.size() &&
            file.compare(file.size() - end.size(), end.size(), end) == 0)
            names.push_back(file.substr(0, file.size() - end.size()));
    }
    return names;
}

// Completes the placing that a killed process began, and removes the stages of others.
void clean_up_after_killed_runs(const fs::path& hidden, const fs::path& folder)
{
    if (has_no_folders(hidden))
        return;
    std::error_code failure;
    std::vector<fs::path> stages;
    for (fs::directory_iterator entry(hidden, failure), end; !failure && entry != end;
         entry.increment(failure)) {
        const std::string name = entry->path().filename().string();
        if (starts_with(name, stage_prefix) || starts_with(name, ready_prefix))
            stages.push_back(entry->path());
    }
    for (const fs::path& stage : stages) {
        const int lock = try_lock(stage);
        if (lock < 0)
            continue;
        const std::vector<std::string> names = hashes_of(stage);
        if (starts_with(stage.filename().string(), ready_prefix)) {
            try {
                move_all(stage, folder);
                place_hashes(stage, names);
            } catch (const Write_failure&) {
                // The old files are back; the export that is about to start tells why.
            }
        }
        remove_hashes(stage, names);
        remove_stage(stage);
        close(lock);
    }
}

// Who may write into the folder may also write into the hidden one.
void make_hidden_folder(const fs::path& folder, const fs::path& hidden, const std::string& file)
{
    struct stat status;
    if (lstat(hidden.c_str(), &status) == 0 && S_ISDIR(status.st_mode))
        return;
    if (mkdir(hidden.c_str(), 0777) != 0) {
        if (errno != EEXIST || lstat(hidden.c_str(), &status) != 0 || !S_ISDIR(status.st_mode))
            throw Write_failure(file, errno);
    } else if (stat(folder.empty() ? "." : folder.c_str(), &status) == 0) {
        chmod(hidden.c_str(), status.st_mode & 07777u);
    }
}

} // namespace

Staged_files::Staged_files(const std::string& folder, const std::string& file)
    : m_folder(folder), m_hidden(m_folder / ".shader-export")
{
    // A run that is just ending may remove the hidden folder after we have seen it.
    for (int tries = 1; m_stage.empty(); ++tries) {
        make_hidden_folder(m_folder, m_hidden, file);
        const Folder_lock lock(m_hidden);
        clean_up_after_killed_runs(m_hidden, m_folder);
        std::string stage = (m_hidden / (std::string(stage_prefix) + "XXXXXX")).string();
        if (mkdtemp(stage.data())) {
            m_stage = stage;
            m_lock = try_lock(m_stage);
        } else if (errno != ENOENT || tries == most_tries) {
            throw Write_failure(file, errno);
        }
    }
}

Staged_files::Staged_files(const fs::path& folder, const fs::path& stage)
    : m_folder(folder), m_hidden(m_folder / ".shader-export"), m_stage(stage)
{
}

Staged_files Staged_files::elsewhere(const std::string& folder, const std::string& stage)
{
    return {fs::path(folder), fs::path(stage)};
}

Staged_files::~Staged_files()
{
    if (m_lock < 0)
        return; // elsewhere
    const Folder_lock lock(m_hidden);
    remove_stage(m_stage);
    close(m_lock);
    rmdir(m_hidden.c_str()); // stays as long as there is anything in it
}

std::string Staged_files::staged(const std::string& name) const
{
    return (m_stage / name).string();
}

std::string Staged_files::placed(const std::string& name) const
{
    return (m_folder / name).string();
}

std::vector<std::string> Staged_files::names() const
{
    return regular_files(m_stage);
}

std::string Staged_files::for_user(const std::string& text) const
{
    const std::string stage = staged({});
    const std::string folder = placed({});
    std::string result = text;
    for (size_t at = result.find(stage); at != std::string::npos; at = result.find(stage, at))
        result.replace(at, stage.size(), folder);
    return result;
}

bool Staged_files::was_edited(const std::string& name) const
{
    constexpr std::uintmax_t max_size = 100; // a fingerprint and the end of its line
    std::string ignored;
    const auto known = read_whole_file(hash_file(m_hidden, name), max_size, ignored);
    return known && !known->empty() && *known != file_hash(placed(name)) + '\n';
}

std::string Staged_files::back_up(const std::string& name) const
{
    for (int number = 1;; ++number) {
        const fs::path copy = placed(name) + ".~" + std::to_string(number) + "~";
        if (fs::is_symlink(copy) || fs::exists(copy))
            continue;
        keep(behind_links(placed(name)), copy);
        return copy.string();
    }
}

void Staged_files::drop(const std::string& name)
{
    unlink(staged(name).c_str());
}

// Keeps what is at the places of the files, and gives its permissions to what replaces it.
void Staged_files::keep_old(const std::vector<std::string>& files) const
{
    const fs::path old = old_folder(m_stage);
    for (const std::string& name : files) {
        const fs::path place = behind_links(placed(name));
        struct stat status;
        if (lstat(place.c_str(), &status) != 0)
            continue;
        if (mkdir(old.c_str(), 0777) != 0 && errno != EEXIST)
            throw Write_failure(place.string(), errno);
        keep(place, old / name);
        if (S_ISREG(status.st_mode))
            chmod(staged(name).c_str(), status.st_mode & 07777u);
    }
}

void Staged_files::place()
{
    const Folder_lock lock(m_hidden);
    const std::vector<std::string> files = names();
    for (const std::string& name : files)
        check_place(placed(name));
    keep_old(files);
    for (const std::string& name : files) // without one, an edit merely goes unnoticed
        std::ofstream(coming_hash(m_stage, name)) << file_hash(staged(name)) << '\n';
    try {
        const fs::path ready = m_hidden / (ready_prefix + mark_of(m_stage));
        if (rename(m_stage.c_str(), ready.c_str()) != 0)
            throw Write_failure(placed(files.empty() ? "" : files.front()), errno);
        m_stage = ready;
        move_all(m_stage, m_folder);
    } catch (const Write_failure&) {
        remove_hashes(m_stage, files);
        throw;
    }
    place_hashes(m_stage, files);
}

} // namespace reference_host
