#include "Display.h"

#include <maya/MGlobal.h>

#include <utility>

namespace host {
namespace {

Display& currentDisplay() {
    static Display display;
    return display;
}

void show(const std::function<void(const std::string&)>& operation, const MString& text) {
    if (operation) {
        operation({text.asChar(), text.length()});
    }
}

} // namespace

void setDisplay(Display display) {
    currentDisplay() = std::move(display);
}

} // namespace host

void MGlobal::displayInfo(const MString& text) {
    host::show(host::currentDisplay().info, text);
}

void MGlobal::displayWarning(const MString& text) {
    host::show(host::currentDisplay().warning, text);
}

void MGlobal::displayError(const MString& text) {
    host::show(host::currentDisplay().error, text);
}

MString MGlobal::mayaVersion() {
    return "stand-in";
}
