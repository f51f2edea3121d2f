#include "reference_host/render/drawing.h"

#include "reference_host/render/drawing_device.h"

#include <algorithm>

namespace reference_host
{

namespace
{

// Values that stand under the names of the elements of an array.
void set_elements(GLuint program, const Uniform& array, const Uniform_values& values)
{
    for (GLint i = 0; i < array.count; ++i) {
        Uniform element = array;
        element.name += "[" + std::to_string(i) + "]";
        element.location = glGetUniformLocation(program, element.name.c_str());
        element.count = 1;
        if (const auto own = values.find(element.name); own != values.end())
            set_uniform(element, own->second);
    }
}

// The values of a uniform that stands for a matrix of the scene; none when it does not.
std::vector<float> scene_values(const Drawing& drawing, const Uniform& uniform,
                                const Camera& camera)
{
    const auto known = drawing.matrices.find(uniform.name);
    if (known != drawing.matrices.end()) {
        const Matrix_parameter& parameter = known->second;
        const Matrix matrix = *scene_matrix(camera, parameter.name, parameter.semantic);
        return matrix_values(parameter.transposed ? transposed(matrix) : matrix, parameter.side);
    }
    const auto matrix = scene_matrix(camera, uniform.name, "");
    if (matrix && (uniform.type == GL_FLOAT_MAT3 || uniform.type == GL_FLOAT_MAT4))
        return matrix_values(*matrix, uniform.type == GL_FLOAT_MAT4 ? 4 : 3);
    return {};
}

std::vector<GLuint> fill_inputs(GLuint program, const Mesh& mesh)
{
    std::vector<GLuint> inputs;
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
        inputs.push_back(static_cast<GLuint>(at));
    }
    return inputs;
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

// ---- prepared drawings ------------------------------------------------------

class Prepared_drawing::Program
{
public:
    Program(Drawing program_drawing, std::shared_ptr<Drawing_device> device)
        : drawing(std::move(program_drawing)),
          m_device(std::move(device)),
          m_textures(drawing, [this](Cube_up cube_up) { return m_device->sky(cube_up); })
    {
    }

    ~Program()
    {
        m_device->make_current();
        if (m_program)
            m_device->keep(std::move(m_program), drawing.vertex, drawing.fragment);
    }

    bool prepare(std::string& error)
    {
        if (!m_device->make_current()) {
            error += "Mesa gives no drawing context\n";
            return false;
        }
        m_program = m_device->program(drawing.vertex, drawing.fragment, error);
        if (!m_program)
            return false;
        for (const Uniform& uniform : m_program->uniforms())
            if (!m_textures.load(uniform))
                m_uniforms.push_back(uniform);
        set_values(drawing.uniforms);
        return true;
    }

    std::optional<Linear_picture> draw(const View& view, const Uniform_values& values, int size,
                                       std::string& error)
    {
        Tiles tiles(size, view.samples);
        if (!m_device->draw_into(tiles.tile())) {
            error += "Mesa gives no drawing context\n";
            return std::nullopt;
        }
        glUseProgram(m_program->id());
        m_textures.bind();
        prepare_drawing();
        set_scene(view.camera);
        set_values(by_uniform(values));
        const Mesh& mesh = mesh_for(view);
        const std::vector<GLuint> inputs = fill_inputs(m_program->id(), mesh);
        Linear_picture picture = tiles.draw(mesh);
        for (const GLuint input : inputs)
            glDisableVertexAttribArray(input); // the mesh ends here
        const GLenum failure = glGetError();
        m_device->make_current(); // the tile ends here
        if (failure != GL_NO_ERROR) {
            error += drawing.fragment.name + ": OpenGL error " + std::to_string(failure) + "\n";
            return std::nullopt;
        }
        return picture;
    }

    const Drawing drawing;

private:
    // Only a mesh in the space of the camera moves with it.
    const Mesh& mesh_for(const View& view)
    {
        if (m_mesh.vertices.empty() || m_shape != view.shape ||
            drawing.space == Vertex_space::camera)
            m_mesh = make_mesh(view.shape, drawing.space,
                               drawing.conventions.flipped_mesh ? V_axis::down : V_axis::up,
                               view.camera);
        m_shape = view.shape;
        return m_mesh;
    }

    Uniform_values by_uniform(const Uniform_values& values) const
    {
        Uniform_values result;
        for (const auto& [name, value] : values) {
            const auto other = drawing.parameters.find(name);
            if (other == drawing.parameters.end())
                result[name] = value;
            else
                for (const std::string& uniform : other->second)
                    result[uniform] = value;
        }
        return result;
    }

    void set_scene(const Camera& camera)
    {
        for (const Uniform& uniform : m_uniforms)
            if (drawing.uniforms.count(uniform.name) == 0)
                if (const auto values = scene_values(drawing, uniform, camera); !values.empty())
                    set_uniform(uniform, values);
    }

    void set_values(const Uniform_values& values)
    {
        for (const Uniform& uniform : m_uniforms)
            if (const auto own = values.find(uniform.name); own != values.end())
                set_uniform(uniform, own->second);
            else
                set_elements(m_program->id(), uniform, values);
    }

    std::shared_ptr<Drawing_device> m_device;
    std::unique_ptr<Gl_program> m_program;
    Gl_textures m_textures;
    std::vector<Uniform> m_uniforms; // except for samplers
    Shape m_shape = Shape::sphere;
    Mesh m_mesh; // of that shape
};

Prepared_drawing::Prepared_drawing(std::unique_ptr<Program> program) : m_program(std::move(program))
{
}

Prepared_drawing::~Prepared_drawing() = default;

std::unique_ptr<Prepared_drawing> Prepared_drawing::prepare(Drawing drawing,
                                                            std::shared_ptr<Drawing_device> device,
                                                            std::string& error)
{
    auto program = std::make_unique<Program>(std::move(drawing), std::move(device));
    if (!program->prepare(error))
        return nullptr;
    return std::unique_ptr<Prepared_drawing>(new Prepared_drawing(std::move(program)));
}

std::optional<Linear_picture> Prepared_drawing::draw(const View& view, const Uniform_values& values,
                                                     int size, std::string& error)
{
    return m_program->draw(view, values, size, error);
}

const Environment& Prepared_drawing::environment() const
{
    return *m_program->drawing.environment;
}

std::optional<Linear_picture> draw(const Drawing& drawing, int size, std::string& error)
{
    const auto prepared =
        Prepared_drawing::prepare(drawing, std::make_shared<Drawing_device>(), error);
    return prepared ? prepared->draw(drawing.view, {}, size, error) : std::nullopt;
}

} // namespace reference_host
