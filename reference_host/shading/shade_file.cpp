#include "reference_host/shading/shade_file.h"

#include "reference_host/shading/quotes.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace reference_host
{
namespace
{

struct Item_word {
    std::string_view word;
    Item_kind kind;
};

constexpr Item_word item_words[] = {
    {"types", Item_kind::types},
    {"inputs", Item_kind::inputs},
    {"node", Item_kind::node},
};

bool is_name_sign(char sign)
{
    return std::isalnum(static_cast<unsigned char>(sign)) || sign == '_';
}

bool is_number_sign(char sign)
{
    return std::isdigit(static_cast<unsigned char>(sign)) || sign == '.' || sign == '-';
}

// The length of the text in quotes or the comment that begins here, else 1.
std::size_t length_of_part(std::string_view text)
{
    if (text[0] == '"')
        return quoted_length(text);
    return text.substr(0, 2) == "//" ? std::min(text.find('\n'), text.size()) : 1;
}

// The length of the item that begins here: up to a semicolon, or to the end of its braces. Zero
// when it does not end.
std::size_t item_length(std::string_view text)
{
    int depth = 0;
    for (std::size_t i = 0; i < text.size(); i += length_of_part(text.substr(i))) {
        depth += text[i] == '{';
        depth -= text[i] == '}';
        if (depth == 0 && (text[i] == ';' || text[i] == '}'))
            return i + 1;
    }
    return 0;
}

} // namespace

Shade_error::Shade_error(const Place& place, const std::string& message)
    : std::runtime_error(place.file + ":" + std::to_string(place.line) + ": " + message)
{
}

std::vector<Shade_item> shade_items(const Shade_text& file)
{
    std::vector<Shade_item> items;
    for (Shade_scanner scanner(file); !scanner.at_end();) {
        Item_kind kind = Item_kind::function;
        for (const Item_word& candidate : item_words)
            if (scanner.next_is(std::string(candidate.word) + " ")) {
                kind = candidate.kind;
                scanner.accept(candidate.word);
            }
        items.push_back({kind, scanner.item()});
    }
    return items;
}

Shade_scanner::Shade_scanner(const Shade_text& text) : m_rest(text.text), m_place(text.place)
{
    skip_spaces();
}

bool Shade_scanner::accept(std::string_view sign)
{
    if (!next_is(sign))
        return false;
    take(sign.size());
    return true;
}

void Shade_scanner::expect(std::string_view sign)
{
    if (!accept(sign))
        fail("expected \"" + std::string(sign) + "\"" +
             (at_end() ? "" : " before \"" + std::string(m_rest.substr(0, 12)) + "\""));
}

std::string Shade_scanner::name(const std::string& what)
{
    if (at_end() || !std::isalpha(static_cast<unsigned char>(m_rest[0])))
        fail("expected " + what);
    return std::string(take_while(is_name_sign));
}

double Shade_scanner::number()
{
    const Place begin = m_place;
    const std::string_view word = take_while(is_number_sign);
    double number = 0.0;
    const auto [end, failure] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (failure != std::errc() || end != word.data() + word.size())
        throw Shade_error(begin, "expected a number");
    return number;
}

std::string Shade_scanner::quoted(const std::string& what)
{
    if (!next_is("\""))
        fail("expected " + what + " in quotes");
    return without_quotes(take(quoted_length(m_rest)));
}

bool Shade_scanner::next_is_number() const
{
    return !at_end() && is_number_sign(m_rest[0]);
}

Shade_text Shade_scanner::until(char sign)
{
    std::size_t length = 0;
    while (length < m_rest.size() && m_rest[length] != sign)
        length += length_of_part(m_rest.substr(length));
    const Place place = m_place;
    std::string_view text = take(length);
    text.remove_suffix(text.size() - text.find_last_not_of(" \n") - 1);
    return {text, place};
}

Shade_text Shade_scanner::item()
{
    const Place place = m_place;
    const std::string_view whole = m_rest.substr(0, item_length(m_rest));
    if (whole.empty())
        fail("what begins here does not end");
    take(whole.size());
    return {whole, place};
}

void Shade_scanner::fail(const std::string& message) const
{
    throw Shade_error(m_place, message);
}

std::string_view Shade_scanner::take_while(bool (*belongs)(char))
{
    const auto end = std::find_if_not(m_rest.begin(), m_rest.end(), belongs);
    return take(static_cast<std::size_t>(end - m_rest.begin()));
}

std::string_view Shade_scanner::take(std::size_t length)
{
    const std::string_view taken = m_rest.substr(0, length);
    m_place.line += static_cast<int>(std::count(taken.begin(), taken.end(), '\n'));
    m_rest.remove_prefix(taken.size());
    skip_spaces();
    return taken;
}

void Shade_scanner::skip_spaces()
{
    for (;;) {
        const std::size_t length = m_rest.substr(0, 2) == "//"
                                       ? length_of_part(m_rest)
                                       : std::min(m_rest.find_first_not_of(" \n"), m_rest.size());
        if (length == 0)
            return;
        const std::string_view passed = m_rest.substr(0, length);
        m_place.line += static_cast<int>(std::count(passed.begin(), passed.end(), '\n'));
        m_rest.remove_prefix(length);
    }
}

} // namespace reference_host
