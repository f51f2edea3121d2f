#include "reference_host/document/document_files.h"

#include "reference_host/document/document_error.h"
#include "reference_host/document/namespaces.h"
#include "reference_host/system/file_access.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <set>

namespace reference_host
{
namespace
{

namespace fs = std::filesystem;

// Far above what documents need, far below what a call stack holds.
constexpr int max_include_depth = 64;

// Of a document and all that it includes, in bytes: ten times the largest that are known.
constexpr std::uintmax_t max_document_size = std::uintmax_t{64} << 20;

// `read` counts the bytes of all files so far.
std::string read_text(const fs::path& path, std::uintmax_t& read)
{
    std::string reason;
    std::optional<std::string> text = read_whole_file(path.string(), max_document_size, reason);
    if (!text)
        throw Document_error({path.string(), 0}, "cannot be opened: " + reason);
    read += text->size();
    if (read > max_document_size)
        throw Document_error({path.string(), 0},
                             "the document and the files that it includes are "
                             "larger than " +
                                 std::to_string(max_document_size >> 20) + " MiB",
                             Document_error::Reach::document);
    return std::move(*text);
}

// Elements with more children have their inputs in an index: a search for each would be quadratic.
constexpr int max_unindexed_inputs = 16;

std::vector<size_t> find_line_starts(const std::string& text)
{
    std::vector<size_t> starts{0};
    for (size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 1))
        starts.push_back(at + 1);
    return starts;
}

int line_of(const Source_file& file, std::ptrdiff_t offset)
{
    const auto after = std::upper_bound(file.line_starts.begin(), file.line_starts.end(),
                                        static_cast<size_t>(std::max<std::ptrdiff_t>(offset, 0)));
    return static_cast<int>(after - file.line_starts.begin());
}

void parse(Source_file& file, std::uintmax_t& read)
{
    const std::string text = read_text(file.path, read);
    if (text.find_first_not_of(" \t\r\n") == std::string::npos)
        throw Document_error({file.path, 0}, "the file is empty");
    file.line_starts = find_line_starts(text);
    const size_t nul = text.find('\0');
    if (nul != std::string::npos) {
        throw Document_error({file.path, line_of(file, static_cast<std::ptrdiff_t>(nul))},
                             "not a text file: it holds a NUL byte");
    }
    const pugi::xml_parse_result parsed =
        file.xml.load_buffer(text.data(), text.size(), pugi::parse_default, pugi::encoding_utf8);
    if (!parsed) {
        throw Document_error({file.path, line_of(file, parsed.offset)},
                             std::string("malformed XML: ") + parsed.description());
    }
}

void check_root(const Element& root)
{
    if (root.tag() != "materialx") {
        throw Document_error(root.place(), "not a MaterialX document: its outermost element is '" +
                                               root.tag() + "'");
    }
    const std::string version = root.attribute("version");
    if (!version.empty() && version.compare(0, 2, "1.") != 0) {
        throw Document_error(root.place(), "version '" + version +
                                               "' of MaterialX is not supported, only 1.38 and "
                                               "1.39");
    }
}

bool is_include(const Element& element)
{
    const std::string tag = element.tag();
    return tag.substr(tag.find(':') + 1) == "include"; // the name space is "xi" by custom only
}

fs::path absolute_folder(const fs::path& file)
{
    std::error_code failure; // an empty name has no folder
    return fs::absolute(file, failure).parent_path();
}

class Loader
{
public:
    Loader(const std::string& file, const std::vector<std::string>& search_path,
           Document_problems& problems)
        : m_search_path(search_path), m_folder(absolute_folder(file)), m_problems(problems)
    {
    }

