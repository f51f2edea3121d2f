// The numbers by which Interface::get_interface names an interface. The host defines them; they
// never change.
#ifndef SDK_INTERFACE_IDS_H
#define SDK_INTERFACE_IDS_H

namespace QZ
{
namespace TSDK
{

enum Interface_id {
    INTERFACE_PREFERENCES = 1,   // IPreferences, of ITovira; may be missing
    INTERFACE_COMPILER = 2,      // ITovira_compiler, of ITovira
    INTERFACE_SHADER_GROUP = 10, // IShader_group, of a declaration that is a group
    INTERFACE_EXPORTER = 26      // IExporter, of an exporter
};

} // namespace TSDK
} // namespace QZ

#endif
