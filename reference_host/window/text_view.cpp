#include "reference_host/window/text_view.h"

#include "reference_host/window/search_end.h"
#include "reference_host/window/wx_text.h"

#include <wx/clipbrd.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/srchctrl.h>
#include <wx/stc/stc.h>

namespace reference_host
{
namespace
{

// One style of a text with its colours on light and on dark ground.
struct Text_style {
    int style;
    const char* on_light;
    const char* on_dark;
};

constexpr Text_style shader_styles[] = {
    {wxSTC_C_COMMENT, "#5f7a61", "#8fb996"},      {wxSTC_C_COMMENTLINE, "#5f7a61", "#8fb996"},
    {wxSTC_C_NUMBER, "#9c4f00", "#f0b070"},       {wxSTC_C_WORD, "#0b4f9e", "#86b8f7"},
    {wxSTC_C_WORD2, "#7a2f8f", "#d6a2e8"},        {wxSTC_C_STRING, "#a03030", "#f29a9a"},
    {wxSTC_C_PREPROCESSOR, "#6b5a00", "#d8c56a"},
};

constexpr Text_style document_styles[] = {
    {wxSTC_H_TAG, "#0b4f9e", "#86b8f7"},          {wxSTC_H_TAGEND, "#0b4f9e", "#86b8f7"},
    {wxSTC_H_ATTRIBUTE, "#7a2f8f", "#d6a2e8"},    {wxSTC_H_DOUBLESTRING, "#a03030", "#f29a9a"},
    {wxSTC_H_SINGLESTRING, "#a03030", "#f29a9a"}, {wxSTC_H_COMMENT, "#5f7a61", "#8fb996"},
};

constexpr const char* keywords =
    "if else for while do return break continue discard struct const static uniform in out inout "
    "varying attribute void technique technique10 pass sampler_state compile class public private";
constexpr const char* type_words =
    "bool int float half float2 float3 float4 half2 half3 half4 float3x3 float4x4 vec2 vec3 vec4 "
    "mat3 mat4 sampler2D samplerCUBE samplerCube texture string double char true false";

constexpr int added_marker = 1;
constexpr int removed_marker = 2;

bool is_dark()
{
    return wxSystemSettings::GetAppearance().IsDark();
}

template<size_t Count>
void set_styles(wxStyledTextCtrl& text, const Text_style (&styles)[Count])
{
    for (const Text_style& style : styles)
        text.StyleSetForeground(
            style.style,
            wxColour(wxString(is_dark() ? style.on_dark : style.on_light, wxConvUTF8)));
}

} // namespace

Text_view::Text_view(wxWindow* parent, Text_kind kind)
    : wxPanel(parent),
      m_kind(kind),
      m_search(new wxSearchCtrl(this, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                                wxTE_PROCESS_ENTER)),
      m_text(new wxStyledTextCtrl(this, wxID_ANY)),
      m_text_window(m_text)
{
    m_search->SetDescriptiveText(wxT("Find in the text"));
    set_up_text();
    wxBoxSizer* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_search, 0, wxEXPAND | wxALL, FromDIP(4));
    sizer->Add(m_text, 1, wxEXPAND);
    SetSizer(sizer);
    m_search->Bind(wxEVT_TEXT, [this](wxCommandEvent&) {
        m_text->SetSelection(m_text->GetSelectionStart(), m_text->GetSelectionStart());
        find(true);
    });
    const auto find_next = [this](wxCommandEvent&) { find(!wxGetKeyState(WXK_SHIFT)); };
    m_search->Bind(wxEVT_TEXT_ENTER, find_next);
    m_search->Bind(wxEVT_SEARCHCTRL_SEARCH_BTN, find_next);
    end_with_escape(*m_search, *m_text);
}