    Document_files load(const std::string& file)
    {
        m_problems.attempt([&] { add(file, {}, 0); });
        end_if_any(m_problems, m_result);
        return std::move(m_result);
    }

private:
    // `outer` is the outermost element of the file that includes this one.
    void add(const fs::path& path, const Element& outer, int depth)
    {
        std::error_code failure;
        const fs::path canonical = fs::weakly_canonical(path, failure);
        if (!m_seen.insert(failure ? path.string() : canonical.string()).second)
            return; // included before, or a loop of files that include each other
        Source_file& file = *m_result.files.emplace_back(std::make_unique<Source_file>());
        file.path = path.string();
        file.folder = absolute_folder(path).lexically_relative(m_folder).generic_string();
        if (file.folder == ".")
            file.folder.clear();
        if (outer) {
            file.file_prefix = outer.file_prefix();
            file.color_space = outer.color_space();
        }
        parse(file, m_read);
        const Element root(file.xml.document_element(), file);
        check_root(root);
        if (outer)
            apply_namespace(file.xml.document_element());
        for (const Element& element : root.children()) {
            if (is_include(element))
                m_problems.attempt([&] { include(element, root, depth + 1); });
            else
                m_result.elements.push_back(element);
        }
    }

    void include(const Element& element, const Element& root, int depth)
    {
        const std::string target = element.attribute("href");
        if (target.empty())
            throw Document_error(element.place(), "an include names no file");
        if (depth > max_include_depth)
            throw Document_error(element.place(), "files include each other too deeply",
                                 Document_error::Reach::document);
        const fs::path path = find_included(target, element.file());
        if (path.empty())
            m_result.missing.push_back(
                {"the included file '" + target + "' is missing", element.place()});
        else
            add(path, root, depth);
    }

    fs::path find_included(const fs::path& target, const Source_file& from) const
    {
        std::vector<fs::path> candidates{fs::path(from.path).parent_path() / target};
        for (const std::string& folder : m_search_path)
            candidates.push_back(folder / target);
        for (const fs::path& candidate : candidates) {
            std::error_code failure;
            if (fs::exists(candidate, failure))
                return candidate;
        }
        return {};
    }

    const std::vector<std::string>& m_search_path;
    fs::path m_folder; // of the opened document
    Document_problems& m_problems;
    std::set<std::string> m_seen;
    std::uintmax_t m_read = 0; // bytes of all files
    Document_files m_result;
};

} // namespace

std::string Element::category() const
{
    return tag() == "node" && has("nodetype") ? attribute("nodetype") : tag();
}

std::vector<Element> Element::children() const
{
    std::vector<Element> result;
    for (pugi::xml_node child : m_xml.children()) {
        if (child.type() == pugi::node_element)
            result.emplace_back(child, *m_file);
    }
    return result;
}

bool Element::is_input() const
{
    return std::strcmp(m_xml.name(), "input") == 0 || std::strcmp(m_xml.name(), "parameter") == 0;
}

Element Element::find_input(const std::string& input_name) const
{
    int looked_at = 0;
    for (pugi::xml_node child : m_xml.children()) {
        if (++looked_at > max_unindexed_inputs)
            return find_indexed_input(input_name);
        const Element element(child, *m_file);
        if (element.is_input() && input_name == child.attribute("name").value())
            return element;
    }
    return {};
}

Element Element::find_indexed_input(const std::string& input_name) const
{
    const auto [index, is_new] = m_file->inputs.try_emplace(id());
    if (is_new) {
        for (pugi::xml_node child : m_xml.children()) {
            if (Element(child, *m_file).is_input())
                index->second.emplace(child.attribute("name").value(), child);
        }
    }
    const auto found = index->second.find(input_name);
    return found == index->second.end() ? Element() : Element(found->second, *m_file);
}

Place Element::place() const
{
    return {m_file->path, line_of(*m_file, m_xml.offset_debug())};
}

std::string Element::inherited(const char* key, const std::string& outermost) const
{
    for (pugi::xml_node xml = m_xml; xml; xml = xml.parent()) {
        if (const pugi::xml_attribute attribute = xml.attribute(key))
            return attribute.value();
    }
    return outermost;
}

Document_files load_document(const std::string& file, const std::vector<std::string>& search_path,
                             Document_problems& problems)
{
    return Loader(file, search_path, problems).load(file);
}

void end_if_any(Document_problems& problems, const Document_files& files)
{
    if (problems.all().empty())
        return;
    for (const Missing_file& missing : files.missing)
        problems.add({missing.place, missing.text});
    problems.end_if_any();
}

} // namespace reference_host
