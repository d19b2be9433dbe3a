#include "zentcheck/Plugin.h"

#include <maya/MObject.h>
#include <maya/MStatus.h>

#include <dlfcn.h>

#include <filesystem>
#include <stdexcept>

namespace host {

namespace {

#if defined(__SANITIZE_ADDRESS__)
// What an unloaded image keeps by design would count as lost.
constexpr int kLoadMode = RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE;
#else
constexpr int kLoadMode = RTLD_NOW | RTLD_LOCAL;
#endif

using EntryPoint = MStatus (*)(MObject);

// The entry points are C++ functions of one MObject.
constexpr const char* kInitialize = "_Z16initializePlugin7MObject";
constexpr const char* kUninitialize = "_Z18uninitializePlugin7MObject";

EntryPoint entryPoint(void* handle, const char* symbol) {
    return reinterpret_cast<EntryPoint>(dlsym(handle, symbol));
}

} // namespace

// An absolute path: a bare file name would be looked for among the system's libraries.
Plugin::Plugin(const std::string& path) : handle_(dlopen(std::filesystem::absolute(path).c_str(), kLoadMode)) {
    if (handle_ == nullptr) {
        const char* reason = dlerror();
        throw std::runtime_error("cannot load plug-in " + path + ": " + (reason == nullptr ? "" : reason));
    }
    const EntryPoint initialize = entryPoint(handle_, kInitialize);
    if (initialize == nullptr || entryPoint(handle_, kUninitialize) == nullptr ||
        dlsym(handle_, "MApiVersion") == nullptr) {
        dlclose(handle_);
        throw std::runtime_error(path + " is no plug-in: it lacks an entry point or MApiVersion");
    }
    if (initialize(MObject::kNullObj).error()) {
        dlclose(handle_);
        throw std::runtime_error("plug-in " + path + " failed to initialise");
    }
}

Plugin::~Plugin() {
    entryPoint(handle_, kUninitialize)(MObject::kNullObj);
    dlclose(handle_);
}

std::string Plugin::defaultPath(const std::string& name) {
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    const std::filesystem::path prefix = program.parent_path().parent_path();
    const std::filesystem::path installed = prefix / ZENT_LIBDIR / (name + ".so");
    return (std::filesystem::exists(installed) ? installed : prefix / "lib" / (name + ".so")).string(); // a build's
}

} // namespace host
