// Every text that was put into a text field, also one that another text replaced at once.
#ifndef TESTS_GUI_ENTRY_TEXTS_H
#define TESTS_GUI_ENTRY_TEXTS_H

#include <string>
#include <string_view>
#include <vector>

namespace QZ
{
namespace TEST
{

// Notes the texts from its making to its end. One at a time.
class Entry_text_watch
{
public:
    Entry_text_watch();
    ~Entry_text_watch();
    Entry_text_watch(const Entry_text_watch&) = delete;
    Entry_text_watch& operator=(const Entry_text_watch&) = delete;

    // In the order in which the program set them, whatever the field. Empty texts are left out.
    const std::vector<std::string>& texts() const { return m_texts; }

    void note(std::string_view text);

private:
    std::vector<std::string> m_texts;
};

} // namespace TEST
} // namespace QZ

#endif
