#include "reference_host/render/drawing.h"

#include "reference_host/render/placeholder_texture.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <type_traits>

#define GL_GLEXT_PROTOTYPES
#include <GL/osmesa.h>
// After osmesa.h, which brings the basic declarations.
#include <GL/glext.h>

namespace reference_host
{

namespace
{

// Mesa's software OpenGL, drawing floats into `target`. Deprecated features are in, so that shaders
// of all GLSL versions from 1.10 on compile.
class Offscreen_context
{
public:
    explicit Offscreen_context(Linear_picture& target)
    {
        // A program from the cache comes without the linker's warnings.
        setenv("MESA_SHADER_CACHE_DISABLE", "true", 1);
        constexpr int attributes[] = {OSMESA_FORMAT,
                                      OSMESA_RGBA,
                                      OSMESA_DEPTH_BITS,
                                      24,
                                      OSMESA_PROFILE,
                                      OSMESA_COMPAT_PROFILE,
                                      OSMESA_CONTEXT_MAJOR_VERSION,
                                      3,
                                      OSMESA_CONTEXT_MINOR_VERSION,
                                      0,
                                      0};
        m_context.reset(OSMesaCreateContextAttribs(attributes, nullptr));
        m_current = m_context && OSMesaMakeCurrent(m_context.get(), target.pixels.data(), GL_FLOAT,
                                                   target.width, target.height);
    }

