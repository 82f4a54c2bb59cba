#include <Zorbel/Export.h>

#include "Use.h"

static SHolder holder("library");

ZORBEL_PLUGIN_EXPORT void Hold(const Objects& objects) { holder.objects = objects; }
