#include "exporter_base/bytes.h"

#include <cstring>

namespace QZ
{
namespace TOVIRAEXPORT
{

#if wxUSE_UNICODE

namespace
{

// A byte 80..FF of an invalid sequence becomes this code point plus the byte.
constexpr unsigned int escape_base = 0x10FE00;
constexpr unsigned int escape_first = escape_base + 0x80;
constexpr unsigned int escape_last = escape_base + 0xFF;

struct Decoded {
    unsigned int code_point;
    int length; // bytes read, at least 1
};

int continuation_count(unsigned int lead)
{
    if (lead >= 0xC2 && lead < 0xE0)
        return 1;
    if (lead >= 0xE0 && lead < 0xF0)
        return 2;
    if (lead >= 0xF0 && lead < 0xF5)
        return 3;
    return 0;
}

bool is_valid(unsigned int code_point, int continuations)
{
    constexpr unsigned int shortest[] = {0, 0x80, 0x800, 0x10000};
    return code_point >= shortest[continuations] && code_point < 0x110000 &&
           !(code_point >= 0xD800 && code_point < 0xE000) &&
           !(code_point >= escape_first && code_point <= escape_last);
}

// Reads one character; a byte that does not begin a valid one is escaped. The terminating NUL is
// not a continuation byte, so nothing beyond it is read.
Decoded decode(const unsigned char* bytes)
{
    const unsigned int lead = bytes[0];
    if (lead < 0x80)
        return {lead, 1};
    const int continuations = continuation_count(lead);
    unsigned int code_point = lead & (0x3Fu >> continuations);
    int read = 1;
    while (read <= continuations && (bytes[read] & 0xC0) == 0x80) {
        code_point = code_point << 6 | (bytes[read] & 0x3Fu);
        ++read;
    }
    if (continuations > 0 && read > continuations && is_valid(code_point, continuations))
        return {code_point, read};
    return {escape_base + lead, 1};
}

void append_byte(std::string& bytes, unsigned int byte)
{
    bytes += static_cast<char>(static_cast<unsigned char>(byte));
}

void encode(unsigned int code_point, std::string& bytes)
{
    if (code_point < 0x80) {
        append_byte(bytes, code_point);
    } else if (code_point >= escape_first && code_point <= escape_last) {
        append_byte(bytes, code_point - escape_base);
    } else if (code_point < 0x800) {
        append_byte(bytes, 0xC0 | code_point >> 6);
        append_byte(bytes, 0x80 | (code_point & 0x3F));
    } else if (code_point < 0x10000) {
        append_byte(bytes, 0xE0 | code_point >> 12);
        append_byte(bytes, 0x80 | (code_point >> 6 & 0x3F));
        append_byte(bytes, 0x80 | (code_point & 0x3F));
    } else {
        append_byte(bytes, 0xF0 | code_point >> 18);
        append_byte(bytes, 0x80 | (code_point >> 12 & 0x3F));
        append_byte(bytes, 0x80 | (code_point >> 6 & 0x3F));
        append_byte(bytes, 0x80 | (code_point & 0x3F));
    }
}

} // namespace

wxString from_bytes(const char* bytes)
{
    std::wstring text;
    if (bytes) {
        text.reserve(std::strlen(bytes));
        const unsigned char* at = reinterpret_cast<const unsigned char*>(bytes);
        while (*at) {
            const Decoded character = decode(at);
            text += static_cast<wchar_t>(character.code_point);
            at += character.length;
        }
    }
    return wxString(text.data(), text.size());
}

std::string to_bytes(const wxString& text)
{
    std::string bytes;
    const size_t length = text.length();
    bytes.reserve(length);
    const wchar_t* characters = text.wc_str();
    for (size_t i = 0; i < length; ++i)
        encode(static_cast<unsigned int>(characters[i]), bytes);
    return bytes;
}

#else

wxString from_bytes(const char* bytes)
{
    return wxString(text_or_empty(bytes));
}

std::string to_bytes(const wxString& text)
{
    return std::string(text.c_str(), text.length());
}

#endif

} // namespace TOVIRAEXPORT
} // namespace QZ
