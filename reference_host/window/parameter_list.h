// The parameters of the shader in the preview, below the names of their folders.
#ifndef REFERENCE_HOST_WINDOW_PARAMETER_LIST_H
#define REFERENCE_HOST_WINDOW_PARAMETER_LIST_H

#include "reference_host/render/effect_parameters.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

#include <wx/scrolwin.h>

namespace reference_host
{

class Parameter_row;

class Parameter_list : public wxScrolledWindow
{
public:
    // Calls back when the user changes a value.
    Parameter_list(wxWindow* parent, std::function<void()> changed);

    // Shows other parameters. Those of the same name keep what the user has set.
    void show(const std::vector<Effect_parameter>& parameters);

    // Puts all back to the values that the shader comes with.
    void reset();

    // Of all parameters, by name.
    std::map<std::string, std::vector<float>> values() const;

    const std::vector<Parameter_row*>& rows() const { return m_rows; }

private:
    void make_rows();

    std::function<void()> m_changed;
    std::vector<Effect_parameter> m_parameters;
    std::vector<Parameter_row*> m_rows;
};

} // namespace reference_host

#endif
