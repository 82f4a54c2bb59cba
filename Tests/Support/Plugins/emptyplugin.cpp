// A module that exports no wrapper maker: its classes are those of the local library.
#include <Zorbel/Export.h>

ZORBEL_PLUGIN_EXPORT int PluginVersion();

int PluginVersion() { return 1; }
