#include "reference_host/app/export_job.h"

#include "reference_host/app/interruption.h"
#include "reference_host/app/messages.h"
#include "reference_host/desktop/exporter_panel.h"
#include "reference_host/desktop/hidden_window.h"
#include "reference_host/output/content_hash.h"
#include "reference_host/output/staged_files.h"
#include "reference_host/output/write_failure.h"
#include "reference_host/system/file_access.h"
#include "reference_host/system/temporary_folder.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <set>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace reference_host
{
namespace
{

namespace fs = std::filesystem;

constexpr int panel_width = 400; // pixels; any width does, as the window is never shown

// Opens the panel as Tovira does, and closes it with the file name and the options set.
void fill_panel(QZ::TSDK::IExporter& exporter, Export_session& session, const std::string& file,
                const Scene_request& request)
{
    Hidden_window window;
    Exporter_panel panel(exporter, session.view(), window.area(), panel_width, file);
    set_panel_options(window.area(), request.options);
    panel.restore_file_name(); // the output is what the user named, whatever the options
    panel.close();
}

std::string read_file(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

std::vector<Exported_file> staged_files(const Staged_files& stage)
{
    std::vector<Exported_file> files;
    for (const std::string& name : stage.names())
        files.push_back({stage.placed(name), read_file(stage.staged(name))});
    return files;
}

bool is_start(const std::string& start, const std::string& text)
{
    return text.compare(0, start.size(), start) == 0;
}

// A generated text must be in a file, whole; the exporter may add something after it.
bool is_written(const std::string& text, const std::vector<Exported_file>& files)
{
    return std::any_of(files.begin(), files.end(),
                       [&](const Exported_file& file) { return is_start(text, file.content); });
}

// Writes a text, to see what the system says.
int try_to_write(const std::string& file, const std::string& text)
{
    const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (descriptor < 0)
        return errno;
    const int reason = write_all(descriptor, text) ? 0 : errno;
    return close(descriptor) == 0 || reason != 0 ? reason : errno;
}

// Why a text did not reach its file. Exporters do not say: they leave a partial file or none. So
// the host writes the text again and gets the system's reason.
std::string reason_of_lost_text(const std::string& text, const std::string& chosen,
                                const std::vector<Exported_file>& files, const Staged_files& stage)
{
    std::string file = chosen;
    std::string name = fs::path(chosen).filename().string() + ".cgfx"; // no extension is longer
    for (const Exported_file& candidate : files) {
        if (is_start(candidate.content, text)) {
            file = candidate.path;
            name = fs::path(file).filename().string();
        }
    }
    const int reason = try_to_write(stage.staged(name), text);
    if (reason != 0)
        return Write_failure(file, reason).what();
    return Write_failure(file, "the exporter left out a generated text").what();
}

// The reasons of failed writes that the exporter itself reports ("write failed [FILE]"), such as
// that of text that it appends. Writing one more byte fails for the same reason.
void add_reasons_of_reported_writes(const std::vector<Answered_box>& boxes,
                                    const Staged_files& stage, std::set<std::string>& reasons)
{
    const std::string start = "[" + stage.staged({});
    for (const Answered_box& box : boxes) {
        const size_t at = box.message.find(start);
        const size_t end = box.message.find(']', at);
        if (at == std::string::npos || end == std::string::npos)
            continue;
        const size_t name_at = at + start.size();
        const std::string name = box.message.substr(name_at, end - name_at);
        const int reason = try_to_write(stage.staged(name), read_file(stage.staged(name)) + "\n");
        if (reason != 0)
            reasons.insert(Write_failure(stage.placed(name), reason).what());
    }
}

// What the boxes say about the export, unless a failed write says it better.
void add_reasons_of_boxes(const std::vector<Answered_box>& boxes, Export_outcome& outcome)
{
    const bool is_write_known = !outcome.reasons.empty();
    for (const Answered_box& box : boxes) {
        if (box.is_missing_question && box.answer == Box_answer::no)
            outcome.reasons.push_back("cancelled: the scene lacks what the shader requires");
        if (box.answer != Box_answer::ok) {
            outcome.boxes.push_back(box);
        } else if (!is_write_known) {
            outcome.boxes.push_back(box);
            outcome.reasons.push_back("the exporter reported an error");
        }
    }
}

void add_wrong_uses(const Export_session& session, Export_outcome& outcome)
{
    for (const std::string& use : session.record().wrong_uses)
        outcome.reasons.push_back("the plug-in used the host wrongly: " + use);
    for (const std::string& finding : session.reference_findings({}))
        outcome.reasons.push_back("the plug-in used the host wrongly: " + finding);
}

// An exporter that generates several texts gets the same diagnostics for each.
Diagnostics without_doubles(const Diagnostics& diagnostics)
{
    Diagnostics result;
    std::set<std::string> known;
    for (const Diagnostic& diagnostic : diagnostics) {
        if (known.insert(line_of(diagnostic)).second)
            result.push_back(diagnostic);
    }
    return result;
}

// Judges by what can be seen. The files are in the stage.
Export_outcome judge(const Export_session& session, const Staged_files& stage,
                     const std::vector<Answered_box>& boxes, const std::string& chosen,
                     bool returned)
{
    const Compiler_record& record = session.record();
    Export_outcome outcome;
    outcome.files = staged_files(stage);
    outcome.diagnostics = without_doubles(record.diagnostics);
    std::set<std::string> lost;
    for (const std::string& text : record.texts) {
        if (!is_written(text, outcome.files))
            lost.insert(reason_of_lost_text(text, chosen, outcome.files, stage));
    }
    add_reasons_of_reported_writes(boxes, stage, lost);
    const bool is_compiled = !has_errors(record.diagnostics);
    if (is_compiled)
        outcome.reasons.assign(lost.begin(), lost.end());
    add_reasons_of_boxes(boxes, outcome);
    for (Answered_box& box : outcome.boxes)
        box.message = stage.for_user(box.message);
    if (!is_compiled)
        outcome.reasons.insert(outcome.reasons.begin(), "the shader could not be compiled");
    if (!returned && outcome.reasons.empty())
        outcome.reasons.push_back("the exporter refused, without saying why");
    if (outcome.files.empty() && outcome.reasons.empty())
        outcome.reasons.push_back("no file was written");
    add_wrong_uses(session, outcome);
    if (const int signal = Interruption::signal())
        outcome.reasons.push_back(std::string("interrupted: ") + strsignal(signal));
    return outcome;
}

// Puts the copies of images beside the exported files.
void add_copies(const Image_names& images, Staged_files& stage, Export_outcome& outcome)
{
    for (const auto& [name, original] : images.copies()) {
        std::error_code failure;
        fs::copy_file(original, stage.staged(name), failure);
        if (failure)
            outcome.reasons.emplace_back(Write_failure(stage.placed(name), failure.value()).what());
        else
            outcome.files.push_back({stage.placed(name), read_file(stage.staged(name))});
    }
}

// Finds out which files exist already; those with the same content need no place.
std::vector<Existing_file> existing_files(Staged_files& stage, std::vector<Exported_file>& files,
                                          const Scene_request& request)
{
    std::vector<Existing_file> existing;
    for (Exported_file& file : files) {
        const std::string name = fs::path(file.path).filename().string();
        struct stat status;
        if (lstat(file.path.c_str(), &status) != 0)
            continue;
        const bool leads_somewhere = stat(file.path.c_str(), &status) == 0;
        if (leads_somewhere && !S_ISREG(status.st_mode))
            continue; // placing it fails and says why
        if (request.overwrite.overwrite != Overwrite::yes &&
            file_hash(file.path) == content_hash(file.content)) {
            file.state = Exported_file::State::unchanged;
            stage.drop(name);
        } else {
            existing.push_back({file.path, stage.was_edited(name)});
        }
    }
    return existing;
}

void mark_skipped(std::vector<Exported_file>& files)
{
    for (Exported_file& file : files) {
        if (file.state == Exported_file::State::written)
            file.state = Exported_file::State::skipped;
    }
}

void add_refusals(const std::vector<Existing_file>& files, std::vector<std::string>& reasons)
{
    for (const Existing_file& file : files)
        reasons.push_back("refused: " + file.path +
                          (file.was_edited ? " was edited since it was exported; replace it with "
                                             "--overwrite-edited"
                                           : " already exists; replace it with --overwrite yes"));
}

// Places the files unless the user refuses.
void place_files(Staged_files& stage, Export_outcome& outcome, const Scene_request& request,
                 Replacement& replacement)
{
    using Decision = Replacement::Decision;
    const std::vector<Existing_file> existing = existing_files(stage, outcome.files, request);
    const Decision decision = existing.empty() ? Decision::replace : replacement.decide(existing);
    if (decision == Decision::refuse)
        return add_refusals(existing, outcome.reasons);
    if (decision == Decision::skip)
        return mark_skipped(outcome.files);
    if (request.is_dry_run)
        return;
    std::vector<std::string> backups;
    try {
        for (const Existing_file& file : existing) {
            if (decision == Decision::back_up)
                backups.push_back(stage.back_up(fs::path(file.path).filename().string()));
        }
        stage.place();
    } catch (const Write_failure& failure) {
        outcome.reasons.emplace_back(failure.what());
        for (const std::string& backup : backups)
            unlink(backup.c_str());
    }
}

} // namespace

Export_outcome run_export(const Opened_document& document, QZ::TSDK::IExporter& exporter,
                          const std::string& output, const Scene_request& request,
                          Replacement& replacement)
{
    const fs::path chosen(output);
    std::optional<Temporary_folder> scratch;
    if (request.is_dry_run)
        scratch.emplace();
    const std::string folder = chosen.parent_path().string();
    Staged_files stage =
        scratch ? Staged_files::elsewhere(folder, scratch->path()) : Staged_files(folder, output);
    const std::string staged = stage.staged(chosen.filename().string());
    Image_names images(request.texture_paths, document.images(), output, request.texture_base);
    Export_session session(document.scene(images));
    // Ends before the files are placed: questions asked then are the host's own.
    auto answers = std::make_unique<const Message_box_answers>(request.boxes);
    fill_panel(exporter, session, staged, request);
    const bool returned = exporter.export_shader(session.application(), session.view());

    Export_outcome outcome = judge(session, stage, answers->boxes(), output, returned);
    answers.reset();
    if (outcome.is_success())
        add_copies(images, stage, outcome);
    if (outcome.is_success())
        place_files(stage, outcome, request, replacement);
    if (!outcome.is_success())
        outcome.files.clear();
    return outcome;
}

} // namespace reference_host