void Text_view::set_up_text()
{
    const wxColour ground = wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW);
    const wxColour letters = wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT);
    wxFont font(wxFontInfo(wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT).GetPointSize())
                    .Family(wxFONTFAMILY_TELETYPE));
    m_text->StyleSetFont(wxSTC_STYLE_DEFAULT, font);
    m_text->StyleSetBackground(wxSTC_STYLE_DEFAULT, ground);
    m_text->StyleSetForeground(wxSTC_STYLE_DEFAULT, letters);
    m_text->StyleClearAll();
    m_text->SetCaretForeground(letters);
    if (m_kind == Text_kind::shader) {
        m_text->SetLexer(wxSTC_LEX_CPP);
        m_text->SetKeyWords(0, wxString(keywords, wxConvUTF8));
        m_text->SetKeyWords(1, wxString(type_words, wxConvUTF8));
        set_styles(*m_text, shader_styles);
    } else {
        m_text->SetLexer(wxSTC_LEX_XML);
        set_styles(*m_text, document_styles);
    }
    m_text->SetMarginType(0, wxSTC_MARGIN_NUMBER);
    m_text->SetMarginWidth(0, m_text->TextWidth(wxSTC_STYLE_LINENUMBER, wxT("99999")));
    m_text->SetMarginWidth(1, 0);
    m_text->MarkerDefine(added_marker, wxSTC_MARK_BACKGROUND, wxNullColour,
                         wxColour(is_dark() ? wxT("#24452a") : wxT("#d8f3dc")));
    m_text->MarkerDefine(removed_marker, wxSTC_MARK_BACKGROUND, wxNullColour,
                         wxColour(is_dark() ? wxT("#54282a") : wxT("#fbdcdc")));
    m_text->SetUndoCollection(false); // it would keep every text that was ever shown
    m_text->SetReadOnly(true);
}

void Text_view::set_text(const wxString& text)
{
    m_text->SetReadOnly(false);
    m_text->MarkerDeleteAll(-1);
    m_text->SetText(text);
    m_text->SetReadOnly(true);
}

void Text_view::show(const std::string& bytes)
{
    const wxString text = to_text(bytes);
    if (text == m_text->GetText() && m_text->MarkerNext(0, ~0) < 0)
        return;
    const int line = m_text->GetFirstVisibleLine();
    set_text(text);
    m_text->SetFirstVisibleLine(line);
}

void Text_view::show_lines(const std::vector<Line>& lines)
{
    std::string text;
    for (const Line& line : lines)
        text += line.text + "\n";
    set_text(to_text(text));
    int first = -1;
    for (size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].state == Line_state::same)
            continue;
        const int number = static_cast<int>(i);
        m_text->MarkerAdd(number,
                          lines[i].state == Line_state::added ? added_marker : removed_marker);
        first = first < 0 ? number : first;
    }
    if (first >= 0)
        go_to_line(first + 1);
}

void Text_view::go_to_line(int line)
{
    m_text->GotoLine(line - 1);
    m_text->SetSelection(m_text->PositionFromLine(line - 1), m_text->GetLineEndPosition(line - 1));
    m_text->VerticalCentreCaret();
}

void Text_view::start_search()
{
    m_search->SetFocus();
    m_search->SelectAll();
}

// Searches on from the selection, around the end when need be.
void Text_view::find(bool forward)
{
    const wxString wanted = m_search->GetValue();
    if (wanted.empty())
        return;
    const int start = forward ? m_text->GetSelectionEnd() : m_text->GetSelectionStart();
    const int end = m_text->GetTextLength();
    m_text->SetSearchFlags(0);
    const auto search = [&](int from, int to) {
        m_text->SetTargetRange(from, to);
        return m_text->SearchInTarget(wanted);
    };
    int found = search(start, forward ? end : 0);
    if (found < 0)
        found = search(forward ? 0 : end, start);
    if (found < 0)
        return;
    const int found_end = m_text->GetTargetEnd();
    m_text->GotoPos(found);
    m_text->SetSelection(found, found_end);
    m_text->VerticalCentreCaret();
}

std::string Text_view::content() const
{
    return to_bytes(m_text->GetText());
}

std::string Text_view::selection() const
{
    return to_bytes(m_text->GetSelectedText());
}

int Text_view::line() const
{
    return m_text->GetCurrentLine() + 1;
}

int Text_view::marked_lines() const
{
    int count = 0;
    for (int line = 0; line < m_text->GetLineCount(); ++line)
        count += m_text->MarkerGet(line) != 0 ? 1 : 0;
    return count;
}

void Text_view::copy_all() const
{
    const wxClipboardLocker clipboard;
    if (!!clipboard)
        wxTheClipboard->SetData(new wxTextDataObject(m_text->GetText()));
}

void Text_view::on_line_click(std::function<void(int)> callback)
{
    m_text->Bind(wxEVT_LEFT_UP, [this, callback](wxMouseEvent& event) {
        event.Skip();
        if (m_text->GetSelectionStart() == m_text->GetSelectionEnd())
            callback(line());
    });
}

void Text_view::on_escape(std::function<void()> callback)
{
    m_text->Bind(wxEVT_KEY_DOWN, [callback](wxKeyEvent& event) {
        event.Skip();
        if (event.GetKeyCode() == WXK_ESCAPE)
            callback();
    });
}

} // namespace reference_host
