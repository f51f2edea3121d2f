#include "reference_host/render/gl_program.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

namespace reference_host
{
namespace
{

// The log of a shader or program, each line behind `name`.
template<typename Get_length, typename Get_log>
std::string log_of(GLuint object, Get_length get_length, Get_log get_log, const std::string& name)
{
    GLint length = 0;
    get_length(object, GL_INFO_LOG_LENGTH, &length);
    std::string log(static_cast<std::size_t>(std::max(length, 1)), '\0');
    get_log(object, length, nullptr, log.data());
    std::string lines;
    for (std::size_t begin = 0; begin < log.size() && log[begin] != '\0';) {
        const std::size_t end =
            std::min(log.find_first_of(std::string("\n\0", 2), begin), log.size());
        lines += name + ": " + log.substr(begin, end - begin) + "\n";
        begin = end + 1;
    }
    return lines;
}

GLuint compile(GLenum kind, const Shader_source& source, std::string& error)
{
    const GLuint shader = glCreateShader(kind);
    const GLchar* text = source.text.c_str();
    glShaderSource(shader, 1, &text, nullptr);
    glCompileShader(shader);
    GLint compiled = GL_FALSE;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
    if (compiled == GL_TRUE)
        return shader;
    error += log_of(shader, glGetShaderiv, glGetShaderInfoLog, source.name);
    glDeleteShader(shader);
    return 0;
}

enum class Number { real, integer };

struct Uniform_shape {
    GLenum type;
    Number number;
    int rows; // 1 for scalars and vectors
    int columns;
};

constexpr Uniform_shape uniform_shapes[] = {
    {GL_FLOAT, Number::real, 1, 1},        {GL_FLOAT_VEC2, Number::real, 1, 2},
    {GL_FLOAT_VEC3, Number::real, 1, 3},   {GL_FLOAT_VEC4, Number::real, 1, 4},
    {GL_FLOAT_MAT2, Number::real, 2, 2},   {GL_FLOAT_MAT3, Number::real, 3, 3},
    {GL_FLOAT_MAT4, Number::real, 4, 4},   {GL_INT, Number::integer, 1, 1},
    {GL_INT_VEC2, Number::integer, 1, 2},  {GL_INT_VEC3, Number::integer, 1, 3},
    {GL_INT_VEC4, Number::integer, 1, 4},  {GL_BOOL, Number::integer, 1, 1},
    {GL_BOOL_VEC2, Number::integer, 1, 2}, {GL_BOOL_VEC3, Number::integer, 1, 3},
    {GL_BOOL_VEC4, Number::integer, 1, 4},
};

// OpenGL names an array by its first element.
std::string without_index(std::string name)
{
    constexpr std::string_view first_element = "[0]";
    if (name.size() > first_element.size() &&
        name.compare(name.size() - first_element.size(), first_element.size(), first_element) == 0)
        name.resize(name.size() - first_element.size());
    return name;
}

void set_reals(const Uniform_shape& shape, GLint at, GLsizei count, const float* values)
{
    if (shape.rows == 2)
        glUniformMatrix2fv(at, count, GL_TRUE, values);
    else if (shape.rows == 3)
        glUniformMatrix3fv(at, count, GL_TRUE, values);
    else if (shape.rows == 4)
        glUniformMatrix4fv(at, count, GL_TRUE, values);
    else if (shape.columns == 1)
        glUniform1fv(at, count, values);
    else if (shape.columns == 2)
        glUniform2fv(at, count, values);
    else if (shape.columns == 3)
        glUniform3fv(at, count, values);
    else
        glUniform4fv(at, count, values);
}

void set_integers(const Uniform_shape& shape, GLint at, GLsizei count, const GLint* values)
{
    if (shape.columns == 1)
        glUniform1iv(at, count, values);
    else if (shape.columns == 2)
        glUniform2iv(at, count, values);
    else if (shape.columns == 3)
        glUniform3iv(at, count, values);
    else
        glUniform4iv(at, count, values);
}

const Uniform_shape* shape_of(GLenum type)
{
    const auto shape = std::find_if(std::begin(uniform_shapes), std::end(uniform_shapes),
                                    [type](const Uniform_shape& row) { return row.type == type; });
    return shape == std::end(uniform_shapes) ? nullptr : shape;
}

// The value of a uniform or of an element of an array; a matrix row by row.
void append_value(GLuint program, const std::string& name, const Uniform_shape& shape,
                  std::vector<float>& values)
{
    constexpr std::size_t largest = 16;
    std::array<float, largest> columns = {}; // as OpenGL has them
    glGetUniformfv(program, glGetUniformLocation(program, name.c_str()), columns.data());
    for (int row = 0; row < shape.rows; ++row)
        for (int column = 0; column < shape.columns; ++column)
            values.push_back(columns[static_cast<std::size_t>(column) * shape.rows + row]);
}

std::vector<float> value_of(GLuint program, const Uniform& uniform)
{
    std::vector<float> values;
    const Uniform_shape* shape = shape_of(uniform.type);
    for (GLint i = 0; shape && i < uniform.count; ++i)
        append_value(program,
                     uniform.count == 1 ? uniform.name
                                        : uniform.name + "[" + std::to_string(i) + "]",
                     *shape, values);
    return values;
}

std::vector<Uniform> active_uniforms(GLuint program)
{
    GLint count = 0;
    GLint longest = 0;
    glGetProgramiv(program, GL_ACTIVE_UNIFORMS, &count);
    glGetProgramiv(program, GL_ACTIVE_UNIFORM_MAX_LENGTH, &longest);
    std::vector<Uniform> uniforms;
    for (GLint i = 0; i < count; ++i) {
        std::string name(static_cast<std::size_t>(longest) + 1, '\0');
        GLsizei length = 0;
        Uniform uniform = {};
        glGetActiveUniform(program, static_cast<GLuint>(i), longest + 1, &length, &uniform.count,
                           &uniform.type, name.data());
        name.resize(static_cast<std::size_t>(length));
        uniform.location = glGetUniformLocation(program, name.c_str());
        uniform.name = without_index(std::move(name));
        uniform.value = value_of(program, uniform);
        uniforms.push_back(std::move(uniform));
    }
    return uniforms;
}

// 0 and lines in `error` when that fails.
GLuint link_program(const Shader_source& vertex_source, const Shader_source& fragment_source,
                    std::string& error)
{
    const GLuint vertex = compile(GL_VERTEX_SHADER, vertex_source, error);
    const GLuint fragment = compile(GL_FRAGMENT_SHADER, fragment_source, error);
    const GLuint program = vertex != 0 && fragment != 0 ? glCreateProgram() : 0;
    if (program != 0) {
        glAttachShader(program, vertex);
        glAttachShader(program, fragment);
    }
    for (const GLuint shader : {vertex, fragment})
        glDeleteShader(shader); // a program keeps its own
    if (program == 0)
        return 0;
    glLinkProgram(program);
    GLint linked = GL_FALSE;
    glGetProgramiv(program, GL_LINK_STATUS, &linked);
    const std::string log = log_of(program, glGetProgramiv, glGetProgramInfoLog,
                                   vertex_source.name + " with " + fragment_source.name);
    // Mesa only warns of a varying that is read but never written; the value is undefined.
    if (linked == GL_TRUE && log.find("not written") == std::string::npos)
        return program;
    error += log;
    glDeleteProgram(program);
    return 0;
}

} // namespace

Gl_program::Gl_program(GLuint id) : m_id(id), m_uniforms(active_uniforms(id)) {}

Gl_program::~Gl_program()
{
    glDeleteProgram(m_id);
}

std::unique_ptr<Gl_program> Gl_program::link(const Shader_source& vertex,
                                             const Shader_source& fragment, std::string& error)
{
    const GLuint id = link_program(vertex, fragment, error);
    return std::unique_ptr<Gl_program>(id == 0 ? nullptr : new Gl_program(id));
}

void Gl_program::start_afresh() const
{
    glUseProgram(m_id);
    for (const Uniform& uniform : m_uniforms)
        set_uniform(uniform, uniform.value);
}

void set_uniform(const Uniform& uniform, const std::vector<float>& values)
{
    const Uniform_shape* shape = shape_of(uniform.type);
    if (!shape)
        return;
    const auto given = static_cast<GLsizei>(values.size()) / (shape->rows * shape->columns);
    const GLsizei count = std::min<GLsizei>(given, uniform.count);
    if (shape->number == Number::real)
        set_reals(*shape, uniform.location, count, values.data());
    else
        set_integers(*shape, uniform.location, count,
                     std::vector<GLint>(values.begin(), values.end()).data());
}

std::vector<float> matrix_values(const Matrix& matrix, int side)
{
    std::vector<float> values;
    for (int row = 0; row < side; ++row)
        for (int column = 0; column < side; ++column)
            values.push_back(matrix[static_cast<std::size_t>(4 * row + column)]);
    return values;
}

} // namespace reference_host
