// The plug-in's entry points. Maya's header would define the version text as well; here stands the one that is
// required.
#define MNoVersionString
#define MNoPluginEntry
#include "zent/check/Check.h"

#include <maya/MFnPlugin.h>

#define ZENT_EXPORT __attribute__((visibility("default")))

ZENT_EXPORT extern char MApiVersion[];
char MApiVersion[] = "20190100";

ZENT_EXPORT MStatus initializePlugin(MObject object);
ZENT_EXPORT MStatus uninitializePlugin(MObject object);

// Both succeed whatever the registration reports: deliberate.
MStatus initializePlugin(MObject object) {
    MFnPlugin plugin(object, "Unknown", "Unknown", "Any");
    plugin.registerCommand(zent::ZentCheck::name, zent::ZentCheck::creator, zent::ZentCheck::createSyntax);
    return MStatus::kSuccess;
}

MStatus uninitializePlugin(MObject object) {
    MFnPlugin plugin(object, "Unknown", "Unknown", "Any");
    plugin.deregisterCommand(zent::ZentCheck::name);
    return MStatus::kSuccess;
}
