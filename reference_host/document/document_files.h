// A document and the files that it includes, as one list of elements.
#ifndef REFERENCE_HOST_DOCUMENT_DOCUMENT_FILES_H
#define REFERENCE_HOST_DOCUMENT_DOCUMENT_FILES_H

#include "reference_host/document/shader_graph.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <pugixml.hpp>

namespace reference_host
{

class Document_problems;

// One XML file.
struct Source_file {
    std::string path;        // as it was opened
    std::string folder;      // of `path`, relative to the opened document's folder; empty: the same
    std::string file_prefix; // of the file that includes this one; its own elements may set others
    std::string color_space; // likewise
    std::vector<size_t> line_starts;
    pugi::xml_document xml;
    // The inputs by name of the elements with very many. Filled as they are first searched.
    using Inputs = std::unordered_map<std::string_view, pugi::xml_node>;
    mutable std::unordered_map<const void*, Inputs> inputs;
};

// One XML element and the file it stands in. Cheap to copy; valid as long as its Document_files.
class Element
{
public:
    Element() = default;
    Element(pugi::xml_node xml, const Source_file& file) : m_xml(xml), m_file(&file) {}

    explicit operator bool() const { return static_cast<bool>(m_xml); }
    const void* id() const { return m_xml.internal_object(); } // equal for the same element only
    Element parent() const { return Element(m_xml.parent(), *m_file); }

    std::string tag() const { return m_xml.name(); }
    // The category of a node: its tag, or what a node of the general form says:
    // <node nodetype="multiply">.
    std::string category() const;
    std::string name() const { return attribute("name"); }

    // The attribute's text; empty when it is missing.
    std::string attribute(const char* key) const { return m_xml.attribute(key).value(); }
    bool has(const char* key) const { return !m_xml.attribute(key).empty(); }

    // The attribute of this element, or of the nearest one around it that has it. Around the
    // outermost element of an included file stands the one that includes it.
    std::string file_prefix() const { return inherited("fileprefix", m_file->file_prefix); }
    std::string color_space() const { return inherited("colorspace", m_file->color_space); }
    std::string name_space() const { return inherited("namespace", ""); } // of its file alone

    // The child elements in their order.
    std::vector<Element> children() const;

    // An input (1.37: also called parameter) of that name; a false element when there is none.
    Element find_input(const std::string& input_name) const;
    bool is_input() const;

    Place place() const;
    const Source_file& file() const { return *m_file; }

private:
    Element find_indexed_input(const std::string& input_name) const;
    std::string inherited(const char* key, const std::string& outermost) const;

    pugi::xml_node m_xml;
    const Source_file* m_file = nullptr;
};

struct Document_files {
    std::vector<std::unique_ptr<Source_file>> files; // the opened document first
    std::vector<Element> elements; // the children of all roots, an included file's where it stands
    std::vector<Missing_file> missing;

    // The outermost element of the opened document.
    Element root() const { return Element(files.front()->xml.document_element(), *files.front()); }
};

// Reads the document and, once each, the files that it includes. Throws Reading_ended when the
// document is missing, or a file no regular file, not well-formed, larger than 64 MiB with what it
// includes, or not a MaterialX document of version 1: what the others say about names is then worth
// nothing. An included file that is missing is noted: the rest may be all that is wanted.
Document_files load_document(const std::string& file, const std::vector<std::string>& search_path,
                             Document_problems& problems);

// Throws Reading_ended when there are problems. Files that are missing are then among them: they
// may be the cause.
void end_if_any(Document_problems& problems, const Document_files& files);

} // namespace reference_host

#endif