    bool is_current() const { return m_current; }

private:
    struct Destroy {
        void operator()(OSMesaContext context) const { OSMesaDestroyContext(context); }
    };
    std::unique_ptr<std::remove_pointer_t<OSMesaContext>, Destroy> m_context;
    bool m_current = false;
};

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
    return 0;
}

// The context owns the program and the stages, which go with it.
GLuint link(const Drawing& drawing, std::string& error)
{
    const GLuint vertex = compile(GL_VERTEX_SHADER, drawing.vertex, error);
    const GLuint fragment = compile(GL_FRAGMENT_SHADER, drawing.fragment, error);
    if (vertex == 0 || fragment == 0)
        return 0;
    const GLuint program = glCreateProgram();
    glAttachShader(program, vertex);
    glAttachShader(program, fragment);
    glLinkProgram(program);
    GLint linked = GL_FALSE;
    glGetProgramiv(program, GL_LINK_STATUS, &linked);
    const std::string log = log_of(program, glGetProgramiv, glGetProgramInfoLog,
                                   drawing.vertex.name + " with " + drawing.fragment.name);
    // Mesa only warns of a varying that is read but never written; the value is undefined.
    if (linked == GL_TRUE && log.find("not written") == std::string::npos)
        return program;
    error += log;
    return 0;
}

// ---- uniforms ---------------------------------------------------------------

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

struct Uniform {
    std::string name; // of an array: without "[0]"
    GLint location;
    GLint count; // elements of an array, otherwise 1
    GLenum type;
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
        uniforms.push_back(std::move(uniform));
    }
    return uniforms;
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

void set_uniform(const Uniform& uniform, const std::vector<float>& values)
{
    for (const Uniform_shape& shape : uniform_shapes) {
        if (shape.type != uniform.type)
            continue;
        const auto given = static_cast<GLsizei>(values.size()) / (shape.rows * shape.columns);
        const GLsizei count = std::min<GLsizei>(given, uniform.count);
        if (shape.number == Number::real)
            set_reals(shape, uniform.location, count, values.data());
        else
            set_integers(shape, uniform.location, count,
                         std::vector<GLint>(values.begin(), values.end()).data());
    }
}

// The values of a scene matrix for a uniform of 4 x 4 or, its upper left part, 3 x 3.
std::vector<float> matrix_values(const Matrix& matrix, GLenum type)
{
    if (type == GL_FLOAT_MAT4)
        return {matrix.begin(), matrix.end()};
    return {matrix[0], matrix[1], matrix[2], matrix[4], matrix[5],
            matrix[6], matrix[8], matrix[9], matrix[10]};
}

// ---- textures ---------------------------------------------------------------

void load_image(GLenum target, const Image& image)
{
    glTexImage2D(target, 0, GL_RGBA8, image.width, image.height, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 image.pixels.data());
}

void set_filters(GLenum target, GLint wrapping)
{
    glGenerateMipmap(target);
    glTexParameteri(target, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glTexParameteri(target, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(target, GL_TEXTURE_WRAP_S, wrapping);
    glTexParameteri(target, GL_TEXTURE_WRAP_T, wrapping);
}

// The depth that order-independent transparency peels from: nothing is nearer than the first layer.
constexpr char peeled_depth[] = "oit_depth_map";

std::shared_ptr<const Image> image_for(const Drawing& drawing, const std::string& sampler)
{
    if (const auto image = drawing.textures.find(sampler); image != drawing.textures.end())
        return image->second;
    if (sampler.find(peeled_depth) != std::string::npos)
        return std::make_shared<Image>(1, 1);
    const auto label = drawing.texture_labels.find(sampler);
    return std::make_shared<Image>(
        labelled_checker(label == drawing.texture_labels.end() ? sampler : label->second));
}

using Loaded_textures = std::map<std::shared_ptr<const Image>, GLuint>;

GLuint bind_new_texture(GLenum target)
{
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(target, texture);
    return texture;
}

void load_cube_map(const Drawing& drawing, const std::string& sampler)
{
    constexpr int side = 256;
    bind_new_texture(GL_TEXTURE_CUBE_MAP);
    const auto own = drawing.cube_maps.find(sampler);
    const Environment& environment =
        own == drawing.cube_maps.end() ? *drawing.environment : *own->second;
    const Cube_up cube_up = drawing.conventions.rotated_cube_maps ? Cube_up::minus_z : Cube_up::y;
    for (int face = 0; face < 6; ++face)
        glTexImage2D(GL_TEXTURE_CUBE_MAP_POSITIVE_X + static_cast<GLenum>(face), 0, GL_RGB32F, side,
                     side, 0, GL_RGB, GL_FLOAT, environment.cube_face(face, side, cube_up).data());
    glEnable(GL_TEXTURE_CUBE_MAP_SEAMLESS);
    set_filters(GL_TEXTURE_CUBE_MAP, GL_CLAMP_TO_EDGE);
}

// One texture for all samplers that share an image.
void load_texture(const Drawing& drawing, const std::string& sampler, Loaded_textures& loaded)
{
    const auto [known, is_new] = loaded.try_emplace(image_for(drawing, sampler));
    if (!is_new) {
        glBindTexture(GL_TEXTURE_2D, known->second);
        return;
    }
    known->second = bind_new_texture(GL_TEXTURE_2D);
    if (drawing.conventions.flipped_textures) {
        load_image(GL_TEXTURE_2D, *known->first);
    } else {
        Image image = *known->first;
        flip_rows(image); // OpenGL has v = 0 at the lower edge and wants that row first
        load_image(GL_TEXTURE_2D, image);
    }
    set_filters(GL_TEXTURE_2D, GL_REPEAT);
}

// Values that stand under the names of the elements of an array.
void set_elements(GLuint program, const Uniform& array, const Drawing& drawing)
{
    for (GLint i = 0; i < array.count; ++i) {
        Uniform element = array;
        element.name += "[" + std::to_string(i) + "]";
        element.location = glGetUniformLocation(program, element.name.c_str());
        element.count = 1;
        if (const auto values = drawing.uniforms.find(element.name);
            values != drawing.uniforms.end())
            set_uniform(element, values->second);
    }
}

void fill_uniforms(GLuint program, const Drawing& drawing)
{
    GLint unit = 0;
    Loaded_textures loaded;
    for (const Uniform& uniform : active_uniforms(program)) {
        const auto values = drawing.uniforms.find(uniform.name);
        const auto matrix = scene_matrix(drawing.view.camera, uniform.name, "");
        if (uniform.type == GL_SAMPLER_2D || uniform.type == GL_SAMPLER_CUBE) {
            glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
            if (uniform.type == GL_SAMPLER_CUBE)
                load_cube_map(drawing, uniform.name);
            else
                load_texture(drawing, uniform.name, loaded);
            glUniform1i(uniform.location, unit++);
        } else if (values != drawing.uniforms.end()) {
            set_uniform(uniform, values->second);
        } else if (matrix && (uniform.type == GL_FLOAT_MAT3 || uniform.type == GL_FLOAT_MAT4)) {
            set_uniform(uniform, matrix_values(*matrix, uniform.type));
        } else {
            set_elements(program, uniform, drawing);
        }
    }
}

// ---- the draw ---------------------------------------------------------------

void fill_inputs(GLuint program, const Mesh& mesh)
{
    GLint count = 0;
    GLint longest = 0;
    glGetProgramiv(program, GL_ACTIVE_ATTRIBUTES, &count);
    glGetProgramiv(program, GL_ACTIVE_ATTRIBUTE_MAX_LENGTH, &longest);
    for (GLint i = 0; i < count; ++i) {
        std::string name(static_cast<std::size_t>(longest) + 1, '\0');
        GLsizei length = 0;
        GLint size = 0;
        GLenum type = 0;
        glGetActiveAttrib(program, static_cast<GLuint>(i), longest + 1, &length, &size, &type,
                          name.data());
        name.resize(static_cast<std::size_t>(length));
        const GLint at = glGetAttribLocation(program, name.c_str());
        if (at < 0)
            continue; // one of OpenGL's own, such as gl_VertexID
        const auto& first = mesh.vertices.front().*stream_for(name);
        glEnableVertexAttribArray(static_cast<GLuint>(at));
        glVertexAttribPointer(static_cast<GLuint>(at), 4, GL_FLOAT, GL_FALSE, sizeof(Vertex),
                              first.data());
    }
}

void prepare_drawing()
{
    glClearColor(0, 0, 0, 0);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glEnable(GL_CULL_FACE);
    // Opaque shaders write an alpha of 1, for which this changes nothing.
    glEnable(GL_BLEND);
    glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
}

// Many samples for each pixel are drawn as a larger picture, one tile after the other.
class Tiles
{
public:
    Tiles(int size, int samples)
        : m_size(size),
          m_samples(samples),
          m_side(std::min(size, largest_tile / samples)),
          m_tile(m_side * samples, m_side * samples),
          m_picture(size, size)
    {
    }

    // What the drawing context draws into.
    Linear_picture& tile() { return m_tile; }

    Linear_picture draw(const Mesh& mesh)
    {
        for (int bottom = 0; bottom < m_size; bottom += m_side)
            for (int left = 0; left < m_size; left += m_side) {
                glViewport(-left * m_samples, -bottom * m_samples, m_size * m_samples,
                           m_size * m_samples);
                glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
                glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(mesh.triangles.size()),
                               GL_UNSIGNED_INT, mesh.triangles.data());
                glFinish();
                take_tile(left, bottom);
            }
        return std::move(m_picture);
    }

private:
    static constexpr int largest_tile = 1024; // samples

    // OpenGL has the lowest row first.
    void take_tile(int left, int bottom)
    {
        for (int y = 0; y < m_side && bottom + y < m_size; ++y)
            for (int x = 0; x < m_side && left + x < m_size; ++x)
                m_picture.at(left + x, m_size - 1 - bottom - y) = mean_of_samples(x, y);
    }

    Light_pixel mean_of_samples(int x, int y) const
    {
        Light_pixel mean = {};
        const auto share = 1.0F / static_cast<float>(m_samples * m_samples);
        for (int row = 0; row < m_samples; ++row)
            for (int column = 0; column < m_samples; ++column) {
                const Light_pixel& sample = m_tile.at(x * m_samples + column, y * m_samples + row);
                for (std::size_t i = 0; i < mean.size(); ++i)
                    mean[i] += sample[i] * share;
            }
        return mean;
    }

    int m_size;
    int m_samples;
    int m_side; // of a tile, in pixels of the picture
    Linear_picture m_tile;
    Linear_picture m_picture;
};

} // namespace

std::optional<Linear_picture> draw(const Drawing& drawing, int size, std::string& error)
{
    Tiles tiles(size, drawing.view.samples);
    const Offscreen_context context(tiles.tile());
    if (!context.is_current()) {
        error += "Mesa gives no drawing context\n";
        return std::nullopt;
    }
    const GLuint program = link(drawing, error);
    if (program == 0)
        return std::nullopt;
    glUseProgram(program);
    fill_uniforms(program, drawing);
    const Mesh mesh = make_mesh(drawing.view.shape, drawing.space,
                                drawing.conventions.flipped_mesh ? V_axis::down : V_axis::up);
    fill_inputs(program, mesh);
    prepare_drawing();
    Linear_picture picture = tiles.draw(mesh);
    if (const GLenum failure = glGetError(); failure != GL_NO_ERROR) {
        error += drawing.fragment.name + ": OpenGL error " + std::to_string(failure) + "\n";
        return std::nullopt;
    }
    return picture;
}

} // namespace reference_host
