#include "reference_host/host/light_request.h"

#include "reference_host/document/value_parser.h"

#include <algorithm>
#include <iterator>

namespace reference_host
{
namespace
{

constexpr float full_circle = 360.0f; // degrees

struct Key_row {
    const char* key;
    Value_type type;
    bool of_node; // otherwise of the light's place in the scene
    bool of_directional;
    bool of_point;
};
constexpr Key_row key_rows[] = {
    {"position", Value_type::vector3, true, false, true},
    {"direction", Value_type::vector3, true, true, false},
    {"color", Value_type::color3, true, true, true},
    {"intensity", Value_type::float1, true, true, true},
    {"cone", Value_type::float1, false, false, false},
    {"limit", Value_type::float1, false, true, true},
};

bool fits(const Key_row& row, Light_kind kind)
{
    return kind == Light_kind::spot ||
           (kind == Light_kind::point ? row.of_point : row.of_directional);
}

std::vector<std::string> split(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    for (size_t start = 0; start <= text.size();) {
        const size_t end = std::min(text.find(separator, start), text.size());
        parts.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

// "position=1,2,3" and "cone=40" of "position=1,2,3,cone=40": a comma ends a value where a key
// follows.
std::vector<std::string> split_settings(const std::string& text)
{
    std::vector<std::string> settings;
    for (const std::string& part : split(text, ',')) {
        if (settings.empty() || part.find('=') != std::string::npos)
            settings.push_back(part);
        else
            settings.back() += "," + part;
    }
    return settings;
}

std::optional<float> parse_amount(const std::string& text)
{
    const std::optional<Value> value = parse_value(Value_type::float1, text);
    if (!value || value->numbers[0] < 0.0)
        return std::nullopt;
    return static_cast<float>(value->numbers[0]);
}

class Parser
{
public:
    explicit Parser(std::string& reason) : m_reason(reason) {}

    std::optional<Light_request> parse(const std::string& text)
    {
        const std::vector<std::string> parts = split(text, ':');
        m_request.name = parts[0];
        const bool good = (!m_request.name.empty() || wrong("a light needs a name")) &&
                          (parts.size() < 2 || take_kind(parts[1])) &&
                          (parts.size() < 3 ||
                           (parts[2].find('=') == std::string::npos ? take_cone_and_limit(parts)
                            : parts.size() == 3                     ? take_settings(parts[2])
                                                : wrong("nothing may follow '" + parts[2] + "'")));
        return good ? std::optional<Light_request>(m_request) : std::nullopt;
    }

private:
    bool wrong(const std::string& reason)
    {
        m_reason = reason;
        return false;
    }

    bool take_kind(const std::string& text)
    {
        for (const Light_kind_row& row : light_kinds)
            if (text == row.word || text == std::to_string(static_cast<int>(row.kind)))
                m_request.kind = row.kind;
        return m_request.kind ||
               wrong("'" + text + "' is not a type of light: directional, point, spot or 0 to 2");
    }

    bool take_cone_and_limit(const std::vector<std::string>& parts)
    {
        if (parts.size() > 4)
            return wrong("nothing may follow the limit '" + parts[3] + "'");
        return take_cone(parts[2]) && (parts.size() < 4 || take_limit(parts[3]));
    }

    bool take_cone(const std::string& text)
    {
        m_request.spread = parse_amount(text);
        return (m_request.spread && *m_request.spread <= full_circle) ||
               wrong("the cone '" + text + "' is not an angle of 0 to 360 degrees");
    }

    bool take_limit(const std::string& text)
    {
        m_request.distance_limit = parse_amount(text);
        return m_request.distance_limit.has_value() ||
               wrong("the limit '" + text + "' is not a distance of 0 or more");
    }

    bool take_settings(const std::string& text)
    {
        const std::vector<std::string> settings = split_settings(text);
        return std::all_of(settings.begin(), settings.end(), [this](const std::string& setting) {
            const size_t equals = setting.find('=');
            return take_setting(setting.substr(0, equals),
                                equals == std::string::npos ? "" : setting.substr(equals + 1));
        });
    }

    bool take_setting(const std::string& key, const std::string& text)
    {
        const auto row = std::find_if(std::begin(key_rows), std::end(key_rows),
                                      [&](const Key_row& r) { return key == r.key; });
        if (row == std::end(key_rows))
            return wrong("'" + key + "' is not a part of a light: position, direction, color, " +
                         "intensity, cone, limit");
        if (!fits(*row, *m_request.kind))
            return wrong("a light of this type has no " + key);
        if (!row->of_node)
            return key == "cone" ? take_cone(text) : take_limit(text);
        const std::optional<Value> value = parse_value(row->type, text);
        if (!value)
            return wrong("the " + key + " '" + text + "' is not " +
                         (row->type == Value_type::float1 ? "a number" : "three numbers"));
        if (key == "direction" && value->numbers[0] == 0 && value->numbers[1] == 0 &&
            value->numbers[2] == 0)
            return wrong("the direction '" + text + "' leads nowhere");
        const int count = component_count(row->type);
        m_request.inputs[key].assign(value->numbers.begin(), value->numbers.begin() + count);
        return true;
    }

    std::string& m_reason;
    Light_request m_request;
};

} // namespace

std::optional<Light_request> parse_light(const std::string& text, std::string& reason)
{
    return Parser(reason).parse(text);
}

} // namespace reference_host
