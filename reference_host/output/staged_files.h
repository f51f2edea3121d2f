// Files that get to their folder all together or not at all.
//
// An exporter writes straight into a file, and leaves a partial one when that fails. So it writes
// into a stage first, a hidden folder beside the place of the files:
//
//   FOLDER/.shader-export/stage-XXXXXX/      what the exporter writes
//   FOLDER/.shader-export/old-XXXXXX/        what is replaced, while it is being replaced
//   FOLDER/.shader-export/NAME.hash.XXXXXX   becomes, when the file is at its place:
//   FOLDER/.shader-export/NAME.hash          the fingerprint of a file as it was placed
//
// Until place(), nothing in FOLDER has changed. place() renames the stage to "ready-XXXXXX": from
// then on the files are as good as placed. Whatever ends the process before leaves the old files as
// they were; whatever ends it afterwards is made good by the next run, which completes the work.
#ifndef REFERENCE_HOST_OUTPUT_STAGED_FILES_H
#define REFERENCE_HOST_OUTPUT_STAGED_FILES_H

#include <filesystem>
#include <string>
#include <vector>

namespace reference_host
{

class Staged_files
{
public:
    // Completes or removes what killed runs left in the folder, then makes a stage. An empty name
    // is the current folder. Throws Write_failure with `file`, which the user knows, when that
    // fails.
    Staged_files(const std::string& folder, const std::string& file);

    // A stage that is never placed, in an empty folder elsewhere: the folder of the files need not
    // exist.
    static Staged_files elsewhere(const std::string& folder, const std::string& stage);

    // Removes what was not placed.
    ~Staged_files();
    Staged_files(const Staged_files&) = delete;
    Staged_files& operator=(const Staged_files&) = delete;

    // Where to write a file of that name, and where it goes.
    std::string staged(const std::string& name) const;
    std::string placed(const std::string& name) const;

    // The names of the regular files in the stage, sorted.
    std::vector<std::string> names() const;

    // A text with the stage's folder replaced by the one that the user knows.
    std::string for_user(const std::string& text) const;

    // Whether the file at its place was placed by us and changed since.
    bool was_edited(const std::string& name) const;

    // A copy of the file at its place, "NAME.~1~" or the next free number. Returns its path.
    std::string back_up(const std::string& name) const;

    // Takes a file out of what will be placed.
    void drop(const std::string& name);

    // Moves all files to their places. They keep the permissions of those that they replace; what a
    // link names is replaced, not the link, unless it leads nowhere. Throws Write_failure when one
    // cannot be moved; then the folder is as before.
    void place();

private:
    Staged_files(const std::filesystem::path& folder, const std::filesystem::path& stage);

    void keep_old(const std::vector<std::string>& files) const;

    std::filesystem::path m_folder;
    std::filesystem::path m_hidden; // m_folder/.shader-export
    std::filesystem::path m_stage;
    int m_lock = -1; // held while we live: a stage that nobody holds was left behind
};

} // namespace reference_host

#endif
