// Files of shading text: helper functions (library/*.shade) and nodes (nodes/*.shade).
//
// A file is a list of items; comments begin with "//" and may stand anywhere:
//
//     types numbers = float color3 vector2;
//     inputs placed = vector2 texcoord = texcoord, vector2 pivot = 0 0;
//     node fract<numbers>(T in) { T out = fract(in); }
//     float circle(float2 p, float radius) { return step(length(p), radius); }
//
// docs/nodes.md describes nodes, shading notation and all. This module cuts files into items and
// items into words; what they mean is the concern of nodes/node_library.h and library/library.h.
#ifndef REFERENCE_HOST_SHADING_SHADE_FILE_H
#define REFERENCE_HOST_SHADING_SHADE_FILE_H

#include "reference_host/shading/place.h"

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace reference_host
{

// A text and where it begins. The text must outlive all that is made of it.
struct Shade_text {
    std::string_view text;
    Place place;
};

// A mistake in a file. what() is "file:line: message".
class Shade_error : public std::runtime_error
{
public:
    Shade_error(const Place& place, const std::string& message);
};

enum class Item_kind { types, inputs, node, function };

struct Shade_item {
    Item_kind kind;
    Shade_text whole; // of a function: all of it; else: without the word that begins it
};

// Throws Shade_error for items that do not end.
std::vector<Shade_item> shade_items(const Shade_text& file);

// Cuts a text into words: names, numbers, texts in quotes and single signs.
class Shade_scanner
{
public:
    explicit Shade_scanner(const Shade_text& text);

    bool at_end() const { return m_rest.empty(); }
    bool next_is(std::string_view sign) const { return m_rest.substr(0, sign.size()) == sign; }
    bool accept(std::string_view sign);
    void expect(std::string_view sign);

    // A name; `what` says what was expected when something else follows.
    std::string name(const std::string& what);
    double number();
    bool next_is_number() const;
    std::string quoted(const std::string& what);
    Shade_text item(); // up to a semicolon or to the end of braces, that included
    // Everything up to the sign (left standing), which does not count within quotes.
    Shade_text until(char sign);

    std::string_view rest() const { return m_rest; }
    Place place() const { return m_place; }
    [[noreturn]] void fail(const std::string& message) const;

private:
    std::string_view take_while(bool (*belongs)(char));
    std::string_view take(std::size_t length);
    void skip_spaces();

    std::string_view m_rest;
    Place m_place; // of m_rest
};

} // namespace reference_host

#endif
