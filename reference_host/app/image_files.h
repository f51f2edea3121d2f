// The image files of a document: where they lie, and how exported texts name them.
#ifndef REFERENCE_HOST_APP_IMAGE_FILES_H
#define REFERENCE_HOST_APP_IMAGE_FILES_H

#include <map>
#include <string>
#include <vector>

namespace reference_host
{

// How the names of image files stand in the exported text.
enum class Texture_paths {
    relative, // to the folder of the exported file
    absolute,
    as_is, // as the document has them, file prefixes applied
    copy   // copies beside the exported file, which are named
};

// Where images may lie: in the document's folder, or in one of the search path.
class Image_folders
{
public:
    Image_folders(const std::string& document_folder, std::vector<std::string> search_path);

    // The absolute path of an image; empty when it is in none of the folders. A name that stands
    // for several files, such as "grain.<UDIM>.png", counts as there.
    std::string find(const std::string& name) const;

    // The same, in the document's folder when it is nowhere.
    std::string expect(const std::string& name) const;

private:
    std::vector<std::string> m_folders;
};

// Names the images of one export.
class Image_names
{
public:
    // An empty output is not known yet: its images have absolute names. `folder` is what relative
    // names start from; empty: the folder of the output.
    Image_names(Texture_paths choice, const Image_folders& folders, const std::string& output,
                const std::string& folder = {});

    // How the text names the image. One that is missing keeps its name.
    std::string name_of(const std::string& image);

    // What is to be copied beside the output: the name of each copy, and its original.
    const std::map<std::string, std::string>& copies() const { return m_copies; }

private:
    std::string copy_of(const std::string& file);

    Texture_paths m_choice;
    const Image_folders& m_folders;
    std::string m_output;
    std::string m_base;
    std::map<std::string, std::string> m_copies;
};

} // namespace reference_host

#endif
